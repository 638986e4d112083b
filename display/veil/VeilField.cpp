#include "display/veil/VeilField.h"

#include <algorithm>
#include <cmath>

namespace tarnwick {

namespace {

int cellsOf(double length) { return std::max(1, static_cast<int>(std::ceil(length / VeilField::cell))); }

/// One box pass over `count` values `stride` apart; beyond the ends the values go on as they are there.
void boxPass(float* values, int count, int stride, int radius, std::vector<float>& line) {
    line.resize(static_cast<size_t>(count));
    const auto value = [&](int i) { return values[std::clamp(i, 0, count - 1) * stride]; };
    float sum = 0;
    for (int i = -radius; i <= radius; ++i)
        sum += value(i);
    for (int i = 0; i < count; ++i) {
        line[static_cast<size_t>(i)] = sum / static_cast<float>(2 * radius + 1);
        sum += value(i + radius + 1) - value(i - radius);
    }
    for (int i = 0; i < count; ++i)
        values[i * stride] = line[static_cast<size_t>(i)];
}

} // namespace

VeilField::VeilField(const QSizeF& window)
    : m_columns(cellsOf(window.width())), m_rows(cellsOf(window.height())),
      m_values(static_cast<size_t>(m_columns) * static_cast<size_t>(m_rows), 0.0F) {}

void VeilField::need(int column, int row, double alpha) {
    if (column < 0 || row < 0 || column >= m_columns || row >= m_rows)
        return;
    float& value = m_values[index(column, row)];
    value = std::max(value, static_cast<float>(alpha));
    m_peak = std::max(m_peak, alpha);
}

void VeilField::spread(double reach) {
    if (isEmpty())
        return;
    const Lattice needs = widened();
    const double reachInCells = reach / cell;
    m_values = clouds(needs, reachInCells);
    constexpr int passes = 3;
    const int radius = std::max(1, static_cast<int>(std::lround(reachInCells / 8)));
    for (int pass = 0; pass < passes; ++pass)
        blur(m_values, radius);
    for (size_t i = 0; i < needs.size(); ++i)
        m_values[i] = std::max(m_values[i], needs[i]);
}

VeilField::Lattice VeilField::widened() const {
    Lattice result = m_values;
    for (int row = 0; row < m_rows; ++row) {
        for (int column = 0; column < m_columns; ++column) {
            const float value = m_values[index(column, row)];
            if (value <= 0)
                continue;
            for (int y = std::max(0, row - 1); y <= std::min(m_rows - 1, row + 1); ++y) {
                for (int x = std::max(0, column - 1); x <= std::min(m_columns - 1, column + 1); ++x)
                    result[index(x, y)] = std::max(result[index(x, y)], value);
            }
        }
    }
    return result;
}

VeilField::Lattice VeilField::clouds(const Lattice& needs, double reachInCells) const {
    Lattice result(needs.size(), 0.0F);
    const int reach = static_cast<int>(reachInCells);
    const int side = 2 * reach + 1;
    std::vector<float> falloff(static_cast<size_t>(side) * static_cast<size_t>(side));
    const auto place = [side, reach](int x, int y) {
        return static_cast<size_t>(y + reach) * static_cast<size_t>(side) + static_cast<size_t>(x + reach);
    };
    for (int y = -reach; y <= reach; ++y) {
        for (int x = -reach; x <= reach; ++x) {
            const double rest = std::max(0.0, 1 - (x * x + y * y) / (reachInCells * reachInCells));
            falloff[place(x, y)] = static_cast<float>(rest * rest);
        }
    }
    for (int row = 0; row < m_rows; ++row) {
        for (int column = 0; column < m_columns; ++column) {
            const float value = needs[index(column, row)];
            if (value <= 0)
                continue;
            const int left = std::max(0, column - reach);
            const int right = std::min(m_columns - 1, column + reach);
            for (int y = std::max(0, row - reach); y <= std::min(m_rows - 1, row + reach); ++y) {
                const float* weight = &falloff[place(left - column, y - row)];
                float* out = &result[index(left, y)];
                for (int x = left; x <= right; ++x, ++weight, ++out)
                    *out = std::max(*out, value * *weight);
            }
        }
    }
    return result;
}

void VeilField::blur(Lattice& lattice, int radius) const {
    std::vector<float> line;
    for (int row = 0; row < m_rows; ++row)
        boxPass(&lattice[index(0, row)], m_columns, 1, radius, line);
    for (int column = 0; column < m_columns; ++column)
        boxPass(&lattice[index(column, 0)], m_rows, m_columns, radius, line);
}

double VeilField::at(double x, double y) const {
    const double column = std::clamp(x / cell - 0.5, 0.0, static_cast<double>(m_columns - 1));
    const double row = std::clamp(y / cell - 0.5, 0.0, static_cast<double>(m_rows - 1));
    const int left = static_cast<int>(column);
    const int top = static_cast<int>(row);
    const int right = std::min(left + 1, m_columns - 1);
    const int bottom = std::min(top + 1, m_rows - 1);
    const double u = column - left;
    const double v = row - top;
    const double upper = (1 - u) * m_values[index(left, top)] + u * m_values[index(right, top)];
    const double lower = (1 - u) * m_values[index(left, bottom)] + u * m_values[index(right, bottom)];
    return (1 - v) * upper + v * lower;
}

} // namespace tarnwick
