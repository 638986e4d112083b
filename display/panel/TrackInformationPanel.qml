pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick.Assets
import Tarnwick.Canvas
import Tarnwick.Controls
import Tarnwick.Display

// What is played, in the top right corner. The item covers the whole window; where everything stands is
// computed, and only drawn here.
PanelItem {
    id: root

    required property Stage stage

    /// What the items of the panel are enlarged by when they are drawn.
    readonly property real point: pixelRatio / Screen.devicePixelRatio

    Accessible.role: Accessible.Pane
    Accessible.name: sentence

    Told { text: root.sentence }

    component Yielding: Item {
        required property int block

        anchors.fill: parent
        visible: opacity > 0
        opacity: (root.hiddenBlocks & (1 << block)) ? 0 : 1
        Behavior on opacity {
            enabled: root.view.canBeSeen
            NumberAnimation { duration: Theme.fadeDuration; easing.type: Easing.InOutQuad }
        }
    }

    Item {
        anchors.fill: parent

        ProgressRow {
            visible: root.hasProgress
            panel: root
            stage: root.stage
            gestures: root.view.gestures
            isFullscreen: root.view.isFullscreen
        }

        Repeater {
            model: root.lines

            Yielding {
                id: line

                required property string lineText
                required property font lineFont
                required property real lineX
                required property real lineBaseline
                required property rect lineBox
                required property bool lineClipped
                required property string lineSpoken
                required property int lineBlock

                block: lineBlock

                Item {
                    y: Theme.onPixels(line.lineBox.y, root.pixelRatio)
                    width: parent.width
                    height: line.lineBox.height
                    clip: line.lineClipped

                    TypeItem {
                        x: line.lineX
                        y: line.lineBaseline - baselineOffset - parent.y
                        color: root.stage.textColor
                        font: line.lineFont
                        text: line.lineText
                        pixelRatio: root.pixelRatio
                        Accessible.role: Accessible.StaticText
                        Accessible.name: line.lineSpoken
                        Accessible.ignored: line.lineSpoken === ""
                    }
                }
            }
        }

        CataloguePicture {
            readonly property rect box: root.logo.box

            x: box.x
            y: box.y
            width: box.width * root.point
            height: box.height * root.point
            scale: 1 / root.point
            transformOrigin: Item.TopLeft
            name: root.logo.name
            Accessible.role: Accessible.Graphic
            Accessible.name: name.replace(/-.*/, "").toUpperCase()
            Accessible.ignored: name === ""
        }

        Yielding {
            block: PanelItem.Clock

            readonly property string spokenNow: root.clockText

            Accessible.role: Accessible.Clock
            Accessible.name: qsTr("Clock")
            Accessible.ignored: !root.hasClock

            FigureRow {
                visible: root.hasClock
                text: root.hasClock ? root.clockText : "" // what is not seen draws nothing anew
                figures: root.clockFigures
                color: root.stage.textColor
                pixelRatio: root.pixelRatio
            }
        }

        Yielding {
            block: PanelItem.Flags

            FlagsRow {
                panel: root
                stage: root.stage
                pixelRatio: root.pixelRatio
            }
        }
    }
}
