pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick.Assets
import Tarnwick.Display
import Tarnwick.Visuals

// The record, or a cassette in its place, that slides out beside the cover. The item covers the whole window.
Item {
    id: root

    required property TarnwickView view
    required property real point      ///< what the item is enlarged by when it is drawn
    required property real pixelRatio
    required property veilPicture veil ///< over the record in its place

    /// The square of the record and the rectangle of the cassette in their places.
    readonly property rect discPlace: Qt.rect(width / 2 - diameter / 2, height / 2 - diameter / 2, diameter, diameter)
    readonly property rect cassettePlace: Qt.rect(centreOut - width / 4, (height - cassette.height) / 2, width / 2, cassette.height)

    readonly property bool hasCassette: view.cassetteImage.isPresent
    readonly property real diameter: Math.min(width / 2, height)
    readonly property real centreOut: hasCassette && !view.isFullscreen ? 0.45 * width : 0.5 * width
    readonly property real centreAway: -0.25 * width
    /// Whether the record rests in its place.
    readonly property bool isResting: slide === 0

    /// 0 in its place, 1 away behind the cover.
    property real slide: view.isCDVisible ? 0 : 1

    Behavior on slide {
        // Back it comes by itself; how it goes away is up to whoever sends it.
        enabled: root.view.canBeSeen && (root.view.isCDVisible || root.view.transaction.active)
        NumberAnimation {
            duration: root.view.isCDVisible ? Theme.slideDuration : root.view.transaction.duration
            easing { type: Easing.BezierSpline; bezierCurve: Theme.easeInOut }
        }
    }

    visible: view.musicSource.isPlayerActive

    Item {
        id: carriage

        readonly property real travel: root.view.reducedMotion ? 0 : root.slide

        x: root.centreOut + (root.centreAway - root.centreOut) * travel
        y: root.height / 2
        opacity: root.view.reducedMotion ? 1 - root.slide : 1
        Accessible.role: Accessible.Graphic
        Accessible.name: root.hasCassette ? "Cassette" : "Record"

        RotatingCDLayerView {
            anchors.centerIn: parent
            scale: 1 / root.point // it knows of device pixels, and of no others
            visible: !root.hasCassette
            clock: root.view.clock
            size: root.diameter * root.point
            nsImage: root.view.rotatingCDManager.cdImage
            isPlaying: root.view.rotatingCDManager.isPlaying && !root.view.reducedMotion
            rotateCDDuringPlayback: root.view.rotatingCDManager.rotateCDDuringPlayback
            onLogLine: line => root.view.log(line)
        }

        CutPictureItem {
            id: cassette

            anchors.centerIn: parent
            width: root.width / 2
            height: width / picture.aspectRatio
            visible: root.hasCassette
            picture: root.view.cassetteImage
            pixelRatio: root.pixelRatio
        }
    }

    Veil {
        readonly property rect surface: root.hasCassette ? root.cassettePlace : root.discPlace

        x: surface.x
        y: surface.y
        width: surface.width
        height: surface.height
        veil: root.veil
        isGentle: root.view.canBeSeen
        isShown: root.isResting
    }
}
