#include "visuals/CoverAnalysis.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace tarnwick {

namespace {

constexpr int threeToneStep = 6;

/// Sums of the four channels. 64 bits hold them for any picture that fits into memory.
struct ChannelSums {
    std::array<quint64, 4> channel{};
    quint64 pixels = 0;
};

/// Eight pixels at a time, each channel in 16 bits of its own: the compiler turns this into vector
/// instructions of whatever width the machine has.
using Lanes = quint32 __attribute__((vector_size(32)));
constexpr std::size_t laneCount = sizeof(Lanes) / sizeof(quint32);
constexpr std::size_t additionsThatFit = 257; // 257 · 255 is the largest number of 16 bits

void addPixels(ChannelSums& sums, const uchar* bytes, std::size_t pixels) {
    sums.pixels += pixels;
    std::size_t done = 0;
    while (pixels - done >= laneCount) {
        const std::size_t rounds = std::min((pixels - done) / laneCount, additionsThatFit);
        Lanes even{}; // red and blue
        Lanes odd{};  // green and alpha
        for (std::size_t i = 0; i < rounds; ++i, done += laneCount) {
            Lanes lanes;
            std::memcpy(&lanes, bytes + done * 4, sizeof lanes);
            even += lanes & 0x00FF00FFU;
            odd += (lanes >> 8) & 0x00FF00FFU;
        }
        for (std::size_t lane = 0; lane < laneCount; ++lane) {
            sums.channel[0] += even[lane] & 0xFFFFU;
            sums.channel[1] += odd[lane] & 0xFFFFU;
            sums.channel[2] += even[lane] >> 16;
            sums.channel[3] += odd[lane] >> 16;
        }
    }
    for (; done < pixels; ++done) {
        for (std::size_t c = 0; c < 4; ++c)
            sums.channel[c] += bytes[done * 4 + c];
    }
}

ChannelSums sumOf(const QImage& cover, const QRect& region) {
    ChannelSums sums;
    const QRect inside = region & cover.rect();
    for (int y = inside.top(); y <= inside.bottom(); ++y)
        addPixels(sums, cover.constScanLine(y) + std::size_t{4} * static_cast<std::size_t>(inside.left()),
                  static_cast<std::size_t>(inside.width()));
    return sums;
}

std::optional<Colour> opaqueMean(const QImage& cover, const QRect& region) {
    const ChannelSums sums = sumOf(cover, region);
    if (sums.pixels == 0)
        return std::nullopt;
    // Whole numbers keep the sums exact; the one division rounds once.
    const double scale = 255.0 * static_cast<double>(sums.pixels);
    return Colour{static_cast<double>(sums.channel[0]) / scale, static_cast<double>(sums.channel[1]) / scale,
                  static_cast<double>(sums.channel[2]) / scale, 1.0};
}

int part(int length, double share) { return static_cast<int>(length * share); }

QRect bandRegion(QSize size) {
    return {part(size.width(), 0.1), part(size.height(), 0.9), part(size.width(), 0.8),
            part(size.height(), 0.1)};
}

QRect centreRegion(QSize size) {
    return {part(size.width(), 0.25), part(size.height(), 0.25), part(size.width(), 0.5),
            part(size.height(), 0.5)};
}

Colour colourOf(const uchar* pixel) {
    return {pixel[0] / 255.0, pixel[1] / 255.0, pixel[2] / 255.0, pixel[3] / 255.0};
}

/// The saturation of a pixel that `threeTone` may take, 0 of any other.
double usableSaturation(const uchar* pixel) {
    const int highest = std::max({pixel[0], pixel[1], pixel[2]});
    const int lowest = std::min({pixel[0], pixel[1], pixel[2]});
    // A quotient of whole numbers, so that equal saturations compare equal and a tenth is no tenth more.
    if (10 * (highest - lowest) <= highest || 10 * highest <= 255 || 10 * highest >= 9 * 255 ||
        20 * pixel[3] <= 255)
        return 0;
    return static_cast<double>(highest - lowest) / highest;
}

BackgroundColours gradientStyle(const QImage& cover) {
    const auto mean = meanColour(cover);
    if (!mean)
        return fallbackColours();
    Colour faded = *mean;
    faded.alpha = 0.5;
    return {{*mean, faded}, {}, contrastingTextColor(*mean)};
}

BackgroundColours oneColorStyle(const QImage& cover) {
    const auto band = bottomBandColour(cover);
    return band ? BackgroundColours{{*band, *band}, {}, contrastingTextColor(*band)} : fallbackColours();
}

BackgroundColours darkColorStyle(const QImage& cover) {
    const auto centre = centreColour(cover);
    if (!centre)
        return fallbackColours();
    const Colour dark = darkenColor(*centre, 0.3);
    return {{dark, dark}, {dark, dark}, contrastingTextColor(dark)};
}

BackgroundColours shapesStyle(const QImage& cover) {
    const auto points = samplePoints(cover);
    if (points.size() < 2)
        return fallbackColours();
    const Colour first = brightenColor(points.front());
    const Colour last = brightenColor(points.back());
    const Colour middle = points.size() >= 3 ? brightenColor(points[1]) : last;
    return {{first, last, middle}, {}, contrastingTextColor(first)};
}

BackgroundColours threeToneStyle(const QImage& cover) {
    const auto tones = mostSaturatedColours(cover);
    if (tones.size() < 3)
        return fallbackColours();
    BackgroundColours result;
    for (const Colour& tone : tones)
        result.gradient.push_back(saturateColor(tone, 2.5));
    result.text = contrastingTextColor(result.gradient.front());
    return result;
}

} // namespace

BackgroundColours fallbackColours() {
    return {{colours::black, colours::grey}, {colours::black, colours::black}, colours::white};
}

std::optional<Colour> meanColour(const QImage& cover) {
    const ChannelSums sums = sumOf(cover, cover.rect());
    if (sums.pixels == 0)
        return std::nullopt;
    const auto mean = [&](std::size_t c) {
        const quint64 rounded = (2 * sums.channel[c] + sums.pixels) / (2 * sums.pixels);
        return static_cast<double>(rounded) / 255.0;
    };
    return Colour{mean(0), mean(1), mean(2), mean(3)};
}

std::optional<Colour> bottomBandColour(const QImage& cover) {
    return opaqueMean(cover, bandRegion(cover.size()));
}

std::optional<Colour> centreColour(const QImage& cover) {
    return opaqueMean(cover, centreRegion(cover.size()));
}

std::vector<Colour> samplePoints(const QImage& cover) {
    if (cover.isNull())
        return {};
    const int width = cover.width();
    const int height = cover.height();
    const std::array points{QPoint{width / 6, height / 6}, QPoint{5 * width / 6, height / 6},
                            QPoint{width / 2, height / 2}, QPoint{width / 6, 5 * height / 6},
                            QPoint{5 * width / 6, 5 * height / 6}};
    std::vector<Colour> result;
    result.reserve(points.size());
    for (const QPoint& point : points)
        result.push_back(colourOf(cover.constScanLine(point.y()) + qsizetype{4} * point.x()));
    std::stable_sort(result.begin(), result.end(),
                     [](const Colour& a, const Colour& b) { return luma601(a) < luma601(b); });
    return result;
}

std::vector<Colour> mostSaturatedColours(const QImage& cover) {
    struct Candidate {
        const uchar* pixel = nullptr;
        double saturation = 0;
    };
    std::array<Candidate, 3> best;
    for (int y = 0; y < cover.height(); y += threeToneStep) {
        const uchar* row = cover.constScanLine(y);
        for (int x = 0; x < cover.width(); x += threeToneStep) {
            const Candidate candidate{row + qsizetype{4} * x, usableSaturation(row + qsizetype{4} * x)};
            if (candidate.saturation <= best.back().saturation)
                continue;
            auto* place = best.end() - 1;
            for (; place != best.begin() && candidate.saturation > (place - 1)->saturation; --place)
                *place = *(place - 1);
            *place = candidate;
        }
    }
    std::vector<Colour> result;
    for (const Candidate& candidate : best) {
        if (candidate.pixel)
            result.push_back(colourOf(candidate.pixel));
    }
    return result;
}

BackgroundColours analyse(BackgroundOption style, const QImage& cover) {
    switch (style) {
    case BackgroundOption::Black:
        return {{colours::black, colours::black}, {}, colours::white};
    case BackgroundOption::White:
        return {{colours::white, colours::white}, {}, colours::black};
    case BackgroundOption::Gradient:
        return gradientStyle(cover);
    case BackgroundOption::OneColor:
        return oneColorStyle(cover);
    case BackgroundOption::DarkColor:
        return darkColorStyle(cover);
    case BackgroundOption::Shapes:
        return shapesStyle(cover);
    case BackgroundOption::ThreeTone:
        return threeToneStyle(cover);
    case BackgroundOption::Random:
        break;
    }
    return fallbackColours();
}

qint64 analysisCost(BackgroundOption style, QSize cover) {
    const auto pixels = [](QSize size) { return qint64{size.width()} * size.height(); };
    switch (style) {
    case BackgroundOption::Gradient:
        return pixels(cover);
    case BackgroundOption::OneColor:
        return pixels(bandRegion(cover).size());
    case BackgroundOption::DarkColor:
        return pixels(centreRegion(cover).size());
    case BackgroundOption::ThreeTone:
        return pixels(cover) / 4; // one pixel in 36, each looked at one by one
    default:
        return 0;
    }
}

} // namespace tarnwick
