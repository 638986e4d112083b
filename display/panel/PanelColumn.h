#pragma once

#include "canvas/type/TypeItem.h"
#include "display/panel/PanelLayout.h"

#include <functional>

namespace tarnwick {

/// Sets the lines of the panel one under the other, until one does not fit any more.
class PanelColumn {
public:
    /// How a text is set.
    struct Style {
        PanelBlock block;
        QFont face;
        double points;
        std::function<int(double points)> weight;
        double room = 0;                      ///< kept free on the left
        QString ending = QStringLiteral("…"); ///< of a text with more lines than fit
    };

    static constexpr double lineHeight = TypeItem::lineHeight;
    static constexpr double ascent = TypeItem::ascent;

    explicit PanelColumn(const PanelFrame& frame);

    /// Leaves a gap of `points` before what comes next; not at the top.
    void skip(double points);

    /// Sets the lines right-aligned as one text, in more lines where one is too wide at the smallest size
    /// that type may have; the second and later ones only above the last `reserve` points of the column.
    /// False, and the column is full, when not one line fits.
    bool addText(const QStringList& wrapped, const QString& spoken, const Style& style, double reserve = 0);

    /// Takes a box of that height for what is no text, and gives its top. None, and the column is full, when
    /// it does not fit.
    std::optional<double> takeHeight(double height);

    /// Puts `text` to the left of the text that was added last, on its first baseline.
    void addLabels(const QString& text, const QFont& font, double distance);

    /// On whole device pixels.
    double snapped(double position) const;
    /// Where what comes next begins.
    double y() const { return m_bottom + m_skip; }
    /// Whether a box of that height fits.
    bool fits(double height) const { return !m_full && y() + height <= m_limit + tolerance; }
    void setFull() { m_full = true; }
    const PanelFrame& frame() const { return m_frame; }
    std::vector<PanelLine>& lines() { return m_lines; }

private:
    static constexpr double tolerance = 0.01;

    static QStringList narrowed(const QStringList& lines, const QFont& font, double width);
    static QFont fontFor(const QStringList& lines, const Style& style, double width);
    bool place(const QString& text, const Style& style, const QFont& font, double width);
    void endLast(const QString& text, double width);
    static void align(PanelLine& line, double right);

    const PanelFrame m_frame;
    const double m_limit;
    double m_bottom;
    double m_skip = 0;
    bool m_full = false;
    size_t m_firstOfText = 0;
    std::vector<PanelLine> m_lines;
};

} // namespace tarnwick
