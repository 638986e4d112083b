pragma ComponentBehavior: Bound

import QtQuick

// A rectangle whose round corners and border are drawn in device pixels however its scene is enlarged. The renderer
// that uses no graphics card draws them in the item's own units and magnifies them.
Item {
    id: root

    required property real pixelRatio ///< device pixels of a point
    property real radius: 0
    property color color: "white"
    property color borderColor: "transparent"
    property real borderWidth: 0

    Rectangle {
        width: root.width * root.pixelRatio
        height: root.height * root.pixelRatio
        scale: 1 / root.pixelRatio
        transformOrigin: Item.TopLeft
        radius: root.radius * root.pixelRatio
        color: root.color
        border { color: root.borderColor; width: root.borderWidth * root.pixelRatio }
    }
}
