pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick.Assets
import Tarnwick.Display

// The cover, and on its back the track list. It turns over about its vertical axis, and spins.
Item {
    id: root

    required property TarnwickView view
    required property Stage stage
    required property real pixelRatio

    readonly property CutPictureItem coverItem: front.coverItem
    readonly property real side: Math.min(width, height)

    /// 0 is the front, 1 the back.
    property real turn: view.isFlipped ? 1 : 0
    property real spin: view.rotationAngle

    readonly property bool showsBack: turn > 0.5
    readonly property real angle: view.reducedMotion ? 0 : 180 * turn

    component Turning: NumberAnimation {
        duration: Theme.flipDuration
        easing { type: Easing.BezierSpline; bezierCurve: Theme.easeInOut }
    }

    Behavior on turn {
        enabled: root.view.canBeSeen
        Turning {}
    }
    Behavior on spin {
        enabled: root.view.canBeSeen && !root.view.reducedMotion
        Turning {}
    }

    transform: Flip {
        origin: Qt.point(root.width / 2, root.height / 2)
        distance: root.side / 0.8
        angle: root.angle
    }

    CoverStack {
        id: front

        anchors.fill: parent
        visible: artwork.isPresent && (root.view.reducedMotion ? root.turn < 1 : !root.showsBack)
        opacity: (root.view.reducedMotion ? 1 - root.turn : 1) * swipe.shown
        fadeDuration: root.view.reducedMotion && root.view.canBeSeen ? Theme.defaultDuration : 0
        artwork: root.stage.artwork
        record: root.stage.cassette.isPresent || root.stage.isActive ? root.view.noPicture : root.stage.record
        area: Qt.size(root.width, root.height)
        pixelRatio: root.pixelRatio
        gestures: root.view.gestures
        transform: [
            Flip {
                origin: Qt.point(front.coverWidth / 2, root.height / 2) // the picture's own axis
                distance: root.side
                angle: root.spin % 360
            },
            Translate { x: swipe.offset }
        ]
        name: root.view.musicSource.currentAlbumName ?? ""
        onTapped: root.view.tapCover()

        CoverSwipe {
            id: swipe

            parent: front.coverItem
            enabled: root.turn === 0
            gestures: root.view.gestures
            coverWidth: front.coverWidth
            point: root.pixelRatio / Screen.devicePixelRatio
            isStill: root.view.reducedMotion
        }

        Veil {
            y: front.coverY
            width: front.coverWidth
            height: front.coverHeight
            veil: root.stage.overCover
            isGentle: root.view.canBeSeen && root.stage.comesGently
            isShown: root.turn === 0
        }
    }

    TracklistPanel {
        anchors.fill: parent
        isInUse: root.turn > 0
        visible: root.view.reducedMotion ? root.turn > 0 : root.showsBack
        opacity: root.view.reducedMotion ? root.turn : 1
        view: root.view
        stage: root.stage
        pixelRatio: root.pixelRatio
        transform: Flip {
            origin: Qt.point(root.width / 2, root.height / 2)
            angle: root.view.reducedMotion ? 0 : 180
        }
    }
}
