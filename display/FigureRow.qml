pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick.Display

// A text of figures and colons, each in a cell of its own, so that nothing moves when a figure changes.
Item {
    id: root

    required property string text
    required property panelFigures figures
    required property color color

    x: figures.box.x
    y: figures.baseline
    Accessible.role: Accessible.StaticText
    Accessible.name: text

    Row {
        Repeater {
            model: root.text.length

            Item {
                id: cell

                required property int index

                readonly property string character: root.text[index] ?? ""
                readonly property bool isColon: character === ":"

                width: isColon ? root.figures.colon : root.figures.cell
                height: 1

                Text {
                    x: (cell.width - implicitWidth) / 2
                    y: -baselineOffset - (cell.isColon ? root.figures.raise : 0)
                    color: root.color
                    font: root.figures.font
                    text: cell.character
                    textFormat: Text.PlainText
                    Accessible.ignored: true
                }
            }
        }
    }
}
