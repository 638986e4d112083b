pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick.Display

// Behind everything: the colours of the cover, or the program's logo while nothing plays.
Item {
    id: root

    required property TarnwickView view
    required property real pixelRatio

    readonly property bool isActive: view.musicSource.isPlayerActive

    ColourBackground {
        anchors.fill: parent
        visible: root.isActive || !logo.isShown
        colors: root.view.paintedColors
        textColor: root.view.backgroundManager.dynamicTextColor
    }

    CutPictureItem {
        id: logo

        anchors.fill: parent
        visible: !root.isActive
        picture: root.view.namedPicture(root.isActive ? "" : "applogo800")
        pixelRatio: root.pixelRatio
        Accessible.role: Accessible.Graphic
        Accessible.name: "Tarnwick"
    }
}
