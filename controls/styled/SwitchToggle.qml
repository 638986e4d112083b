import QtQuick
import QtQuick.Templates as T
import Tarnwick.Assets
import Tarnwick.Controls
import Tarnwick.Settings

/// A preference as a switch, with or without a label.
T.Switch {
    id: toggle

    required property Settings settings
    /// The preference's name.
    required property string key

    implicitWidth: 32 + (text.length > 0 ? 6 + implicitContentWidth : 0)
    implicitHeight: 28
    leftPadding: 38
    checked: settings[key]
    Accessible.name: text
    onToggled: settings[key] = checked

    indicator: Rectangle {
        y: (toggle.height - height) / 2
        width: 32
        height: 18
        radius: 9
        color: toggle.checked ? PreferencesStyle.fill : PreferencesStyle.switchOff
        opacity: toggle.enabled ? 1 : 0.5

        Behavior on color { ColorAnimation { duration: 120 } }

        Rectangle {
            x: toggle.checked ? 16 : 2
            y: 2
            width: 14
            height: 14
            radius: 7
            color: "white"

            Behavior on x { NumberAnimation { duration: 120; easing.type: Easing.InOutQuad } }
        }
        FocusRing {
            visible: toggle.visualFocus
            innerRadius: 9
            border.color: PreferencesStyle.icon
        }
    }

    contentItem: Text {
        text: toggle.text
        color: toggle.enabled ? PreferencesStyle.text : PreferencesStyle.disabled
        font.pixelSize: Theme.bodySize
        verticalAlignment: Text.AlignVCenter
    }
}
