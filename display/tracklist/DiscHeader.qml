pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick.Assets
import Tarnwick.Canvas

// The line above the titles of a disc.
Item {
    id: root

    required property int discNumber
    required property color color
    required property bool isFirst
    required property real gapBelow
    required property real pixelRatio

    readonly property real gapAbove: isFirst ? 0 : 24

    implicitHeight: gapAbove + title.height + gapBelow
    height: implicitHeight

    TypeItem {
        id: title

        x: (root.width - implicitWidth) / 2
        y: root.gapAbove
        color: root.color
        font { family: Theme.fontFamily; pixelSize: Theme.titleSize; weight: Theme.semibold }
        text: "Disc " + root.discNumber
        pixelRatio: root.pixelRatio
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
}
