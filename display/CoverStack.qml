pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick.Display

// The cover, as large as it fits, at the left edge.
Item {
    id: root

    required property picture artwork
    required property PictureWorkshop workshop
    required property real pixelRatio

    visible: artwork.isPresent

    CutPictureItem {
        readonly property real ratio: root.artwork.aspectRatio

        width: Math.min(root.width, root.height * ratio)
        height: width / ratio
        anchors.verticalCenter: parent.verticalCenter
        picture: root.artwork
        workshop: root.workshop
        pixelRatio: root.pixelRatio
        cornerRadius: 8
        shadowOpacity: 0.5
        shadowRadius: 4
        shadowOffset: 2
    }
}
