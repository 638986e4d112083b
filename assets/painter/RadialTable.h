#pragma once

#include <vector>

namespace tarnwick::painter {

/// A quantity that depends on the radius alone, looked up instead of computed at every point.
class RadialTable {
public:
    static constexpr int size = 16384;
    static constexpr float maximumRadius = 1.02F;

    /// `value(r)` at every entry, smoothed by a gaussian of `sigma` pixels of the finished picture, so
    /// that nothing in it is finer than a pixel can show.
    template <typename Function>
    RadialTable(float sigma, Function value) : m_values(size) {
        for (int i = 0; i < size; ++i)
            m_values[static_cast<std::size_t>(i)] = value(maximumRadius * static_cast<float>(i) / (size - 1));
        smooth(sigma);
    }

    float at(float r) const {
        const float place = r * ((size - 1) / maximumRadius);
        const int i = place < 0 ? 0 : place >= size - 2 ? size - 2 : static_cast<int>(place);
        const float t = place - static_cast<float>(i);
        return m_values[static_cast<std::size_t>(i)] * (1 - t) +
               m_values[static_cast<std::size_t>(i) + 1] * t;
    }

private:
    void smooth(float sigma);

    std::vector<float> m_values;
};

} // namespace tarnwick::painter
