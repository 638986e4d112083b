import QtQuick
import QtQuick.Templates as T
import Tarnwick.Assets

/// What the rows of the playlist picker have in common: a text that is a button.
T.AbstractButton {
    id: row

    /// Whether the keyboard is at this row, which then looks as if the pointer were over it.
    property bool isCurrent: false
    property real point: 1
    property color textColor: "white"
    property int textSize: 16
    property int textWeight: Font.Medium
    /// Whether a long name goes on in further lines instead of being cut off.
    property bool wraps: false
    property alias plate: plate
    /// Of the line under the row; clear for none.
    property color separatorColor: "transparent"

    signal tapped()

    readonly property bool isHovering: hovered || isCurrent

    height: Math.ceil(contentItem.implicitHeight + 16 * point)
    leftPadding: 12 * point
    rightPadding: 12 * point
    hoverEnabled: true
    focusPolicy: Qt.NoFocus
    z: isHovering ? 1 : 0 // above its neighbours, into which it grows
    Accessible.name: text
    onClicked: tapped()

    background: Rectangle {
        id: plate
    }

    contentItem: Text {
        // The same height in every script, except that a wrapped name has more lines.
        lineHeightMode: Text.FixedHeight
        lineHeight: Theme.lineHeight * row.textSize * row.point
        verticalAlignment: Text.AlignVCenter
        // Line breaks belong to the name and not to its looks.
        text: row.wraps ? row.text : row.text.replace(/\s*[\r\n\u2028\u2029]+\s*/g, " ")
        textFormat: Text.PlainText
        color: row.textColor
        font.pixelSize: row.textSize * row.point
        font.weight: row.textWeight
        elide: row.wraps ? Text.ElideNone : Text.ElideRight
        wrapMode: row.wraps ? Text.Wrap : Text.NoWrap
        maximumLineCount: row.wraps ? 100 : 1
        horizontalAlignment: Text.AlignLeft
    }

    Rectangle {
        x: 12 * row.point
        y: row.height - 1
        width: row.width - 24 * row.point
        height: 1
        color: row.separatorColor
        opacity: 0.14
    }
}
