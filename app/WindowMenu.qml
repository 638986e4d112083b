pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import Tarnwick.App

// A menu of the window, with the menus in it.
Menu {
    id: menu

    required property TarnwickApp app
    /// What stands in it, as `TarnwickApp` gives it.
    required property var entries

    readonly property color textColor: "#f2f2f4"

    implicitWidth: 240
    padding: 6
    // A long list of playlists scrolls.
    height: Math.min(implicitHeight, (parent?.Window.height ?? 600) - 16)
    margins: 8
    overlap: 4
    modal: false

    background: Rectangle {
        color: "#262628"
        radius: 9
        border { width: 1; color: Qt.rgba(1, 1, 1, 0.14) }
    }
    enter: Transition { NumberAnimation { property: "opacity"; from: 0; to: 1; duration: 100 } }
    exit: Transition { NumberAnimation { property: "opacity"; from: 1; to: 0; duration: 100 } }

    delegate: WindowMenuItem {}

    Instantiator {
        model: menu.entries
        delegate: QtObject {
            id: line

            required property var modelData
            property var made: null
        }
        onObjectAdded: (index, object) => {
            const entry = object.modelData;
            if (entry.isSeparator) {
                object.made = separator.createObject(menu.contentItem);
                menu.insertItem(index, object.made);
            } else if (entry.isMenu) {
                object.made = Qt.createComponent("WindowMenu.qml")
                    .createObject(menu.contentItem, { app: menu.app, entries: entry.entries, title: entry.title,
                                          enabled: entry.entries.length > 0 });
                menu.insertMenu(index, object.made);
            } else {
                object.made = item.createObject(menu.contentItem, { number: entry.number, text: entry.title,
                                                        keys: entry.shortcut });
                menu.insertItem(index, object.made);
            }
        }
        onObjectRemoved: (index, object) => {
            if (object.made instanceof Menu)
                menu.removeMenu(object.made);
            else
                menu.removeItem(object.made);
        }
    }

    Component {
        id: item

        WindowMenuItem {
            property int number

            onTriggered: menu.app.triggerMenu(number)
        }
    }

    Component {
        id: separator

        MenuSeparator {
            topPadding: 4
            bottomPadding: 4
            contentItem: Rectangle {
                implicitHeight: 1
                color: Qt.rgba(1, 1, 1, 0.14)
            }
        }
    }
}
