pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick.Assets
import Tarnwick.Canvas
import Tarnwick.Display
import Tarnwick.Settings

// A title of the album with its duration. A tap plays it.
Item {
    id: root

    required property int style
    required property string title
    required property string duration
    required property bool isCurrent
    required property bool isHighlighted ///< under the pointer, or chosen by the keys
    required property color textColor    ///< of the dynamic style
    required property color ground       ///< of the dynamic style
    required property color veil         ///< between the panel and the ground of the dynamic style
    required property real pixelRatio
    required property Gestures gestures

    signal tapped
    signal hovered(bool entered)

    readonly property bool isIPod: style === Options.TracklistStyle.IPod
    readonly property bool isDynamic: style === Options.TracklistStyle.Dynamic
    readonly property bool isStandard: style === Options.TracklistStyle.Standard
    readonly property bool isBold: isHighlighted || (isIPod && isCurrent)
    readonly property real padding: isStandard ? 0.03 * width + 6 : 16
    readonly property int size: isStandard || (isDynamic && !isBold) ? 16 : isBold ? 20 : 18
    readonly property color ink: isIPod ? (isBold ? "white" : "black")
                                        : isHighlighted ? Theme.yellow
                                        : isDynamic ? textColor
                                        : isCurrent ? Theme.highlight : "white"
    /// The line on which the type stands in every state, that of the largest.
    readonly property real typeLine: height / 2 + 0.36 * (isStandard ? 16 : 20)

    implicitHeight: isDynamic ? 40 : 38
    height: implicitHeight
    Accessible.role: Accessible.ListItem
    Accessible.name: title + ", " + duration
    Accessible.selected: isHighlighted
    Accessible.onPressAction: tapped()

    component Line: TypeItem {
        y: root.typeLine - baselineOffset
        color: root.ink
        font { family: Theme.fontFamily; pixelSize: root.size; weight: root.isBold ? Theme.bold : Theme.regular }
        pixelRatio: root.pixelRatio
        Accessible.ignored: true
    }

    Rectangle {
        anchors.fill: parent
        visible: root.isDynamic && !root.isHighlighted
        color: root.veil
    }

    Rectangle {
        anchors.fill: parent
        visible: root.isDynamic
        color: Qt.rgba(root.ground.r, root.ground.g, root.ground.b, 0.1)
    }

    Rectangle {
        anchors.fill: parent
        visible: root.isIPod && root.isBold
        color: root.isCurrent ? Qt.rgba(0, 0.2, 0.4, 1) : Qt.rgba(0, 0.48, 1, 1)
    }

    // In device pixels, so that it is as thick in every row.
    Rectangle {
        anchors.bottom: parent.bottom
        width: Math.round(parent.width * root.pixelRatio)
        height: Math.max(1, Math.round(root.pixelRatio))
        scale: 1 / root.pixelRatio
        transformOrigin: Item.BottomLeft
        visible: !root.isIPod
        color: Theme.grey
        opacity: 0.4
    }

    Item {
        anchors.fill: parent
        scale: root.isStandard && root.isHighlighted ? 1.05 : 1
        Behavior on scale { NumberAnimation { duration: Theme.fadeDuration; easing.type: Easing.InOutQuad } }

        Line {
            x: root.padding
            width: time.x - 16 - x
            elides: true
            text: root.title.replace(/[\r\n\u2028]+/g, " ")
        }

        Line {
            id: time

            x: parent.width - root.padding - implicitWidth
            inCells: true
            text: root.duration
        }
    }

    // No MouseArea, which loses the first tap of a finger after it has scrolled.
    HoverHandler {
        acceptedDevices: PointerDevice.AllDevices & ~PointerDevice.TouchScreen
        onHoveredChanged: root.hovered(hovered)
    }
    Tap {
        gestures: root.gestures
        isOfControl: true
        onChosen: root.tapped()
    }
}
