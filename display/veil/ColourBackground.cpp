#include "display/veil/ColourBackground.h"

#include "canvas/Dither.h"
#include "display/veil/Veils.h"

#include <QQuickWindow>
#include <QSGImageNode>

#include <array>
#include <cmath>
#include <memory>

namespace tarnwick {

namespace {

constexpr int stripWidth = 128; ///< device pixels; whole patterns of the dither

/// Image nodes side by side with one texture.
class Tiles : public QSGNode {
public:
    std::unique_ptr<QSGTexture> texture;
};

} // namespace

ColourBackground::ColourBackground(QQuickItem* parent) : QQuickItem(parent) { setFlag(ItemHasContents); }

void ColourBackground::geometryChange(const QRectF& now, const QRectF& before) {
    QQuickItem::geometryChange(now, before);
    if (now.size() != before.size()) {
        m_isStale = true;
        update();
    }
}

QImage ColourBackground::strip(int rows) const {
    constexpr int period = 8; // of the dither
    std::vector<Colour> background;
    for (const QColor& colour : m_colors)
        background.push_back(Colour::fromQColor(colour));
    const Colour base = m_textColor.lightnessF() > 0.5F ? colours::black : colours::white;
    QImage strip(stripWidth, std::max(1, rows), QImage::Format_RGB32);
    for (int y = 0; y < strip.height(); ++y) {
        const Colour colour = gradientAt(background, base, (y + 0.5) / strip.height());
        std::array<QRgb, period> pattern{};
        for (int x = 0; x < period; ++x) {
            const double shift = ditherAt(x, y);
            const auto level = [&](double value) {
                return std::clamp(static_cast<int>(std::lround(255 * value + shift)), 0, 255);
            };
            pattern.at(static_cast<size_t>(x)) =
                qRgb(level(colour.red), level(colour.green), level(colour.blue));
        }
        auto* line = reinterpret_cast<QRgb*>(strip.scanLine(y));
        for (int x = 0; x < stripWidth; ++x)
            line[x] = pattern.at(static_cast<size_t>(x % period));
    }
    return strip;
}

QSGNode* ColourBackground::updatePaintNode(QSGNode* old, UpdatePaintNodeData* /*data*/) {
    auto* tiles = static_cast<Tiles*>(old);
    if (!m_isStale && tiles)
        return tiles;
    m_isStale = false;
    delete tiles;
    if (size().isEmpty())
        return nullptr;
    tiles = new Tiles;
    tiles->texture.reset(window()->createTextureFromImage(strip(qRound(height() * m_pixelRatio))));
    const double tileWidth = stripWidth / m_pixelRatio;
    for (double x = 0; x < width(); x += tileWidth) {
        QSGImageNode* tile = window()->createImageNode();
        tile->setTexture(tiles->texture.get());
        tile->setFiltering(QSGTexture::Nearest);
        tile->setRect(QRectF(x, 0, tileWidth, height()));
        tiles->appendChildNode(tile);
    }
    return tiles;
}

} // namespace tarnwick
