pragma ComponentBehavior: Bound

import QtQml.Models
import QtQuick
import QtQuick.Controls.Basic
import Tarnwick.App

// A menu of the window, with the menus in it.
Menu {
    id: menu

    required property TarnwickApp app
    required property real point
    /// What stands in it, as `TarnwickApp` gives it.
    required property var entries

    readonly property color textColor: "#f2f2f4"

    implicitWidth: 240 * point
    padding: 6 * point
    // A long list of playlists scrolls.
    height: Math.min(implicitHeight, (parent?.Window.height ?? 600) - 16 * point)
    margins: 8 * point
    overlap: 4 * point
    modal: false

    contentItem.Accessible.name: title.length > 0 ? title : "Menu"
    background: Rectangle {
        color: "#262628"
        radius: 9 * menu.point
        border { width: menu.point; color: Qt.rgba(1, 1, 1, 0.14) }
    }
    enter: Transition { NumberAnimation { property: "opacity"; from: 0; to: 1; duration: 100 } }
    exit: Transition { NumberAnimation { property: "opacity"; from: 1; to: 0; duration: 100 } }

    delegate: WindowMenuItem { point: menu.point }

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
                    .createObject(menu.contentItem, { app: menu.app, point: Qt.binding(() => menu.point),
                                          entries: entry.entries, title: entry.title,
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

            point: menu.point
            onTriggered: menu.app.triggerMenu(number)
        }
    }

    Component {
        id: separator

        MenuSeparator {
            topPadding: 4 * menu.point
            bottomPadding: 4 * menu.point
            contentItem: Rectangle {
                implicitHeight: menu.point
                color: Qt.rgba(1, 1, 1, 0.14)
            }
        }
    }
}
