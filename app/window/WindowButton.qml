pragma ComponentBehavior: Bound

import QtQuick

// One window button. Its glyph is made of bars, which every renderer draws alike.
Item {
    id: button

    enum Glyph { Close, Minimise, FullScreen, LeaveFullScreen }

    required property string name
    required property int glyph
    required property real point
    /// The side of the square that takes a press, in points.
    required property real zone

    // Each bar: centre x and y, length, turn; in a square of 14 points.
    readonly property var bars: [
        [[7, 7, 11, 45], [7, 7, 11, -45]],
        [[7, 7, 10, 0]],
        [[3.5, 2, 5, 0], [2, 3.5, 5, 90], [10.5, 12, 5, 0], [12, 10.5, 5, 90]],
        [[3.5, 6, 5, 0], [6, 3.5, 5, 90], [10.5, 8, 5, 0], [8, 10.5, 5, 90]]
    ]

    signal triggered

    width: 14 * point
    height: 14 * point
    opacity: hover.hovered ? 1 : 0.85
    Accessible.role: Accessible.Button
    Accessible.name: name
    Accessible.onPressAction: button.triggered()

    Repeater {
        model: button.bars[button.glyph]

        Rectangle {
            required property var modelData

            x: modelData[0] * button.point - width / 2
            y: modelData[1] * button.point - height / 2
            width: modelData[2] * button.point
            height: 2 * button.point
            radius: height / 2
            rotation: modelData[3]
            color: "white"
            antialiasing: true
        }
    }

    // A little more than the glyph, so that it is easily met.
    Item {
        anchors { fill: parent; margins: (14 - button.zone) / 2 * button.point }

        HoverHandler { id: hover }
        TapHandler {
            gesturePolicy: TapHandler.ReleaseWithinBounds
            onTapped: button.triggered()
        }
    }
}
