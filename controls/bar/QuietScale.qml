import QtQuick
import Tarnwick.Assets
import Tarnwick.Controls

/// How loud it is, told at the edge while it is changed.
Rectangle {
    id: plate

    required property VolumeScale scaleOfVolume
    property real point: 1

    readonly property real margin: Math.round(16 * point)

    width: Math.round(36 * point)
    radius: width / 2
    color: Theme.noticeGround
    border { width: 1; color: Theme.noticeEdge }
    opacity: scaleOfVolume.isShown ? 1 : 0
    visible: opacity > 0

    Behavior on opacity { NumberAnimation { duration: Theme.fadeDuration; easing.type: Easing.InOutQuad } }

    Rectangle {
        id: track

        anchors.horizontalCenter: parent.horizontalCenter
        y: plate.margin
        width: Math.round(6 * plate.point)
        height: parent.height - 2 * plate.margin
        radius: width / 2
        color: Theme.faintOnDark

        Rectangle {
            anchors.bottom: parent.bottom
            width: parent.width
            height: Math.round(plate.scaleOfVolume.level * track.height)
            radius: width / 2
            color: "white"
        }
    }
}
