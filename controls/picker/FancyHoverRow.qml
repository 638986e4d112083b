import QtQuick
import Tarnwick.Assets

/// A row of the dynamic look: grows with a spring under the pointer.
HoverRow {
    id: row

    property real scaleFactor: isHovering ? 1.05 : 1

    scale: scaleFactor
    shadowLayers: 6
    plate.radius: 8 * point
    plate.color: isHovering ? "#1affffff" : "transparent"

    // A spring of response 0.3 s and damping 0.6.
    Behavior on scaleFactor { NumberAnimation { duration: Theme.springDuration; easing.type: Easing.OutBack; easing.overshoot: Theme.springOvershoot } }
}
