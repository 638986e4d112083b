pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick.Assets
import Tarnwick.Controls

/// One of a few options, side by side. The arrows move within it.
Item {
    id: picker

    /// The labels.
    required property list<string> options
    /// What is chosen; beyond the options for nothing.
    required property int currentIndex
    /// Left and right of each label.
    property int padding: 16
    property string name

    signal picked(int index)

    function move(by: int): void {
        const index = currentIndex < options.length ? currentIndex + by : 0;
        if (index >= 0 && index < options.length)
            picked(index);
    }

    implicitWidth: row.width
    implicitHeight: 28
    activeFocusOnTab: enabled
    Accessible.role: Accessible.Grouping
    Accessible.name: name
    Keys.onLeftPressed: move(-1)
    Keys.onRightPressed: move(1)

    Rectangle {
        anchors.fill: parent
        radius: 7
        color: PreferencesStyle.trough
        opacity: picker.enabled ? 1 : 0.6
    }

    Row {
        id: row

        Repeater {
            model: picker.options

            Item {
                id: segment

                required property string modelData
                required property int index

                readonly property bool isChosen: index === picker.currentIndex
                readonly property string spokenNow: "" // what tells that it is disabled

                width: Math.ceil(metrics.advanceWidth) + 2 * picker.padding // the same chosen or not
                height: 28
                Accessible.role: Accessible.RadioButton
                Accessible.name: modelData
                Accessible.checkable: true
                Accessible.checked: isChosen
                Accessible.onPressAction: choose()
                Accessible.onToggleAction: choose()

                function choose(): void {
                    if (enabled)
                        picker.picked(index);
                }

                TextMetrics {
                    id: metrics

                    font.family: label.font.family
                    font.pixelSize: Theme.bodySize
                    text: segment.modelData
                }
                Rectangle { // between two that are not chosen
                    x: -0.5
                    y: 8
                    width: 1
                    height: 12
                    color: PreferencesStyle.controlEdge
                    visible: segment.index > 0 && !segment.isChosen && segment.index - 1 !== picker.currentIndex
                }
                Rectangle {
                    anchors.fill: parent
                    anchors.margins: 2
                    radius: 5
                    color: PreferencesStyle.fill
                    visible: segment.isChosen
                }
                Text {
                    id: label

                    anchors.centerIn: parent
                    text: segment.modelData
                    color: !picker.enabled ? PreferencesStyle.disabled
                         : segment.isChosen ? "white" : PreferencesStyle.text
                    font.pixelSize: Theme.bodySize
                    font.weight: segment.isChosen ? Font.DemiBold : Font.Normal
                }
                // Takes fingers as they are, and leaves the scrolling to the view.
                TapHandler {
                    gesturePolicy: TapHandler.ReleaseWithinBounds
                    onTapped: segment.choose()
                }
            }
        }
    }

    FocusRing {
        visible: picker.activeFocus
        innerRadius: 7
        border.color: PreferencesStyle.icon
    }
}
