pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick.Assets
import Tarnwick.Controls
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

        Veil {
            anchors.fill: parent
            veil: veils.background
            isGentle: root.view.canBeSeen
        }

        RecordArea {
            id: recordArea

            anchors.fill: parent
            z: 1
            view: root.view
            point: root.point
            pixelRatio: root.pixelRatio
            veil: veils.overRecord
        }

        CoverArea {
            id: coverArea

            width: scene.width / 2
            height: scene.height
            z: 2
            view: root.view
            pixelRatio: root.pixelRatio
            veil: veils.overCover
            rowVeil: veils.rowColor
        }

        TrackInformationPanel {
            id: panel

            anchors.fill: parent
            z: 3
            view: root.view
            pixelRatio: root.pixelRatio
            hasCassette: recordArea.hasCassette
            isBesideList: coverArea.showsBack
            bar: {
                const place = transportBar.panelItem, isShown = root.view.controls.showTrackControls;
                return isShown ? Qt.rect(place.x / root.point, place.y / root.point, place.width / root.point,
                                         place.height / root.point)
                               : Qt.rect(0, 0, 0, 0);
            }
        }
    }

    VeilModel {
        id: veils

        view: root.view
        panel: panel
        record: root.view.record
        recordPlace: recordArea.discPlace
        cassette: root.view.cassetteImage
        cassettePlace: recordArea.cassettePlace
        cover: root.view.isFlipped ? root.view.noPicture : root.view.artwork
        coverPlace: coverArea.picturePlace
        coverRadius: Theme.coverRadius
        listPlace: root.view.isFlipped ? Qt.rect(coverArea.x, coverArea.y, coverArea.width, coverArea.height)
                                       : Qt.rect(0, 0, 0, 0)
    }

    TrackControlsView {
        id: transportBar

        anchors.fill: parent
        controls: root.view.controls
        settings: root.view.settings
        backgroundManager: root.view.backgroundManager
        point: root.point
        backdrop: root.view.backdrop(Qt.size(scene.width, scene.height), root.view.paintedColors,
                                     root.view.isFlipped ? root.view.noPicture : root.view.artwork,
                                     coverArea.picturePlace,
                                     recordArea.visible && !recordArea.hasCassette ? root.view.record
                                                                                   : root.view.noPicture,
                                     recordArea.diameter)
    }
}
