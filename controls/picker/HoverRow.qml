pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Tarnwick.Assets
import Tarnwick.Canvas
import Tarnwick.Controls

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
    /// How many layers the shadow of the plate is made of; 0 for no shadow.
    property int shadowLayers: 0
    /// Of the line under the row; clear for none.
    property color separatorColor: "transparent"

    signal tapped()

    readonly property bool isHovering: hovered || isCurrent

    height: Math.ceil(contentItem.implicitHeight + 16 * point)
    topPadding: 8 * point
    leftPadding: 12 * point
    rightPadding: 12 * point
    hoverEnabled: true
    focusPolicy: Qt.NoFocus
    z: isHovering ? 1 : 0 // above its neighbours, into which it grows
    Accessible.name: text
    Accessible.onPressAction: clicked()
    onClicked: tapped()

    background: Item {
        SoftShadow { // as faint as the plate
            anchors.fill: parent
            layers: row.isHovering ? row.shadowLayers : 0
            reach: 6 * row.point
            drop: 2 * row.point
            radius: plate.radius
            color: Theme.grey
            strength: 0.4 * plate.color.a
        }
        Plate {
            id: plate

            anchors.fill: parent
        }
    }

    contentItem: Item {
        implicitHeight: label.lineCount * label.lineHeight

        Text {
            id: label

            // The same height in every script, except that a wrapped name has more lines, and the same
            // baseline, though other scripts' fonts reach higher.
            y: metrics.ascent - baselineOffset
            width: parent.width
            lineHeightMode: Text.FixedHeight
            lineHeight: Theme.lineHeight * row.textSize * row.point
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
        FontMetrics {
            id: metrics

            font: label.font
        }
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
