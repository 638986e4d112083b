import QtQuick
import Tarnwick.Controls
import Tarnwick.Settings

/// The window of the preferences. It has a title and a close button, and takes no part in full screen.
Window {
    id: window

    required property Settings settings
    required property PreferencesModel model

    title: qsTr("Preferences")
    width: 500
    height: 400
    minimumWidth: 300
    minimumHeight: 200
    flags: Qt.Window | Qt.CustomizeWindowHint | Qt.WindowTitleHint | Qt.WindowSystemMenuHint
           | Qt.WindowCloseButtonHint
    color: PreferencesStyle.ground

    // Opens at its given size, and grows at once to its content as far as the screen allows.
    Component.onCompleted: {
        const free = Qt.size(Screen.desktopAvailableWidth, Screen.desktopAvailableHeight);
        width = Math.min(view.contentSize.width, free.width);
        height = Math.min(view.contentSize.height, free.height);
        x = Screen.virtualX + (Screen.width - width) / 2;
        y = Screen.virtualY + Math.max(0, (Screen.height - height) / 2);
    }

    Shortcut {
        sequences: [StandardKey.Close]
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
