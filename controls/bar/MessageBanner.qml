import QtQuick
import Tarnwick.Assets
import Tarnwick.Canvas

/// What a script wants to tell, calmly above the bar. Never in the way.
Rectangle {
    id: banner

    /// "" for nothing.
    required property string message
    property real point: 1
    property real maximumWidth: 560 * point

    width: Math.min(maximumWidth, label.implicitWidth + 36 * point)
    height: label.height + 20 * point
    radius: 12 * point
    color: Theme.noticeGround
    border.width: 1
    border.color: Theme.noticeEdge
    opacity: message.length > 0 ? 1 : 0
    visible: opacity > 0
    onMessageChanged: {
        if (message.length > 0)
            label.text = message; // which stays while it fades
    }

    Behavior on opacity { NumberAnimation { duration: Theme.defaultDuration; easing.type: Easing.BezierSpline; easing.bezierCurve: Theme.easeInOut } }

    Told { text: banner.message }

    TypeBlock {
        id: label

        anchors.centerIn: parent
        width: banner.width - 36 * banner.point
        height: implicitHeight
        maximumLines: 3
        color: "white"
        pixelRatio: Screen.devicePixelRatio // qmllint disable type
        font.pixelSize: Theme.headlineSize * banner.point
        font.weight: Font.Medium
    }
}
