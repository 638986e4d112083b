pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import Tarnwick.Assets
import Tarnwick.Canvas

// What the keys do, calmly over the display. Any key takes it away, and so does a press anywhere.
Popup {
    id: card

    /// As `TarnwickApp.keyTable` gives them.
    required property var rows

    /// Its measures are for a card that is as wide as this; it fills a good part of any window.
    readonly property real naturalWidth: 780
    readonly property real naturalHeight: 96 + rowHeight * half
    readonly property real rowHeight: 28
    readonly property int half: Math.ceil(rows.length / 2)
    readonly property real roomAcross: (parent?.width ?? 1200) - 32
    readonly property real roomDown: (parent?.height ?? 600) - 32
    readonly property real unit: Math.min(roomAcross / naturalWidth, roomDown / naturalHeight,
                                          Math.max(1, 0.6 * roomAcross / naturalWidth))

    component Line: TypeItem {
        pixelRatio: Screen.devicePixelRatio // qmllint disable type
        font { family: Theme.fontFamily; pixelSize: Theme.bodySize * card.unit }
        color: "white"
    }

    anchors.centerIn: parent
    width: naturalWidth * unit
    height: naturalHeight * unit
    padding: 0
    focus: true
    closePolicy: Popup.CloseOnPressOutside
    enter: Transition { NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.fadeDuration } }
    exit: Transition { NumberAnimation { property: "opacity"; from: 1; to: 0; duration: Theme.fadeDuration } }

    background: Rectangle {
        radius: 22 * card.unit
        color: "#fb202022"
        border { width: 1; color: Theme.noticeEdge }
    }

    contentItem: Item {
        focus: true
        Accessible.role: Accessible.Dialog
        Accessible.name: title.text
        Keys.onShortcutOverride: event => event.accepted = true // a key that does something else goes only this far
        Keys.onPressed: event => {
            card.close();
            event.accepted = true;
        }

        TapHandler { onTapped: card.close() }

        Line {
            id: title

            x: 32 * card.unit
            y: 24 * card.unit
            text: "Keys"
            font { pixelSize: Theme.titleSize * card.unit; weight: Theme.semibold }
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }

        Repeater {
            model: card.rows

            Item {
                id: row

                required property int index
                required property var modelData

                x: (index < card.half ? 32 : 32 + (card.naturalWidth - 32) / 2) * card.unit
                y: (68 + card.rowHeight * (index % card.half)) * card.unit
                width: ((card.naturalWidth - 32) / 2 - 32) * card.unit
                height: card.rowHeight * card.unit
                Accessible.role: Accessible.StaticText
                Accessible.name: row.modelData.keys + ", " + row.modelData.does

                Line {
                    text: row.modelData.does
                    Accessible.ignored: true
                }
                Line {
                    x: parent.width - implicitWidth
                    text: row.modelData.keys
                    opacity: 0.7
                    Accessible.ignored: true
                }
            }
        }
    }
}
