pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick.Display

// The display. Everything inside stands in points; a point is larger than a pixel on a large screen.
Item {
    id: root

    required property TarnwickView view

    readonly property var source: view.musicSource
    readonly property real point: view.isFullscreen ? Math.max(1, height / 1080) : 1
    readonly property real pixelRatio: point * Screen.devicePixelRatio

    anchors.fill: parent
    onWidthChanged: view.setWindowSize(Qt.size(width, height))
    onHeightChanged: view.setWindowSize(Qt.size(width, height))

    Item {
        id: scene

        width: root.width / root.point
        height: root.height / root.point
        scale: root.point
        transformOrigin: Item.TopLeft

        DisplayBackground {
            anchors.fill: parent
            view: root.view
            pixelRatio: root.pixelRatio
        }

        RecordArea {
            id: recordArea

            anchors.fill: parent
            z: 1
            view: root.view
            point: root.point
            pixelRatio: root.pixelRatio
        }

        CoverArea {
            id: coverArea

            width: scene.width / 2
            height: scene.height
            z: 2
            view: root.view
            pixelRatio: root.pixelRatio
        }

        Column {
            anchors { top: parent.top; right: parent.right; topMargin: 20; rightMargin: 40 }
            spacing: 4
            z: 3

            Repeater {
                model: [
                    root.source.currentTrackTitle,
                    root.source.currentArtistName.toUpperCase(),
                    root.source.currentAlbumName ?? "",
                    Math.floor(root.source.elapsedTime / 60) + ":" + String(Math.floor(root.source.elapsedTime % 60)).padStart(2, "0")
                ]

                Text {
                    required property string modelData
                    required property int index

                    anchors.right: parent?.right
                    color: root.view.backgroundManager.dynamicTextColor
                    font { family: "Inter"; pixelSize: 22; weight: index === 1 ? Font.Bold : Font.Light }
                    text: modelData
                    textFormat: Text.PlainText
                }
            }
        }
    }
}
