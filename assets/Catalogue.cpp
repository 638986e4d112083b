#include "assets/Catalogue.h"

#include "assets/Embedded.h"
#include "assets/PictureRenderer.h"
#include "platform/images/ImageContent.h"

#include <QDir>
#include <QFile>

#include <array>

namespace tarnwick {

namespace {

constexpr std::array<std::pair<Catalogue::Kind, const char*>, 5> folders{{
    {Catalogue::Kind::Picture, "pictures"},
    {Catalogue::Kind::Disc, "discs"},
    {Catalogue::Kind::Logo, "logos"},
    {Catalogue::Kind::Flag, "flags"},
    {Catalogue::Kind::Symbol, "symbols"},
}};

QByteArray contentsOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString keyOf(const QString& name, QSize size, const QColor& tint) {
    return QStringLiteral("%1/%2x%3/%4").arg(name).arg(size.width()).arg(size.height()).arg(tint.rgba());
}

} // namespace

const Catalogue& Catalogue::shared() {
    static const Catalogue catalogue(embeddedCatalogueRoot());
    return catalogue;
}

Catalogue::Catalogue(const QString& root) {
    for (const auto& [kind, folder] : folders) {
        const QDir directory(root + u'/' + QLatin1String(folder));
        for (const QFileInfo& file : directory.entryInfoList(QDir::Files))
            m_entries.insert(file.completeBaseName(), {kind, file.filePath()});
    }
}

std::optional<Catalogue::Kind> Catalogue::kind(const QString& name) const {
    const auto entry = m_entries.constFind(name);
    return entry == m_entries.cend() ? std::nullopt : std::optional(entry->kind);
}

QStringList Catalogue::names(Kind kind) const {
    QStringList result;
    for (auto entry = m_entries.cbegin(); entry != m_entries.cend(); ++entry) {
        if (entry->kind == kind)
            result.append(entry.key());
    }
    result.sort();
    return result;
}

QSize Catalogue::naturalSize(const QString& name) const {
    const auto entry = m_entries.constFind(name);
    if (entry == m_entries.cend())
        return {};
    const std::lock_guard lock(m_mutex);
    QSize& size = m_sizes[name];
    if (size.isEmpty())
        size = naturalSizeOf(contentsOf(entry->path)); // a vector must be parsed for it
    return size;
}

std::shared_ptr<const QImage> Catalogue::picture(const QString& name, QSize size, const QColor& tint) const {
    const auto entry = m_entries.constFind(name);
    if (entry == m_entries.cend() || size.isEmpty())
        return nullptr;
    const QString key = keyOf(name, size, entry->kind == Kind::Symbol ? tint : QColor(Qt::black));
    {
        const std::lock_guard lock(m_mutex);
        if (auto known = m_rendered.value(key).lock())
            return known;
    }
    // Rendered without the lock: a disc must not hold up a symbol. Two that ask at once may both render.
    QImage rendered = render(*entry, size, tint);
    if (rendered.isNull())
        return nullptr;
    const std::lock_guard lock(m_mutex);
    if (auto known = m_rendered.value(key).lock())
        return known;
    m_rendered.removeIf([](const auto& item) { return item.value().expired(); });
    auto result = std::make_shared<const QImage>(std::move(rendered));
    m_rendered.insert(key, result);
    return result;
}

std::optional<images::Image> Catalogue::image(const QString& name) const {
    const auto entry = m_entries.constFind(name);
    if (entry == m_entries.cend())
        return std::nullopt;
    const std::lock_guard lock(m_mutex);
    auto content = m_handles.value(name).lock();
    if (!content) {
        const QByteArray bytes = contentsOf(entry->path);
        const QSize size = naturalSizeOf(bytes);
        content = std::make_shared<images::Image::Content>(
            size, [bytes, size] { return renderPicture(bytes, size); });
        m_handles.insert(name, content);
    }
    return images::Image(content);
}

QString Catalogue::nameOf(const images::Image& image) const {
    const std::lock_guard lock(m_mutex);
    for (auto handle = m_handles.cbegin(); handle != m_handles.cend(); ++handle) {
        if (const auto content = handle->lock(); content && content->id == image.id())
            return handle.key();
    }
    return {};
}

QImage Catalogue::render(const Entry& entry, QSize size, const QColor& tint) const {
    QImage picture = renderPicture(contentsOf(entry.path), size);
    if (picture.isNull())
        return picture;
    if (entry.kind == Kind::Symbol)
        return tinted(std::move(picture), tint);
    if (entry.kind == Kind::Flag)
        return edged(std::move(picture));
    return picture;
}

} // namespace tarnwick
