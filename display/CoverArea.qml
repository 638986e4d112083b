pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick.Display

// The cover, and on its back the track list.
Item {
    id: root

    required property TarnwickView view
    required property real pixelRatio

    CoverStack {
        anchors.fill: parent
        artwork: root.view.artwork
        workshop: root.view.workshop
        pixelRatio: root.pixelRatio

        TapHandler { onTapped: root.view.tapCover() }
    }
}
