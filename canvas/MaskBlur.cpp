#include "canvas/MaskBlur.h"

#include <cmath>
#include <vector>

namespace tarnwick {

namespace {

constexpr int passes = 3;

/// One box pass over `count` values that are `stride` apart.
void boxPass(uchar* values, int count, qsizetype stride, int radius, std::vector<uchar>& line) {
    line.resize(static_cast<std::size_t>(count));
    const int width = 2 * radius + 1;
    int sum = 0;
    for (int i = 0; i < std::min(radius, count); ++i)
        sum += values[i * stride];
    for (int i = 0; i < count; ++i) {
        if (i + radius < count)
            sum += values[(i + radius) * stride];
        if (i - radius - 1 >= 0)
            sum -= values[(i - radius - 1) * stride];
        line[static_cast<std::size_t>(i)] = static_cast<uchar>(sum / width);
    }
    for (int i = 0; i < count; ++i)
        values[i * stride] = line[static_cast<std::size_t>(i)];
}

} // namespace

void blurMask(QImage& mask, double radius) {
    const int box = static_cast<int>(std::lround(radius / passes));
    if (box < 1)
        return;
    std::vector<uchar> line;
    for (int pass = 0; pass < passes; ++pass) {
        for (int y = 0; y < mask.height(); ++y)
            boxPass(mask.scanLine(y), mask.width(), 1, box, line);
        for (int x = 0; x < mask.width(); ++x)
            boxPass(mask.bits() + x, mask.height(), mask.bytesPerLine(), box, line);
    }
}

} // namespace tarnwick
