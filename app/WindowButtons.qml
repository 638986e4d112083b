pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick.App

// Close, minimise and full screen, in the corner; seen while the pointer is near.
Item {
    id: buttons

    required property TarnwickApp app
    required property bool isFullScreen

    readonly property int fadeInTime: 150
    readonly property int fadeOutTime: 250
    readonly property int stayTime: 600

    width: 140
    height: 60

    HoverHandler {
        id: near

        onHoveredChanged: {
            if (hovered) {
                stay.stop();
                pill.shown = true;
            } else {
                stay.restart();
            }
        }
    }

    Timer {
        id: stay

        interval: buttons.stayTime
        onTriggered: pill.shown = false
    }

    Rectangle {
        id: pill

        property bool shown: false

        x: 12
        y: 12
        width: 76
        height: 28
        radius: 14
        color: Qt.rgba(0, 0, 0, 0.45)
        border { width: 1; color: Qt.rgba(1, 1, 1, 0.14) }
        opacity: shown ? 1 : 0
        visible: opacity > 0
        Behavior on opacity { NumberAnimation { duration: pill.shown ? buttons.fadeInTime : buttons.fadeOutTime } }

        Row {
            anchors.centerIn: parent
            spacing: 8

            WindowButton {
                name: "Close"
                glyph: WindowButton.Close
                onTriggered: buttons.app.closeWindow()
            }
            WindowButton {
                name: "Minimise"
                glyph: WindowButton.Minimise
                onTriggered: buttons.app.minimizeWindow()
            }
            WindowButton {
                name: buttons.isFullScreen ? "Leave full screen" : "Full screen"
                glyph: buttons.isFullScreen ? WindowButton.LeaveFullScreen : WindowButton.FullScreen
                onTriggered: buttons.app.toggleFullScreen()
            }
        }
    }
}
