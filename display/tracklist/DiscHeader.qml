pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick.Assets

// The line above the titles of a disc.
Item {
    id: root

    required property int discNumber
    required property color color
    required property bool isFirst
    required property real gapBelow

    readonly property real gapAbove: isFirst ? 0 : 24

    implicitHeight: gapAbove + title.height + gapBelow
    height: implicitHeight

    Text {
        id: title

        y: root.gapAbove
        width: parent.width
        height: Theme.lineHeight * Theme.titleSize
        color: root.color
        font { family: Theme.fontFamily; pixelSize: Theme.titleSize; weight: Theme.semibold }
        horizontalAlignment: Text.AlignHCenter
        text: "Disc " + root.discNumber
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
}
