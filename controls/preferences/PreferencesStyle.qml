pragma Singleton

import QtQuick

/// The colours of the preferences, in light and dark surroundings.
QtObject {
    id: style

    readonly property SystemPalette palette: SystemPalette {}
    /// Whether the desktop's colours are dark. Pictures of the window set it.
    property bool isDark: palette.window.hslLightness < 0.5

    readonly property color ground: isDark ? "#1e1e20" : "#f2f2f4"
    readonly property color card: isDark ? "#323236" : "#fafafb"
    readonly property color edge: isDark ? "#14ffffff" : "#0f000000"
    readonly property color divider: isDark ? "#26ffffff" : "#24000000"
    readonly property color text: isDark ? "#f2f2f4" : "#1d1d1f"
    readonly property color subtitle: isDark ? "#a2a2a8" : "#6b6b70"
    readonly property color disabled: isDark ? "#6f6f75" : "#9a9aa0"
    readonly property color fill: isDark ? "#1673e6" : "#0066cc"
    readonly property color icon: isDark ? "#3f9bff" : "#0066cc"
    readonly property color red: isDark ? "#ff5147" : "#e0342b"
    /// Under white type.
    readonly property color destructive: "#d6342b"
    readonly property color switchOff: isDark ? "#86868c" : "#8a8a90"
    /// Of pop-ups and buttons, their border, and of what lies in a segmented picker.
    readonly property color control: isDark ? "#55555a" : "#ffffff"
    readonly property color controlEdge: isDark ? "#2effffff" : "#33000000"
    readonly property color trough: isDark ? "#47474c" : "#dadadf"
    readonly property color box: isDark ? "#55555a" : "#ffffff"
    /// Alone tells an empty box from its card.
    readonly property color boxEdge: isDark ? "#8c8c92" : "#85858a"
}
