import QtQuick

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
    onIsWantedChanged: if (!isWanted) isDue = false

    Behavior on opacity { NumberAnimation { duration: 120 } }

    Timer {
        interval: 700
        running: tip.isWanted && !tip.isDue
        onTriggered: tip.isDue = true
    }

    Text {
        id: label

        anchors.centerIn: parent
        text: tip.text
        textFormat: Text.PlainText
        color: "white"
        font.pixelSize: 12 * tip.point
    }
}
