import QtQuick
import QtQuick.Templates as T
import Tarnwick.Assets
import Tarnwick.Controls

/// A round button of the transport bar.
T.AbstractButton {
    id: button

    required property TrackControls controls
    /// What the controls know the button by.
    required property string identifier
    /// The symbol's name in the catalogue.
    required property string symbol
    required property string tip
    property color symbolColor: "white"
    property real side: 44
    property real point: 1

    readonly property bool isPointedAt: controls.hoveredButton === identifier
    /// Whether what it opens is open; undefined where it opens nothing.
    property var isExpanded
    /// Whether the player cannot do it; it still answers.
    readonly property bool isDimmed: controls.dimmedButtons.includes(identifier) // qmllint disable type

    implicitWidth: side
    implicitHeight: side
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    scale: isPointedAt ? 1.1 : 1
    Accessible.name: tip
    Accessible.onPressAction: clicked()

    onClicked: controls.press(identifier)
    onHoveredChanged: hovered ? controls.pointerEntered(identifier) : controls.pointerLeft(identifier)

    Behavior on scale { NumberAnimation { duration: 150; easing.type: Easing.BezierSpline; easing.bezierCurve: Theme.easeInOut } }

    background: Rectangle {
        radius: width / 2
        color: "white"
        opacity: (button.isPointedAt ? 0.1 : 0.05) * (button.isDimmed ? 0.4 : 1)

        Behavior on opacity { NumberAnimation { duration: 150; easing.type: Easing.BezierSpline; easing.bezierCurve: Theme.easeInOut } }
    }

    contentItem: Item {
        CataloguePicture {
            anchors.centerIn: parent
            width: height * aspectRatio
            height: Math.round(button.side * 0.5)
            name: button.symbol
            tint: button.symbolColor
            opacity: button.isDimmed ? 0.4 : 1
        }
    }

    FocusRing {
        visible: button.visualFocus
        point: button.point
        innerRadius: button.side / 2
    }

    Tip {
        text: button.tip
        isWanted: button.isPointedAt
        point: button.point
    }
}
