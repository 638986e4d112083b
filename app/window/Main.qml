import QtQuick
import Tarnwick.App

// The main window: the splash, then the display, and what a title bar would otherwise give.
Window {
    id: window

    required property TarnwickApp app

    /// The button that was pressed last pulls an edge, and does not move the window.
    property bool isResizing: false

    /// The pointer rests on a window that fills the screen.
    property bool isPointerHidden: false

    /// Where the display is put.
    readonly property alias displayPlace: keys

    function openMenu(place: point) {
        chrome.item?.openMenu(place);
    }

    title: "Tarnwick"
    color: "black"
    flags: Qt.Window | Qt.FramelessWindowHint
    minimumWidth: 400
    minimumHeight: 200

    KeyEventHandler {
        id: keys

        anchors.fill: parent
        visible: !window.app.showSplash
        focus: true
        onHelpWanted: chrome.item?.showKeys()
    }

    SplashView {
        anchors.fill: parent
        visible: window.app.showSplash
    }

    TapHandler {
        acceptedButtons: Qt.RightButton
        acceptedDevices: PointerDevice.AllDevices & ~PointerDevice.TouchScreen // a finger has no buttons
        onTapped: eventPoint => window.openMenu(eventPoint.position)
    }

    Shortcut {
        sequences: ["Menu", "Shift+F10"]
        onActivated: chrome.item?.openMenuInCorner()
    }

    // Not needed for the first picture, so it comes after it.
    Loader {
        id: chrome

        anchors.fill: parent
        active: !window.app.showSplash
        // A loader cannot make a bound component.
        // qmllint disable unqualified
        sourceComponent: WindowChrome {
            app: window.app
            frame: window
            isPointerHidden: window.isPointerHidden
            onEdgePulled: window.isResizing = true
        }
        // qmllint enable unqualified
    }
}
