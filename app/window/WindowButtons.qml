pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick.App

// Close, minimise and full screen, in the corner; seen while the pointer is near.
Item {
    id: buttons

    required property TarnwickApp app
    required property bool isFullScreen
    required property bool isPointerHidden
    required property real point

    readonly property int fadeInTime: 150
    readonly property int fadeOutTime: 250
    readonly property int stayTime: 600

    /// From one button to the next, in points; in full screen a finger may press them.
    readonly property real zone: isFullScreen ? 44 : 22

    width: Math.max(140, 3 * zone + 34) * point
    height: 60 * point

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

        x: 12 * buttons.point
        y: 12 * buttons.point
        width: (3 * buttons.zone + 10) * buttons.point
        height: 28 * buttons.point
        radius: height / 2
        color: Qt.rgba(0, 0, 0, 0.45)
        border { width: buttons.point; color: Qt.rgba(1, 1, 1, 0.14) }
        opacity: shown && !buttons.isPointerHidden ? 1 : 0
        visible: opacity > 0
        Behavior on opacity { NumberAnimation { duration: pill.shown ? buttons.fadeInTime : buttons.fadeOutTime } }

        Row {
            anchors.centerIn: parent
            spacing: (buttons.zone - 14) * buttons.point

            WindowButton {
                point: buttons.point
                zone: buttons.zone
                name: "Close"
                glyph: WindowButton.Close
                onTriggered: buttons.app.closeWindow()
            }
            WindowButton {
                point: buttons.point
                zone: buttons.zone
                name: "Minimise"
                glyph: WindowButton.Minimise
                onTriggered: buttons.app.minimizeWindow()
            }
            WindowButton {
                point: buttons.point
                zone: buttons.zone
                name: buttons.isFullScreen ? "Leave full screen" : "Full screen"
                glyph: buttons.isFullScreen ? WindowButton.LeaveFullScreen : WindowButton.FullScreen
                onTriggered: buttons.app.toggleFullScreen()
            }
        }
    }
}
