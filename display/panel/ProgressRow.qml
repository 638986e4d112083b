pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick.Canvas
import Tarnwick.Controls
import Tarnwick.Display

// The times of the track, and between them how much of it has been played.
QuietValue {
    id: root

    required property PanelItem panel
    required property Stage stage
    required property Gestures gestures
    required property bool isFullscreen

    readonly property rect bar: panel.progressBar

    // Told to whoever asks, and not at every second.
    current: root.panel.progress * maximumValue
    maximumValue: root.panel.view.musicSource.trackDuration
    stepSize: root.gestures.seekStep
    onAsked: value => root.gestures.seekTo(value / maximumValue)
    readonly property string spokenNow: root.panel.elapsedText + " / " + root.panel.durationText

    Accessible.role: root.gestures.canSeek ? Accessible.Slider : Accessible.ProgressBar
    Accessible.name: qsTr("Position")
    Accessible.onIncreaseAction: root.gestures.seekBy(root.gestures.seekStep)
    Accessible.onDecreaseAction: root.gestures.seekBy(-root.gestures.seekStep)

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
