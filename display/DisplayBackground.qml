pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick.Display

// Behind everything: the colours of the cover, or the program's logo while nothing plays.
Item {
    id: root

    required property Stage stage
    required property real pixelRatio

    readonly property CutPictureItem logoItem: logo

    ColourBackground {
        anchors.fill: parent
        visible: root.stage.isActive || !logo.isShown
        colors: root.stage.colors
        textColor: root.stage.textColor
        pixelRatio: root.pixelRatio
    }

    CutPictureItem {
        id: logo

        anchors.fill: parent
        visible: !root.stage.isActive
        picture: root.stage.logo
        pixelRatio: root.pixelRatio
        Accessible.role: Accessible.Graphic
        Accessible.name: "Tarnwick"
    }
}
