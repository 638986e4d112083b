import QtQuick
import QtQuick.Templates as T
import Tarnwick.Assets
import Tarnwick.Canvas
import Tarnwick.Controls
import Tarnwick.Settings

/// A preference as a checkbox with its label.
T.CheckBox {
    id: row

    required property Settings settings
    /// The preference's name.
    required property string key

    /// What a click does.
    function press(): void {
        if (!enabled)
            return;
        toggle();
        toggled();
    }

    implicitWidth: implicitContentWidth + leftPadding
    implicitHeight: 20
    leftPadding: 21
    checked: settings[key]
    Accessible.name: text
    Accessible.onPressAction: press()
    Accessible.onToggleAction: press()
    Keys.onReturnPressed: press()
    onToggled: settings[key] = checked

    indicator: Plate {
        y: 3
        width: 14
        height: 14
        radius: 3.5
        color: row.checked ? PreferencesStyle.fill : PreferencesStyle.box
        borderWidth: row.checked ? 0 : 1
        borderColor: PreferencesStyle.boxEdge

        Glyph {
            anchors.fill: parent
            visible: row.checked
        }
        FocusRing {
            visible: row.visualFocus
            innerRadius: 3.5
            border.color: PreferencesStyle.icon
        }
    }

    contentItem: Text {
        text: row.text
        color: PreferencesStyle.text
        font.pixelSize: Theme.bodySize
        verticalAlignment: Text.AlignVCenter
    }
}
