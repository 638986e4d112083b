import QtQuick
import QtQuick.Templates as T
import Tarnwick.Assets
import Tarnwick.Controls
import Tarnwick.Settings

/// A card that switches something on, chooses its font, imports and removes fonts.
SectionCard {
    id: section

    required property Settings settings
    required property PreferencesModel model
    required property bool isClock
    /// The preferences: whether it is on, its font, whether that is drawn by lot.
    required property string switchKey
    required property string fontKey
    required property string randomKey
    required property string importText
    required property string removeTip
    /// What the font is called, and the switch that draws it by lot.
    required property string fontName
    required property string randomName

    controlsHeight: 32

    readonly property bool isOn: settings[switchKey]
    readonly property list<string> fonts: (isClock ? model?.clockFonts : model?.trackInfoFonts) ?? []

    SwitchToggle {
        y: 4
        settings: section.settings
        key: section.switchKey
        name: section.title
    }
    PopUpPicker {
        y: 4
        name: section.fontName
        enabled: section.isOn && !section.settings[section.randomKey]
        model: section.fonts
        storedText: section.settings[section.fontKey]
        currentIndex: section.fonts.indexOf(storedText)
        onActivated: index => section.settings[section.fontKey] = section.fonts[index]
    }
    T.AbstractButton {
        id: remove
        objectName: "remove"

        y: 9
        width: 18
        height: 18
        enabled: section.isOn
        hoverEnabled: true
        Accessible.name: section.removeTip
        Accessible.onPressAction: if (enabled) clicked()
        Keys.onReturnPressed: clicked()
        onClicked: section.model.askToRemove(section.isClock)
        contentItem: CataloguePicture {
            name: "minus.circle.fill"
            tint: PreferencesStyle.red
        }

        FocusRing {
            visible: remove.visualFocus
            innerRadius: 9
            border.color: PreferencesStyle.icon
        }
        Tip {
            text: section.removeTip
            isWanted: remove.hovered
        }
    }
    PushButton {
        y: 4
        enabled: section.isOn
        text: section.importText
        onClicked: section.model.importFonts(section.isClock)
    }
    SwitchToggle {
        y: 4
        enabled: section.isOn
        settings: section.settings
        key: section.randomKey
        text: qsTr("Random")
        name: section.randomName
    }
}
