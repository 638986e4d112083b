import QtQuick
import QtQuick.Templates as T
import Tarnwick.Assets
import Tarnwick.Controls

/// A plain button.
T.Button {
    id: button

    /// Whether it does something that cannot be undone.
    property bool isDestructive: false

    implicitWidth: implicitContentWidth + 18
    implicitHeight: 28
    Accessible.name: text
    Accessible.onPressAction: if (enabled) clicked()
    Keys.onReturnPressed: clicked()

    background: Rectangle {
        radius: 6
        color: button.isDestructive ? PreferencesStyle.destructive : PreferencesStyle.control
        border.width: button.isDestructive ? 0 : 1
        border.color: PreferencesStyle.controlEdge
        opacity: button.enabled ? 1 : 0.5

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: "black"
            opacity: button.down ? 0.15 : button.hovered ? 0.05 : 0
        }
        FocusRing {
            visible: button.visualFocus
            innerRadius: 6
            border.color: PreferencesStyle.icon
        }
    }

    contentItem: Text {
        text: button.text
        color: button.isDestructive ? "white" : button.enabled ? PreferencesStyle.text : PreferencesStyle.disabled
        font.pixelSize: Theme.bodySize
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }
}
