import QtQuick
import Tarnwick.Assets

/// A row of the iPod look: blue from edge to edge under the pointer.
HoverRow {
    id: row

    scale: isHovering ? 1.03 : 1
    textSize: 18
    textWeight: Font.Normal
    wraps: true
    textColor: isHovering ? "white" : "black"
    plate.color: isHovering ? Theme.iPodBlue : "white"

    Behavior on scale { NumberAnimation { duration: Theme.fadeDuration; easing.type: Easing.BezierSpline; easing.bezierCurve: Theme.easeInOut } }
    Behavior on textColor { ColorAnimation { duration: Theme.fadeDuration; easing.type: Easing.BezierSpline; easing.bezierCurve: Theme.easeInOut } }
    Behavior on plate.color { ColorAnimation { duration: Theme.fadeDuration; easing.type: Easing.BezierSpline; easing.bezierCurve: Theme.easeInOut } }
}
