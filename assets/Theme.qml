pragma Singleton

import QtQuick

/// What recurs in the views, named once. Lengths and text sizes are points; a view multiplies them by the
/// points' scale of its window. Durations are milliseconds.
QtObject {
    // Type
    readonly property string fontFamily: "Inter"
    readonly property real lineHeight: 1.21 ///< of the size, whatever the script
    readonly property int titleSize: 22
    readonly property int title2IconSize: 18
    readonly property int headlineSize: 14
    readonly property int bodySize: 13
    readonly property int subheadlineSize: 11
    readonly property int regular: Font.Normal
    readonly property int semibold: Font.DemiBold
    readonly property int bold: Font.Bold

    // Lengths
    readonly property int padding: 10
    readonly property int coverRadius: 8
    readonly property int focusRingWidth: 2
    readonly property int focusRingGap: 1 ///< the ring's outer edge then lies 3 outside the control
    readonly property real sliderTrackHeight: 4

    // Colours
    readonly property color green: "#30d158"      ///< on dark grounds
    readonly property color highlight: "#4be36f"  ///< the current row of a standard list
    readonly property color yellow: "#ffd60a"
    readonly property color iPodBlue: "#006fdc"
    readonly property color grey: "#808080"
    readonly property color faintOnDark: "#47ffffff" ///< white at 28 %
    readonly property color noticeGround: "#e6262628" ///< of what is told over the display
    readonly property color noticeEdge: "#2effffff"

    // Motion
    readonly property int defaultDuration: 350
    readonly property int slideDuration: 700  ///< the record, out and back
    readonly property int flipDuration: 1000  ///< the cover, turned over or spun
    readonly property int fadeDuration: 200
    readonly property int springDuration: 320

    /// For `easing.bezierCurve` beside `easing.type: Easing.BezierSpline`.
    readonly property var easeInOut: [0.42, 0, 0.58, 1, 1, 1]
    readonly property real springOvershoot: 1.65 ///< for `easing.type: Easing.OutBack`

    /// A length or a place moved to the nearest whole device pixel, where pictures need no resampling.
    function onPixels(length: real, pixelRatio: real): real {
        return Math.round(length * pixelRatio) / pixelRatio;
    }
}
