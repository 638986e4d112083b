#include "controls/bar/Frost.h"

#include "canvas/ContinuousCorners.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace tarnwick {

namespace {

constexpr double sampling = 0.25; ///< blurred pixels for one of the backdrop's units
constexpr int blurRadius = 7;
constexpr int blurPasses = 3;
constexpr double saturation = 1.25;
constexpr double leastDarkening = 0.35;
constexpr double brightestAllowed = 0.31;

/// The mean colour on each of the picture's circles, from the centre to the edge, premultiplied.
std::vector<QColor> meanOverATurn(const QImage& disc) {
    const QImage picture = disc.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const double centreX = (picture.width() - 1) / 2.0, centreY = (picture.height() - 1) / 2.0;
    const auto rings = static_cast<std::size_t>(std::max(1, picture.width() / 2));
    std::vector<std::array<double, 5>> sums(rings, std::array<double, 5>{});
    for (int y = 0; y < picture.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        for (int x = 0; x < picture.width(); ++x) {
            const auto ring = static_cast<std::size_t>(std::hypot(x - centreX, y - centreY));
            if (ring >= rings)
                continue;
            const std::array<double, 5> pixel{double(qRed(line[x])), double(qGreen(line[x])),
                                              double(qBlue(line[x])), double(qAlpha(line[x])), 1};
            for (std::size_t i = 0; i < pixel.size(); ++i)
                sums[ring][i] += pixel[i];
        }
    }
    std::vector<QColor> means;
    for (const auto& sum : sums) {
        const double alpha = sum[3] > 0 ? sum[3] : 1;
        means.push_back(QColor::fromRgbF(float(std::min(1.0, sum[0] / alpha)),
                                         float(std::min(1.0, sum[1] / alpha)),
                                         float(std::min(1.0, sum[2] / alpha)), float(sum[3] / sum[4] / 255)));
    }
    return means;
}

void paintRecord(QPainter& painter, const Backdrop& backdrop) {
    constexpr int side = 96;
    const auto disc = backdrop.record(side);
    if (!disc || disc->isNull())
        return;
    const auto means = meanOverATurn(*disc);
    const double radius = backdrop.recordDiameter / 2;
    QRadialGradient gradient(backdrop.recordCentre, radius);
    for (std::size_t i = 0; i < means.size(); ++i)
        gradient.setColorAt((double(i) + 0.5) / double(means.size()), means[i]);
    painter.setBrush(gradient);
    painter.drawEllipse(backdrop.recordCentre, radius, radius);
}

void paintPicture(QPainter& painter, const Backdrop::Picture& picture, const QRectF& rect,
                  double radius = 0) {
    if (!picture || rect.isEmpty())
        return;
    const auto image = picture(std::max(1, int(std::ceil(std::max(rect.width(), rect.height()) * sampling))));
    if (!image || image->isNull())
        return;
    QPainterPath outline;
    outline.addRoundedRect(rect, radius, radius);
    painter.save();
    painter.setClipPath(outline);
    painter.drawImage(rect, *image);
    painter.restore();
}

/// What is behind `rect`, `sampling` pixels for one unit.
QImage paintBackdrop(const Backdrop& backdrop, const QRectF& rect) {
    QImage picture((rect.size() * sampling).toSize().expandedTo({1, 1}), QImage::Format_RGB32);
    picture.fill(backdrop.base);
    QPainter painter(&picture);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.setPen(Qt::NoPen);
    painter.scale(sampling, sampling);
    painter.translate(-rect.topLeft());
    const auto& colours = backdrop.gradientColors;
    QLinearGradient gradient(0, 0, 0, backdrop.window.height());
    for (qsizetype i = 0; i < colours.size(); ++i)
        gradient.setColorAt(colours.size() > 1 ? double(i) / double(colours.size() - 1) : 0, colours[i]);
    painter.fillRect(rect, colours.isEmpty() ? QBrush(backdrop.base) : QBrush(gradient));
    paintPicture(painter, backdrop.logo, QRectF(QPointF(), backdrop.window));
    if (backdrop.record && backdrop.recordDiameter > 0)
        paintRecord(painter, backdrop);
    paintPicture(painter, backdrop.cassette, backdrop.cassetteRect);
    paintPicture(painter, backdrop.cover, backdrop.coverRect, backdrop.coverRadius);
    if (!backdrop.listRect.isEmpty())
        painter.fillRect(backdrop.listRect, backdrop.listColor);
    return picture;
}

/// One box pass over `count` pixels that lie `step` apart; beyond the ends lies the last pixel.
void blurLine(QRgb* first, int count, qsizetype step, std::vector<QRgb>& before) {
    const auto at = [&](int i) { return before[std::size_t(std::clamp(i, 0, count - 1))]; };
    for (int i = 0; i < count; ++i)
        before[std::size_t(i)] = first[i * step];
    constexpr int width = 2 * blurRadius + 1;
    int red = 0, green = 0, blue = 0;
    const auto add = [&](QRgb pixel, int sign) {
        red += sign * qRed(pixel);
        green += sign * qGreen(pixel);
        blue += sign * qBlue(pixel);
    };
    for (int i = -blurRadius; i <= blurRadius; ++i)
        add(at(i), 1);
    for (int i = 0; i < count; ++i) {
        first[i * step] =
            qRgb((red + width / 2) / width, (green + width / 2) / width, (blue + width / 2) / width);
        add(at(i + blurRadius + 1), 1);
        add(at(i - blurRadius), -1);
    }
}

void blur(QImage& picture) {
    auto* bits = reinterpret_cast<QRgb*>(picture.bits());
    const qsizetype stride = picture.bytesPerLine() / qsizetype(sizeof(QRgb));
    std::vector<QRgb> line(std::size_t(std::max(picture.width(), picture.height())));
    for (int pass = 0; pass < blurPasses; ++pass) {
        for (int y = 0; y < picture.height(); ++y)
            blurLine(bits + y * stride, picture.width(), 1, line);
        for (int x = 0; x < picture.width(); ++x)
            blurLine(bits + x, picture.height(), stride, line);
    }
}

/// More colour, and as much darker as white symbols on the brightest spot need.
void tone(QImage& picture) {
    auto* bits = reinterpret_cast<QRgb*>(picture.bits());
    const qsizetype count = picture.sizeInBytes() / qsizetype(sizeof(QRgb));
    int brightest = 1;
    for (qsizetype i = 0; i < count; ++i)
        brightest = std::max({brightest, qRed(bits[i]), qGreen(bits[i]), qBlue(bits[i])});
    const double kept = 1 - std::max(leastDarkening, 1 - brightestAllowed / (brightest / 255.0));
    for (qsizetype i = 0; i < count; ++i) {
        const double grey = 0.299 * qRed(bits[i]) + 0.587 * qGreen(bits[i]) + 0.114 * qBlue(bits[i]);
        const auto toned = [&](int channel) {
            return int(std::lround(std::clamp(grey + saturation * (channel - grey), 0.0, 255.0) * kept));
        };
        bits[i] = qRgb(toned(qRed(bits[i])), toned(qGreen(bits[i])), toned(qBlue(bits[i])));
    }
}

} // namespace

QImage frostedPanel(const Backdrop& backdrop, const QRectF& rect, double radius, QSize size) {
    if (rect.isEmpty() || size.isEmpty())
        return {};
    // The blur reaches this far; cut off at the window, whose edge then goes on outwards.
    const double reach = blurRadius * blurPasses / sampling;
    const QRectF around =
        rect.adjusted(-reach, -reach, reach, reach).intersected(QRectF(QPointF(), backdrop.window)) | rect;
    QImage picture = paintBackdrop(backdrop, around);
    blur(picture);
    tone(picture);

    QImage panel(size, QImage::Format_ARGB32_Premultiplied);
    panel.fill(Qt::transparent);
    QPainter painter(&panel);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const double unit = size.width() / rect.width();
    QBrush brush(picture.convertToFormat(QImage::Format_ARGB32_Premultiplied));
    QTransform toPanel;
    toPanel.translate((around.x() - rect.x()) * unit, (around.y() - rect.y()) * unit);
    toPanel.scale(around.width() * unit / picture.width(), around.height() * unit / picture.height());
    brush.setTransform(toPanel);
    painter.setPen(Qt::NoPen);
    painter.setBrush(brush);
    const QRectF whole(QPoint(), size);
    const QPainterPath outline = continuousRectangle(whole, radius * unit);
    painter.drawPath(outline);
    painter.setBrush(QColor(255, 255, 255, 13)); // 5 %
    painter.drawPath(outline);
    const double edge = std::max(1.0, std::round(unit));
    const QPainterPath inside =
        continuousRectangle(whole.adjusted(edge, edge, -edge, -edge), radius * unit - edge);
    painter.fillPath(outline.subtracted(inside), QColor(255, 255, 255, 46)); // 18 %
    return panel;
}

} // namespace tarnwick
