import QtQuick
import Tarnwick.Assets

/// The ring around what the keyboard acts on: 2 wide, its outer edge 3 outside its parent.
Rectangle {
    id: ring

    property real point: 1
    /// Of the parent's corners.
    property real innerRadius: 0
    readonly property real reach: (Theme.focusRingWidth + Theme.focusRingGap) * point

    anchors.fill: parent
    anchors.margins: -ring.reach
    radius: ring.innerRadius + ring.reach
    color: "transparent"
    border.width: Theme.focusRingWidth * ring.point
    border.color: "white"
}
