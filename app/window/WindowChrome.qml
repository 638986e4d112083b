pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick.App

// What a title bar and a border would give: buttons, edges to pull, a menu.
Item {
    id: chrome

    required property TarnwickApp app
    required property Window frame
    required property bool isPointerHidden

    readonly property bool isFullScreen: frame.visibility === Window.FullScreen
    /// Logical pixels of a point: larger than one on a large screen, as in the display.
    readonly property real point: isFullScreen ? Math.max(1, height / 1080) : 1

    /// The button was pressed on an edge.
    signal edgePulled()

    /// Made when it is first asked for: with a long list of playlists it costs more than the window.
    property WindowMenu menu: null

    function openMenu(position: point) {
        if (!menu)
            menu = menuMaker.createObject(chrome);
        menu.popup(chrome, position);
    }

    function openMenuInCorner() {
        openMenu(Qt.point(24 * point, 24 * point));
    }

    /// Made when it is first asked for, too.
    property KeysCard keysCard: null

    function showKeys() {
        if (!keysCard)
            keysCard = cardMaker.createObject(chrome);
        keysCard.rows = app.keyTable();
        keysCard.open();
    }

    // Like any menu: it goes when another window gets the keyboard, or this one leaves the screen. (A window
    // counts as active while one that belongs to it has the keyboard.)
    Connections {
        target: chrome.frame
        function onActiveFocusItemChanged(): void {
            if (!chrome.frame.activeFocusItem)
                chrome.menu?.dismiss();
        }
    }

    ResizeEdges {
        anchors.fill: parent
        frame: chrome.frame
        visible: chrome.frame.visibility === Window.Windowed
        onPulled: chrome.edgePulled()
    }

    WindowButtons {
        app: chrome.app
        isFullScreen: chrome.isFullScreen
        isPointerHidden: chrome.isPointerHidden
        point: chrome.point
    }

    // For assistive technology, which has neither a right button nor a finger that stays.
    Item {
        width: 1
        height: 1
        Accessible.role: Accessible.Button
        Accessible.name: "Menu"
        Accessible.onPressAction: chrome.openMenuInCorner()
    }

    Component {
        id: cardMaker

        KeysCard { rows: [] }
    }

    Component {
        id: menuMaker

        WindowMenu {
            app: chrome.app
            point: chrome.point
            entries: chrome.app.contextEntries
            onAboutToShow: chrome.app.refreshMenus()
        }
    }
}
