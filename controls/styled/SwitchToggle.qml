import QtQuick
import QtQuick.Templates as T
import Tarnwick.Assets
import Tarnwick.Controls
import Tarnwick.Settings

/// A preference as a switch, with or without a label.
T.Switch {
    id: control

    required property Settings settings
    /// The preference's name.
    required property string key
    /// What assistive technology calls it.
    property string name: text

    /// What a click does.
    function press(): void {
        if (!enabled)
            return;
        toggle();
        toggled();
    }

    implicitWidth: 32 + (text.length > 0 ? 6 + implicitContentWidth : 0)
    implicitHeight: 28
    leftPadding: 38
    checked: settings[key]
    Accessible.name: name
    Accessible.onPressAction: press()
    Accessible.onToggleAction: press()
    Keys.onReturnPressed: press()
    onToggled: settings[key] = checked

    indicator: Rectangle {
        y: (control.height - height) / 2
        width: 32
        height: 18
        radius: 9
        color: control.checked ? PreferencesStyle.fill : PreferencesStyle.switchOff
        opacity: control.enabled ? 1 : 0.5

        Behavior on color { ColorAnimation { duration: 120 } }

        Rectangle {
            x: control.checked ? 16 : 2
            y: 2
            width: 14
            height: 14
            radius: 7
            color: "white"

            Behavior on x { NumberAnimation { duration: 120; easing.type: Easing.InOutQuad } }
        }
        FocusRing {
            visible: control.visualFocus
            innerRadius: 9
            border.color: PreferencesStyle.icon
        }
    }

    contentItem: Text {
        text: control.text
        color: control.enabled ? PreferencesStyle.text : PreferencesStyle.disabled
        font.pixelSize: Theme.bodySize
        verticalAlignment: Text.AlignVCenter
    }
}
