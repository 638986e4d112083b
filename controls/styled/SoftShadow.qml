pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick.Canvas

/// The shadow of what has this item's place: layers that together fall off like a blur.
Item {
    id: shadow

    property int layers: 6
    /// How far the blur goes to either side of the edge.
    required property real reach
    /// How far below what throws it.
    property real drop: 0
    /// Of the corners of what throws it.
    property real radius: 0
    property color color: "black"
    /// Where it is deepest.
    required property real strength

    Repeater {
        model: shadow.layers

        Plate {
            required property int index

            readonly property real spread: shadow.reach * (1 - 2 * (index + 0.5) / shadow.layers)

            x: -spread
            y: shadow.drop - spread
            width: shadow.width + 2 * spread
            height: shadow.height + 2 * spread
            radius: Math.max(0, shadow.radius + spread)
            color: shadow.color
            opacity: shadow.strength / shadow.layers
        }
    }
}
