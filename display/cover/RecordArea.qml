pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick.Assets
import Tarnwick.Display
import Tarnwick.Visuals

// The record, or a cassette in its place, that slides out beside the cover. The item covers the whole window.
Item {
    id: root

    required property TarnwickView view
    required property Stage stage
    required property real point      ///< what the item is enlarged by when it is drawn
    required property real pixelRatio

    readonly property CutPictureItem cassetteItem: cassette

    readonly property bool hasCassette: stage.cassette.isPresent
    readonly property real diameter: stage.discPlace.width
    /// Where what is shown rests, and its middle.
    readonly property rect place: hasCassette ? stage.cassettePlace : stage.discPlace
    readonly property real centreOut: place.x + place.width / 2
    readonly property real centreAway: -0.25 * width
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

    visible: stage.isActive

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
            nsImage: root.stage.record.disc
            isPlaying: root.view.rotatingCDManager.isPlaying && !root.view.reducedMotion
            rotateCDDuringPlayback: root.view.rotatingCDManager.rotateCDDuringPlayback
            onLogLine: line => root.view.log(line)
        }

        CutPictureItem {
            id: cassette

            anchors.centerIn: parent
            width: root.stage.cassettePlace.width
            height: root.stage.cassettePlace.height
            visible: root.hasCassette
            picture: root.stage.cassette
            pixelRatio: root.pixelRatio
        }

        // As strong under a line while the record slides as it is at rest: what comes under the line is what
        // lay under it further to the right.
        Veil {
            anchors.centerIn: parent
            width: root.place.width
            height: root.place.height
            veil: root.stage.overRecord
            isGentle: root.view.canBeSeen && root.stage.comesGently
        }
    }
}
