import QtQuick
import Tarnwick.Canvas

/// A word about the control under the pointer, once it has rested there.
Rectangle {
    id: tip

    required property string text
    /// Whether the pointer is over the control.
    required property bool isWanted
    property real point: 1

    property bool isDue: false

    anchors.horizontalCenter: parent?.horizontalCenter
    anchors.bottom: parent?.top
    anchors.bottomMargin: 6 * tip.point
    width: label.implicitWidth + 14 * tip.point
    height: 22 * tip.point
    radius: 5 * tip.point
    color: "#e6262628"
    border.width: 1
    border.color: "#2effffff"
    opacity: tip.isWanted && tip.isDue ? 1 : 0
    visible: opacity > 0
    transformOrigin: Item.Bottom
    scale: 1 / (parent?.scale ?? 1) // a tip does not grow with its control
    onIsWantedChanged: if (!isWanted) isDue = false
    onIsDueChanged: say()
    onTextChanged: say()

    // Painted where it rests, and left as it is while it fades.
    function say(): void {
        if (isDue)
            label.text = text;
    }

    Behavior on opacity { NumberAnimation { duration: 120 } }

    Timer {
        interval: 700
        running: tip.isWanted && !tip.isDue
        onTriggered: tip.isDue = true
    }

    TypeItem {
        id: label

        anchors.centerIn: parent
        color: "white"
        pixelRatio: Screen.devicePixelRatio // qmllint disable type
        font.pixelSize: 12 * tip.point
    }
}
