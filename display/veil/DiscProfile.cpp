#include "display/veil/DiscProfile.h"

#include "display/panel/Legibility.h"

#include <algorithm>
#include <cmath>

namespace tarnwick {

namespace {

constexpr double ringWidth = 2; // points
constexpr double pixel = 2;     // points: a block is four pixels
constexpr int neighbours = 2;   // rings that a block may touch on each side

/// Premultiplied mean of the 2 by 2 pixels from (x, y).
Colour meanOfFour(const QImage& disc, int x, int y) {
    Colour sum{0, 0, 0, 0};
    for (int row = y; row < y + 2; ++row) {
        const auto* line = reinterpret_cast<const QRgb*>(disc.constScanLine(row));
        for (int column = x; column < x + 2; ++column) {
            sum.red += qRed(line[column]);
            sum.green += qGreen(line[column]);
            sum.blue += qBlue(line[column]);
            sum.alpha += qAlpha(line[column]);
        }
    }
    constexpr double whole = 4 * 255;
    return {sum.red / whole, sum.green / whole, sum.blue / whole, sum.alpha / whole};
}

Colour over(const Colour& premultiplied, const Colour& ground) {
    const double rest = 1 - premultiplied.alpha;
    return {premultiplied.red + rest * ground.red, premultiplied.green + rest * ground.green,
            premultiplied.blue + rest * ground.blue, 1};
}

/// Where the middle row begins to be the disc, in pixels from the left, to a fraction of one.
double leftEdge(const QImage& disc) {
    const auto* line = reinterpret_cast<const QRgb*>(disc.constScanLine(disc.height() / 2));
    for (int x = 0; x + 1 < disc.width(); ++x) {
        if (qAlpha(line[x]) > 0)
            return x + 1 - std::min(1.0, double(qAlpha(line[x])) / std::max(1, qAlpha(line[x + 1])));
    }
    return 0;
}

} // namespace

DiscProfile::DiscProfile(const QImage& disc, double diameter, const Colour& text,
                         const std::vector<Colour>& grounds)
    : m_text(text) {
    if (disc.isNull() || diameter < 4 * ringWidth)
        return;
    const int side = static_cast<int>(std::lround(diameter / pixel));
    const QSize halved(side, side);
    const QImage whole = disc.scaled(2 * halved, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                             .convertToFormat(QImage::Format_ARGB32_Premultiplied);
    m_rings.resize(static_cast<size_t>(diameter / 2 / ringWidth) + 1);
    std::vector<std::vector<Colour>> worsts(m_rings.size());
    // Half a pixel further a block may catch more of a fine bright line.
    for (const int shift : {0, 1}) {
        const QImage small = whole.copy(QRect(QPoint(shift, shift), whole.size()))
                                 .scaled(halved, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        if (shift == 0)
            m_radius = diameter / 2 - pixel * leftEdge(small);
        gather(small, shift, grounds, worsts);
    }
}

void DiscProfile::gather(const QImage& small, double shift, const std::vector<Colour>& grounds,
                         std::vector<std::vector<Colour>>& worsts) {
    const int side = small.width();
    for (int y = 0; y + 1 < side; ++y) {
        for (int x = 0; x + 1 < side; ++x) {
            const double distance =
                std::hypot(pixel * (x + 1 - side / 2.0) + shift, pixel * (y + 1 - side / 2.0) + shift);
            const auto ring = static_cast<size_t>(distance / ringWidth);
            if (ring >= m_rings.size())
                continue;
            const Colour mean = meanOfFour(small, x, y);
            std::vector<Colour>& candidates = m_rings[ring];
            candidates.resize(grounds.size());
            worsts[ring].resize(grounds.size());
            for (size_t i = 0; i < grounds.size(); ++i) {
                const Colour seen = over(mean, grounds[i]);
                if (worsts[ring][i] == Colour{} || isHarder(m_text, seen, worsts[ring][i])) {
                    worsts[ring][i] = seen;
                    candidates[i] = mean;
                }
            }
        }
    }
}

void DiscProfile::worsen(Colour& worst, size_t ring, const Colour& ground) const {
    for (const Colour& candidate : m_rings[ring]) {
        const Colour seen = over(candidate, ground);
        if (isHarder(m_text, seen, worst))
            worst = seen;
    }
}

Colour DiscProfile::worst(double distance, const Colour& ground) const {
    const int middle = static_cast<int>(distance / ringWidth);
    const int last = static_cast<int>(m_rings.size()) - 1;
    Colour worst = ground;
    bool first = true;
    for (int ring = std::max(0, middle - neighbours); ring <= std::min(last, middle + neighbours); ++ring) {
        if (first && !m_rings[static_cast<size_t>(ring)].empty()) {
            worst = over(m_rings[static_cast<size_t>(ring)].front(), ground);
            first = false;
        }
        worsen(worst, static_cast<size_t>(ring), ground);
    }
    return worst;
}

Colour DiscProfile::worstOfAll(const Colour& ground) const {
    Colour worst = ground;
    for (size_t ring = 0; ring < m_rings.size(); ++ring)
        worsen(worst, ring, ground);
    return worst;
}

} // namespace tarnwick
