import QtQuick
import Tarnwick.App

// What a title bar and a border would give: buttons, edges to pull, a menu.
Item {
    id: chrome

    required property TarnwickApp app
    required property Window frame

    /// The button was pressed on an edge.
    signal edgePulled()

    function openMenu(position: point) {
        menu.popup(chrome, position);
    }

    ResizeEdges {
        anchors.fill: parent
        frame: chrome.frame
        visible: chrome.frame.visibility === Window.Windowed
        onPulled: chrome.edgePulled()
    }

    WindowButtons {
        app: chrome.app
        isFullScreen: chrome.frame.visibility === Window.FullScreen
    }

    WindowMenu {
        id: menu

        app: chrome.app
        entries: chrome.app.contextEntries
        onAboutToShow: chrome.app.refreshMenus()
    }
}
