#include "assets/CataloguePicture.h"

#include "assets/Catalogue.h"
#include "canvas/RenderQueue.h"

#include <QPointer>

namespace tarnwick {

CataloguePicture::CataloguePicture(QQuickItem* parent) : PictureItem(parent) {
    connect(this, &PictureItem::deviceSizeChanged, this, &CataloguePicture::refresh);
}

void CataloguePicture::setName(const QString& name) {
    if (m_name == name)
        return;
    m_name = name;
    refresh();
    Q_EMIT nameChanged();
}

void CataloguePicture::setTint(const QColor& tint) {
    if (m_tint == tint)
        return;
    m_tint = tint;
    refresh();
    Q_EMIT tintChanged();
}

double CataloguePicture::aspectRatio() const {
    const QSize size = Catalogue::shared().naturalSize(m_name);
    return size.isEmpty() ? 1 : static_cast<double>(size.width()) / size.height();
}

bool CataloguePicture::exists() const { return Catalogue::shared().contains(m_name); }

void CataloguePicture::refresh() {
    const int request = ++m_request;
    const Catalogue& catalogue = Catalogue::shared();
    const auto kind = catalogue.kind(m_name);
    const QSize size = deviceSize();
    if (!kind || size.isEmpty()) {
        setPicture(nullptr);
        return;
    }
    // What is small is there with the first frame; discs and full windows take longer than a frame.
    const bool large = *kind == Catalogue::Kind::Disc || *kind == Catalogue::Kind::Picture;
    if (!large) {
        setPicture(catalogue.picture(m_name, size, m_tint));
        return;
    }
    renderqueue::run([&catalogue, name = m_name, size] { return catalogue.picture(name, size); },
                     [self = QPointer(this), request](const PictureItem::Picture& picture) {
                         if (self && self->m_request == request)
                             self->setPicture(picture);
                     });
}

} // namespace tarnwick
