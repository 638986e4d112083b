import QtQuick
import Tarnwick.App

// The main window: the splash, then the display, and what a title bar would otherwise give.
Window {
    id: window

    required property TarnwickApp app

    /// The button that was pressed last pulls an edge, and does not move the window.
    property bool isResizing: false

    /// Where the display is put.
    readonly property alias displayPlace: keys

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
    }

    SplashView {
        anchors.fill: parent
        visible: window.app.showSplash
    }

    TapHandler {
        acceptedButtons: Qt.RightButton
        onTapped: eventPoint => chrome.item?.openMenu(eventPoint.position)
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
            onEdgePulled: window.isResizing = true
        }
        // qmllint enable unqualified
    }
}
