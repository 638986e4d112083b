pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick.Assets
import Tarnwick.Display

// The times of the track, and between them how much of it has been played.
Item {
    id: root

    required property PanelItem panel
    required property Stage stage
    required property Gestures gestures
    required property bool isFullscreen

    readonly property rect bar: panel.progressBar

    Accessible.role: Accessible.ProgressBar
    Accessible.name: root.panel.elapsedText + " / " + root.panel.durationText

    FigureRow {
        text: root.panel.elapsedText
        figures: root.panel.elapsedFigures
        color: root.stage.textColor
        pixelRatio: root.panel.pixelRatio
    }
    SharpRectangle {
        x: root.bar.x
        y: root.bar.y
        width: root.bar.width
        height: root.bar.height
        radius: height / 2
        color: root.stage.textColor
        opacity: 0.28
        pixelRatio: root.panel.pixelRatio
    }
    SharpRectangle {
        readonly property real played: root.panel.progress * root.bar.width

        visible: played > 0
        x: root.bar.x
        y: root.bar.y
        width: Math.max(height, played)
        height: root.bar.height
        radius: height / 2
        color: root.stage.progressColor
        pixelRatio: root.panel.pixelRatio
    }
    // Where it is pressed, the track goes on. As high as a finger needs it in full screen.
    Item {
        readonly property real reach: root.isFullscreen ? 44 : 24

        x: root.bar.x
        y: root.bar.y + (root.bar.height - height) / 2
        width: root.bar.width
        height: reach
        visible: root.gestures.canSeek

        HoverHandler { cursorShape: Qt.PointingHandCursor }
        TapHandler {
            gesturePolicy: TapHandler.ReleaseWithinBounds
            grabPermissions: PointerHandler.ApprovesTakeOverByAnything // and takes from none
            onTapped: point => root.gestures.seekTo(point.position.x / root.bar.width)
        }
    }
    FigureRow {
        text: root.panel.durationText
        figures: root.panel.durationFigures
        color: root.stage.textColor
        pixelRatio: root.panel.pixelRatio
    }
}
