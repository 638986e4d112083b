pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick.Controls
import Tarnwick.Display

// The display. Everything inside stands in points; a point is larger than a pixel on a large screen.
Item {
    id: root

    required property TarnwickView view

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

        Stage {
            id: stage

            anchors.fill: parent
            view: root.view
            panel: panel
            coverItem: coverArea.coverItem
            cassetteItem: recordArea.cassetteItem
            logoItem: background.logoItem
            showsList: coverArea.showsBack
        }

        DisplayBackground {
            id: background

            anchors.fill: parent
            stage: stage
            pixelRatio: root.pixelRatio
        }

        Ground {
            anchors.fill: parent
            gestures: root.view.gestures
            controls: root.view.controls
        }

        Veil {
            anchors.fill: parent
            veil: stage.overBackground
            isGentle: root.view.canBeSeen && stage.comesGently
        }

        RecordArea {
            id: recordArea

            anchors.fill: parent
            z: 1
            view: root.view
            stage: stage
            point: root.point
            pixelRatio: root.pixelRatio
        }

        CoverArea {
            id: coverArea

            width: scene.width / 2
            height: scene.height
            z: 2
            view: root.view
            stage: stage
            pixelRatio: root.pixelRatio
        }

        TrackInformationPanel {
            id: panel

            anchors.fill: parent
            z: 3
            view: root.view
            stage: stage
            pixelRatio: root.pixelRatio
            isBesideList: coverArea.showsBack
            bar: {
                const place = transportBar.panelItem, isShown = root.view.controls.showTrackControls;
                return isShown ? Qt.rect(place.x / root.point, place.y / root.point, place.width / root.point,
                                         place.height / root.point)
                               : Qt.rect(0, 0, 0, 0);
            }
        }
    }

    EdgeSwipe {
        anchors.right: parent.right
        width: Math.max(44 * root.point, 0.06 * root.width)
        height: root.height
        volume: root.view.controls.volumeScale
    }

    TrackControlsView {
        id: transportBar

        anchors.fill: parent
        controls: root.view.controls
        settings: root.view.settings
        backgroundManager: root.view.backgroundManager
        point: root.point
        backdrop: stage.backdrop
    }
}
