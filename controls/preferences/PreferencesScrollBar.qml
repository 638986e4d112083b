import QtQuick
import QtQuick.Templates as T
import Tarnwick.Controls

/// Shows where one is in what is larger than its place.
T.ScrollBar {
    id: bar

    implicitWidth: 10
    implicitHeight: 10
    padding: 2
    minimumSize: 0.08
    visible: size < 1

    contentItem: Rectangle {
        implicitWidth: 6
        implicitHeight: 6
        radius: 3
        color: PreferencesStyle.text
        opacity: bar.pressed ? 0.6 : bar.hovered ? 0.5 : 0.35
    }
}
