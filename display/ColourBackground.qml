pragma ComponentBehavior: Bound

import QtQuick

// The colours of the cover from top to bottom. What they let through is black under white text and white
// under black, so that the fade of a colour only raises the contrast of the text.
Rectangle {
    id: root

    required property list<color> colors
    required property color textColor

    color: textColor.hslLightness > 0.5 ? "black" : "white"

    Rectangle {
        readonly property int count: root.colors.length

        anchors.fill: parent
        gradient: Gradient {
            GradientStop { position: 0; color: root.colors[0] ?? "black" }
            GradientStop { position: 0.5; color: root.middle() }
            GradientStop { position: 1; color: root.colors[root.colors.length - 1] ?? "black" }
        }
    }

    function middle() {
        const count = colors.length;
        if (count === 3)
            return colors[1];
        const a = colors[0] ?? Qt.color("black"), b = colors[count - 1] ?? Qt.color("black");
        return Qt.rgba((a.r + b.r) / 2, (a.g + b.g) / 2, (a.b + b.b) / 2, (a.a + b.a) / 2);
    }
}
