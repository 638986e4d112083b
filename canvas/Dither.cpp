#include "canvas/Dither.h"

#include <QRgba64>

#include <algorithm>
#include <cmath>

namespace tarnwick {

double ditherAt(int x, int y) {
    // Neighbours in the order of the thresholds lie far apart: the lowest bits of both places decide most.
    int threshold = 0;
    for (int bit = 0; bit < 3; ++bit) {
        const int across = (x >> bit) & 1;
        const int down = (y >> bit) & 1;
        threshold = 4 * threshold + 2 * (across ^ down) + down;
    }
    return (threshold + 0.5) / 64 - 0.5;
}

QImage dithered(const QImage& deep) {
    const QImage from = deep.convertToFormat(QImage::Format_RGBA64_Premultiplied);
    QImage picture(from.size(), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < from.height(); ++y) {
        const auto* in = reinterpret_cast<const QRgba64*>(from.constScanLine(y));
        auto* out = reinterpret_cast<QRgb*>(picture.scanLine(y));
        for (int x = 0; x < from.width(); ++x) {
            const double shift = ditherAt(x, y);
            const int alpha = in[x].alpha8();
            const auto value = [&](quint16 channel) {
                return std::clamp(static_cast<int>(std::lround(channel / 257.0 + shift)), 0, alpha);
            };
            out[x] = qRgba(value(in[x].red()), value(in[x].green()), value(in[x].blue()), alpha);
        }
    }
    return picture;
}

} // namespace tarnwick
