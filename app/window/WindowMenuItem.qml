import QtQuick
import QtQuick.Controls.Basic

// One line of a window's menu.
MenuItem {
    id: item

    required property real point
    property string keys: ""

    readonly property var isExpanded: subMenu ? subMenu.visible : undefined

    implicitHeight: 26 * point
    leftPadding: 10 * point
    rightPadding: 10 * point
    topPadding: 0
    bottomPadding: 0
    opacity: enabled ? 1 : 0.4
    Accessible.name: text
    Accessible.onPressAction: if (enabled) clicked()

    contentItem: Item {
        Text {
            anchors { left: parent.left; right: accessory.left; rightMargin: 12 * item.point; verticalCenter: parent.verticalCenter }
            text: item.text
            textFormat: Text.PlainText
            elide: Text.ElideRight
            maximumLineCount: 1
            color: "#f2f2f4"
            font { family: "Inter"; pixelSize: 13 * item.point }
        }
        Text {
            id: accessory

            anchors { right: parent.right; verticalCenter: parent.verticalCenter }
            text: item.subMenu ? "\u203a" : item.keys
            color: item.highlighted ? "#f2f2f4" : "#a2a2a8"
            font { family: "Inter"; pixelSize: (item.subMenu ? 16 : 12) * item.point }
        }
    }
    arrow: null
    indicator: null
    background: Rectangle {
        radius: 5 * item.point
        color: item.highlighted ? "#1673e6" : "transparent"
    }
}
