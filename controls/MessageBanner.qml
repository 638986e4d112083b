import QtQuick
import Tarnwick.Assets

/// What a script wants to tell, calmly above the bar for some seconds. Never in the way.
Rectangle {
    id: banner

    property real point: 1
    property real maximumWidth: 560 * point

    readonly property bool isShown: opacity > 0

    /// Shows `message`, in place of one that is still there.
    function show(message: string): void {
        label.text = message;
        opacity = 1;
        clock.restart();
    }

    width: Math.min(maximumWidth, label.implicitWidth + 36 * point)
    height: label.height + 20 * point
    radius: 12 * point
    color: "#e6262628"
    border.width: 1
    border.color: "#2effffff"
    opacity: 0
    visible: opacity > 0
    Accessible.role: Accessible.AlertMessage
    Accessible.name: label.text

    Behavior on opacity { NumberAnimation { duration: Theme.defaultDuration; easing.type: Easing.BezierSpline; easing.bezierCurve: Theme.easeInOut } }

    Timer {
        id: clock
        interval: 4000
        onTriggered: banner.opacity = 0
    }

    Text {
        id: label

        anchors.centerIn: parent
        width: banner.width - 36 * banner.point
        horizontalAlignment: Text.AlignHCenter
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        elide: Text.ElideRight
        maximumLineCount: 3
        color: "white"
        font.pixelSize: Theme.headlineSize * banner.point
        font.weight: Font.Medium
    }
}
