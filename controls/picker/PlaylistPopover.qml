import QtQuick
import Tarnwick.Assets
import Tarnwick.Controls
import Tarnwick.Settings

/// The playlist picker above the bar. A click outside or Escape closes it.
Item {
    id: popover

    required property TrackControls controls
    required property Settings settings
    required property var backgroundManager
    /// The bar below, which goes on working while the picker is open.
    required property Item bar
    /// The button of the bar that opens and closes the picker.
    required property Item opener
    /// Where the bar's panel begins.
    required property real barTop
    property real point: 1

    readonly property bool isOpen: controls.showPlaylistPicker
    /// The picker while it is there.
    readonly property alias pickerItem: loader.item

    /// What had the keyboard when the picker opened, and gets it back.
    property Item returnTo

    visible: loader.active
    onIsOpenChanged: {
        if (!isOpen) {
            if (loader.item?.activeFocus)
                returnTo?.forceActiveFocus(Qt.BacktabFocusReason);
            return;
        }
        returnTo = Window.activeFocusItem;
        if (loader.item) // it was still on its way out
            loader.item.forceActiveFocus(Qt.PopupFocusReason);
    }

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        enabled: popover.isOpen
        onPressed: mouse => {
            const isOver = item => item.contains(mapToItem(item, mouse.x, mouse.y));
            if (!isOver(popover.opener))
                popover.controls.showPlaylistPicker = false;
            mouse.accepted = !isOver(popover.bar);
        }
        onWheel: wheel => wheel.accepted = true
    }

    Loader {
        id: loader

        // Slides in from above its place, and back.
        property real shown: popover.isOpen ? 1 : 0

        readonly property real pickerHeight: Math.min(400 * popover.point, popover.height - 16 * popover.point)

        Behavior on shown { NumberAnimation { duration: Theme.fadeDuration; easing.type: Easing.BezierSpline; easing.bezierCurve: Theme.easeInOut } }

        active: shown > 0
        x: Math.round((popover.width - 320 * popover.point) / 2)
        y: Math.round(Math.max(8 * popover.point, popover.barTop - 10 * popover.point - pickerHeight)
                      - (1 - shown) * 28 * popover.point)
        opacity: item?.hasCard ? shown : 0
        focus: true
        // A loader cannot make a bound component.
        // qmllint disable unqualified
        sourceComponent: PlaylistPicker {
            width: 320 * popover.point
            height: loader.pickerHeight
            controls: popover.controls
            settings: popover.settings
            backgroundManager: popover.backgroundManager
            point: popover.point
            hasArrow: popover.barTop - 10 * popover.point - loader.pickerHeight >= 8 * popover.point
        }
        // qmllint enable unqualified
        onLoaded: loader.item?.forceActiveFocus(Qt.PopupFocusReason)
    }
}
