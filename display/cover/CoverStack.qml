pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick.Assets
import Tarnwick.Display

// The cover, as large as it fits and at the left edge, and behind it a still copy of the record.
Item {
    id: root

    required property picture artwork
    required property picture record
    required property size area       ///< what the record measures against
    required property real pixelRatio
    required property Gestures gestures
    property real shadowOpacity: 0.5
    property string name
    property int fadeDuration: 0 ///< of one cover over the one before, in milliseconds

    signal tapped

    readonly property CutPictureItem coverItem: cover

    /// Where the cover is shown; like the record, on whole device pixels.
    readonly property rect place: artwork.placeIn(Qt.size(width, height), pixelRatio)
    readonly property real coverWidth: place.width
    readonly property real coverHeight: place.height
    readonly property real coverY: place.y

    readonly property real recordSide: onPixels(Math.min(area.width, area.height))

    function onPixels(length: real): real {
        return Theme.onPixels(length, pixelRatio);
    }

    visible: artwork.isPresent

    CutPictureItem {
        x: root.onPixels((root.area.width - width) / 2 + 0.6 * root.area.width)
        y: root.onPixels((root.height - height) / 2)
        width: root.recordSide
        height: root.recordSide
        visible: picture.isPresent
        picture: root.record
        pixelRatio: root.pixelRatio
        isRound: true
        shadowOpacity: 0.3
        shadowRadius: 3
        shadowOffset: 1
    }

    CutPictureItem {
        id: cover

        y: root.coverY
        width: root.coverWidth
        height: root.coverHeight
        picture: root.artwork
        pixelRatio: root.pixelRatio
        cornerRadius: Theme.coverRadius
        shadowOpacity: root.shadowOpacity
        onReplaced: if (root.fadeDuration > 0) coming.restart()
        shadowRadius: 4
        shadowOffset: 2
        Accessible.role: Accessible.Button
        Accessible.name: root.name
        Accessible.onPressAction: root.tapped()

        NumberAnimation on fade {
            id: coming

            running: false
            from: 0
            to: 1
            duration: root.fadeDuration
            easing.type: Easing.InOutQuad
        }

        Tap {
            gestures: root.gestures
            onChosen: root.tapped()
        }
    }
}
