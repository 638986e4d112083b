#pragma once

#include <QSizeF>

namespace tarnwick {

/// The type sizes of the panel in points.
struct PanelSizes {
    double base = 14;
    double large = 22;
    double medium = 20;
    double clock = 50;
    double date = 20;

    double times() const { return 0.7 * base; }
    double group() const { return 0.7 * medium; }
    double gap() const { return 0.3 * base; }
};

/// How many characters a line may have.
struct WrapLimits {
    int title = 0;
    int artist = 0;
    int album = 0;
    int comment = 0;
};

/// What the panel stands in.
struct PanelFrame {
    QSizeF window; ///< points
    bool fullScreen = false;
    bool cassette = false; ///< a cassette is shown in place of the record
    bool list = false;     ///< the left half is the track list's, over which no line may run
    double pixelRatio = 1; ///< device pixels of a point

    friend bool operator==(const PanelFrame&, const PanelFrame&) = default;

    /// Where the ink of every line ends, in points from the left.
    double inkEdge() const;

    /// The widest that a line may be, in points; 0 when the window is too narrow for any.
    double widestLine() const;
};

PanelSizes panelSizes(bool fullScreen);

/// `width` is the window's, in points.
WrapLimits wrapLimits(double width, bool fullScreen);

} // namespace tarnwick
