#pragma once

#include <QSizeF>

#include <vector>

namespace tarnwick {

/// How strong a veil is over a window: alphas on a lattice of cells, from what is needed in some of them to a
/// cloud without an edge.
class VeilField {
public:
    /// Side of a cell in points.
    static constexpr double cell = 8;

    explicit VeilField(const QSizeF& window);

    /// Asks for at least `alpha` in a cell; positions outside are ignored.
    void need(int column, int row, double alpha);

    /// Spreads what is needed into soft clouds that fade out over `reach` points. Once, after the needs.
    void spread(double reach);

    /// The alpha at a point of the window, in points; after `spread`.
    double at(double x, double y) const;

    bool isEmpty() const { return m_peak <= 0; }
    double peak() const { return m_peak; }
    int columns() const { return m_columns; }
    int rows() const { return m_rows; }

private:
    using Lattice = std::vector<float>;

    size_t index(int column, int row) const {
        return static_cast<size_t>(row) * static_cast<size_t>(m_columns) + static_cast<size_t>(column);
    }
    Lattice widened() const;
    Lattice clouds(const Lattice& needs, double reachInCells) const;
    void blur(Lattice& lattice, int radius) const;

    int m_columns;
    int m_rows;
    Lattice m_values;
    double m_peak = 0;
};

} // namespace tarnwick
