#include "assets/painter/RadialTable.h"

#include "assets/painter/Geometry.h"

#include <algorithm>
#include <cmath>

namespace tarnwick::painter {

void RadialTable::smooth(float sigma) {
    const float spread = sigma * pixel * ((size - 1) / maximumRadius);
    const int reach = static_cast<int>(std::ceil(3 * spread));
    std::vector<float> weights(static_cast<std::size_t>(reach) + 1);
    float total = 0;
    for (int i = 0; i <= reach; ++i) {
        const float t = static_cast<float>(i) / spread;
        weights[static_cast<std::size_t>(i)] = std::exp(-0.5F * t * t);
        total += (i == 0 ? 1 : 2) * weights[static_cast<std::size_t>(i)];
    }
    std::vector<float> result(m_values.size());
    for (int i = 0; i < size; ++i) {
        float sum = 0;
        for (int j = -reach; j <= reach; ++j)
            sum += weights[static_cast<std::size_t>(std::abs(j))] *
                   m_values[static_cast<std::size_t>(std::clamp(i + j, 0, size - 1))];
        result[static_cast<std::size_t>(i)] = sum / total;
    }
    m_values = std::move(result);
}

} // namespace tarnwick::painter
