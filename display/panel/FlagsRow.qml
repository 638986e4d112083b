pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick.Display

// The flags of the countries that the comment names.
Item {
    id: root

    required property PanelItem panel
    required property Stage stage
    /// Device pixels of a point, and what of that is the scale that the panel itself is drawn with.
    required property real pixelRatio

    Repeater {
        model: root.panel.flags

        FlagPicture {
            required property panelPicture modelData

            x: modelData.box.x
            y: modelData.box.y
            width: modelData.box.width * root.pixelRatio
            height: modelData.box.height * root.pixelRatio
            scale: 1 / root.pixelRatio
            transformOrigin: Item.TopLeft
            name: modelData.name
            radius: 0.07 * modelData.box.width * root.pixelRatio
            edgeWidth: root.pixelRatio
            edge: Qt.rgba(root.stage.textColor.r, root.stage.textColor.g, root.stage.textColor.b, 0.35)
            Accessible.role: Accessible.Graphic
            Accessible.name: modelData.name.replace(/-/g, " ")
        }
    }
}
