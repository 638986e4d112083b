pragma ComponentBehavior: Bound

import QtQuick

// A text whose figures stand in cells of one width, so that they keep their places whatever they are. Its
// baseline is the item's top.
Row {
    id: root

    required property string text
    required property font font
    required property color color
    required property real cell  ///< width of a figure's
    required property real colon ///< width of a colon's
    property real raise: 0       ///< of colons

    Repeater {
        model: root.text.length

        Item {
            id: place

            required property int index

            readonly property string character: root.text[index] ?? ""
            readonly property bool isColon: character === ":"
            readonly property bool isFigure: character >= "0" && character <= "9"

            width: isColon ? root.colon : isFigure ? root.cell : type.implicitWidth
            height: 1

            Text {
                id: type

                x: (place.width - implicitWidth) / 2
                y: -baselineOffset - (place.isColon ? root.raise : 0)
                color: root.color
                font: root.font
                text: place.character
                textFormat: Text.PlainText
                Accessible.ignored: true
            }
        }
    }
}
