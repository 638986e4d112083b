#include "canvas/type/TypeBlock.h"

#include "canvas/type/TextInk.h"

namespace tarnwick {

TypeBlock::TypeBlock(QQuickItem* parent) : QQuickItem(parent) {
    connect(this, &TypeBlock::changed, this, &TypeBlock::setLines);
}

void TypeBlock::componentComplete() {
    QQuickItem::componentComplete();
    setLines();
}

void TypeBlock::geometryChange(const QRectF& now, const QRectF& before) {
    QQuickItem::geometryChange(now, before);
    if (now.width() != before.width())
        setLines();
}

void TypeBlock::setLines() {
    if (!isComponentComplete())
        return;
    // A hair more than it needs, or rounding would break what just fits.
    constexpr double hair = 0.01;
    double widest = 0;
    for (const QString& paragraph : m_text.split(u'\n'))
        widest = std::max(widest, typeLine(paragraph, m_font).advance + hair);
    setImplicitWidth(widest);

    const QStringList lines = wrappedToWidth(m_text, m_font, width(), m_maximumLines);
    while (m_lines.size() > lines.size())
        delete m_lines.takeLast();
    const double height = TypeItem::lineHeight * typeSize(m_font);
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if (i == m_lines.size())
            m_lines.append(new TypeItem(this));
        TypeItem& line = *m_lines[i];
        line.setFont(m_font);
        line.setPixelRatio(m_pixelRatio);
        line.setColor(m_color);
        line.setText(lines[i]);
        line.setPosition({(width() - line.implicitWidth()) / 2, static_cast<double>(i) * height});
    }
    setImplicitHeight(static_cast<double>(lines.size()) * height);
}

} // namespace tarnwick
