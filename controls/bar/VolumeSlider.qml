import QtQuick
import Tarnwick.Assets
import Tarnwick.Controls

/// The volume, without steps. Keys stay with the bar, so it is no slider of the toolkit's.
Item {
    id: slider

    required property TrackControls controls
    property real point: 1
    property real s: 1

    /// Follows the pointer while it drags and the player otherwise.
    property real position
    /// Whether the pointer holds it.
    readonly property alias isPressed: area.pressed

    // What assistive technology reads and asks for.
    property real value: position
    readonly property real minimumValue: 0
    readonly property real maximumValue: 1
    readonly property real stepSize: 0.05

    /// How far beyond its height it takes a press.
    property real reach: 6 * s

    readonly property real knobSize: 18 * s
    readonly property real travel: width - knobSize

    onValueChanged: {
        if (value === position)
            return;
        const wanted = value;
        value = Qt.binding(() => slider.position);
        slider.controls.setVolume(wanted);
    }

    implicitWidth: 260 * s
    implicitHeight: 12 * s
    activeFocusOnTab: true
    Accessible.role: Accessible.Slider
    Accessible.name: qsTr("Volume")
    Accessible.focusable: true
    Accessible.onIncreaseAction: slider.controls.setVolume(slider.controls.volumeLevel + stepSize)
    Accessible.onDecreaseAction: slider.controls.setVolume(slider.controls.volumeLevel - stepSize)

    Binding on position {
        when: !area.pressed
        value: slider.controls.volumeLevel
        restoreMode: Binding.RestoreNone
    }

    Rectangle {
        id: track

        anchors.verticalCenter: parent.verticalCenter
        width: parent.width
        height: Theme.sliderTrackHeight * slider.s
        radius: height / 2
        color: Theme.faintOnDark

        Rectangle {
            width: slider.knobSize / 2 + slider.travel * slider.position
            height: parent.height
            radius: height / 2
            color: Theme.green
        }
    }

    Rectangle {
        id: knob

        x: slider.travel * slider.position
        anchors.verticalCenter: parent.verticalCenter
        width: slider.knobSize
        height: width
        radius: width / 2
        color: "white"
        border.width: 1
        border.color: "#33000000"

        FocusRing {
            visible: slider.activeFocus
            point: slider.point
            innerRadius: knob.radius
        }
    }

    MouseArea {
        id: area

        /// The press was meant for what was here before.
        property bool isDropped: false
        /// From the knob's middle to where it was taken, so that it does not jump under the pointer.
        property real grip: 0

        function take(x: real): void {
            const distance = x + x0 - (knob.x + slider.knobSize / 2);
            grip = Math.abs(distance) <= slider.knobSize / 2 ? distance : 0;
            follow(x);
        }

        function follow(x: real): void {
            const place = x - grip + x0 - slider.knobSize / 2;
            const level = Math.min(1, Math.max(0, place / slider.travel));
            if (level === slider.position)
                return;
            slider.position = level;
            slider.controls.setVolume(level);
        }

        readonly property real x0: -6 * slider.s

        anchors { fill: parent; leftMargin: x0; rightMargin: x0; topMargin: -slider.reach; bottomMargin: -slider.reach }
        preventStealing: true
        onPressed: mouse => {
            isDropped = !slider.controls.takesPressOfSlider();
            if (!isDropped)
                take(mouse.x);
        }
        onPositionChanged: mouse => {
            if (!isDropped)
                follow(mouse.x);
        }
        onWheel: wheel => {
            const turn = (wheel.inverted ? -1 : 1) * wheel.angleDelta.y / 120;
            if (turn !== 0)
                slider.controls.setVolume(slider.controls.volumeLevel + turn * slider.stepSize);
        }
    }
}
