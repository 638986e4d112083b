import QtQuick
import QtQuick.Controls.Basic

// What speed is measured against: twenty texts, one button and one picture of 600 pixels, which may turn
// under one text and one translucent rectangle.
Item {
    id: root

    property bool isTurning
    property real side: 600

    Rectangle {
        anchors.fill: parent
        color: "black"
    }

    Image {
        id: picture

        x: root.width / 2 - root.side / 2
        y: root.height / 2 - root.side / 2
        width: root.side
        height: root.side
        source: "image://bare/disc"
        sourceSize: Qt.size(root.side, root.side)

        Timer {
            interval: 33
            repeat: true
            running: root.isTurning
            onTriggered: picture.rotation += 9.14
        }
    }

    Rectangle {
        anchors { right: parent.right; top: parent.top; margins: 20 }
        width: root.width / 4
        height: root.height / 2
        color: "#40000000"
    }

    Column {
        anchors { right: parent.right; top: parent.top; margins: 40 }

        Repeater {
            model: root.isTurning ? 1 : 20

            Text {
                required property int index

                color: "white"
                font { family: "Inter"; pixelSize: 20 }
                text: "Line " + index
            }
        }
    }

    Button {
        anchors { horizontalCenter: parent.horizontalCenter; bottom: parent.bottom; margins: 20 }
        visible: !root.isTurning
        text: "Play"
    }
}
