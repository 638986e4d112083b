#include "assets/painter/DiscShader.h"

namespace tarnwick::painter {

namespace {

/// Highlights bend towards white instead of breaking off.
float bent(float x) {
    constexpr float knee = 0.8F;
    return x <= knee ? x : knee + (1 - knee) * (1 - std::exp(-(x - knee) / (1 - knee)));
}

std::uint32_t encoded(float linear, float dither) {
    return static_cast<std::uint32_t>(
        clamp(toEncoded(bent(std::max(linear, 0.0F))) * 255 + 0.5F + dither, 0, 255));
}

QRgb finished(const Sample& sample, int column, int row) {
    const float alpha = clamp(sample.alpha, 0, 1);
    const auto alphaByte = static_cast<std::uint32_t>(alpha * 255 + 0.5F);
    if (alphaByte == 0)
        return 0;
    // Half a step of noise: a black gradient would show its steps without it.
    const float dither = hash(column, row, 77) - 0.5F;
    const Rgb straight = sample.colour * (1 / alpha);
    return alphaByte << 24 | encoded(straight.r, dither) << 16 | encoded(straight.g, dither) << 8 |
           encoded(straight.b, dither);
}

} // namespace

Sample Print::at(int column, int row) const {
    if (m_art.isNull())
        return {};
    const QRgb pixelValue = reinterpret_cast<const QRgb*>(m_art.constScanLine(row))[column];
    const float alpha = static_cast<float>(qAlpha(pixelValue)) / 255;
    static const std::array<float, 256> linear = [] {
        std::array<float, 256> table{};
        for (std::size_t i = 0; i < table.size(); ++i)
            table[i] = toLinear(static_cast<float>(i) / 255);
        return table;
    }();
    const auto of = [&](int value) { return linear[static_cast<std::size_t>(value)]; };
    return {Rgb{of(qRed(pixelValue)), of(qGreen(pixelValue)), of(qBlue(pixelValue))} * alpha, alpha};
}

std::unique_ptr<DiscShader> makeShader(const Disc& disc) {
    switch (disc.pattern) {
    case Pattern::CompactDisc:
        return makeCompactDisc(disc);
    case Pattern::Reel:
        return makeReel(disc);
    default:
        return makeVinyl(disc);
    }
}

QImage paintDisc(const Disc& disc) {
    const auto shader = makeShader(disc);
    QImage picture(side, side, QImage::Format_ARGB32);
    for (int row = 0; row < side; ++row) {
        auto* line = reinterpret_cast<QRgb*>(picture.scanLine(row));
        for (int column = 0; column < side; ++column)
            line[column] = finished(shader->at(column, row), column, row);
    }
    return picture;
}

} // namespace tarnwick::painter
