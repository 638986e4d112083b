import QtQuick
import Tarnwick.Controls
import Tarnwick.Settings

/// The window of the preferences. It has a title and a close button, and takes no part in full screen.
Window {
    id: window

    required property Settings settings
    required property PreferencesModel model

    /// What it grows to as soon as it opens, as far as the screen allows.
    readonly property size contentSize: view.contentSize

    title: qsTr("Preferences")
    width: 500
    height: 400
    minimumWidth: 300
    minimumHeight: 200
    // A dialog, because only those are kept above the window that they belong to.
    flags: Qt.Dialog | Qt.CustomizeWindowHint | Qt.WindowTitleHint | Qt.WindowSystemMenuHint
           | Qt.WindowCloseButtonHint
    color: PreferencesStyle.ground

    Shortcut {
        sequence: "Ctrl+W"
        onActivated: window.close()
    }

    PreferencesView {
        id: view

        anchors.fill: parent
        focus: true
        settings: window.settings
        model: window.model
    }
}
