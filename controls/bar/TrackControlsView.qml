pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick.Assets
import Tarnwick.Controls
import Tarnwick.Settings

/// The transport bar with its frosted panel and its playlist popover. Fills the window and takes
/// the pointer only where the bar is.
FocusScope {
    id: root

    required property TrackControls controls
    required property Settings settings
    /// The background's colours: `gradientColors` and `dynamicTextColor`.
    required property var backgroundManager
    /// What lies behind the bar, in points.
    property alias backdrop: panel.backdrop
    /// Logical pixels of a point.
    property real point: 1

    readonly property real s: controls.sizeScale * point
    readonly property bool isPlaying: controls.isPlaying
    /// Where the panel is.
    readonly property alias panelItem: panelPlace

    activeFocusOnTab: false
    onActiveFocusChanged: controls.setFocused(activeFocus)
    Component.onCompleted: outside = Window.activeFocusItem

    Binding {
        target: root.controls
        property: "windowWidth"
        value: root.width / root.point
    }

    /// What has the keyboard while the bar has not.
    property Item outside

    /// Tab beyond either end leaves the bar, which then may hide.
    function leaveByTab(): void {
        outside?.forceActiveFocus(Qt.TabFocusReason);
    }

    Connections {
        target: root.Window.window
        function onActiveFocusItemChanged(): void {
            const item = root.Window.activeFocusItem;
            if (item === root)
                root.leaveByTab(); // what had the keyboard here has gone
            else if (root.activeFocus)
                root.controls.useByKeys();
            else if (item) // none: another window has it
                root.outside = item;
        }
    }

    Connections {
        target: root.controls
        function onFocusRested(): void {
            root.leaveByTab();
        }
    }

    // Sees every press, and takes none: one elsewhere takes the focus from the bar.
    PointHandler {
        onActiveChanged: {
            if (active && root.activeFocus && !panelPlace.contains(root.mapToItem(panelPlace, point.position)))
                root.leaveByTab();
        }
    }

    Item {
        id: panelPlace

        x: area.x + panel.x
        y: area.panelTop
        width: panel.width
        height: panel.height
    }

    Item {
        id: area

        /// Where the panel begins in the window.
        readonly property real panelTop: Math.round(root.height - (root.isPlaying ? 30 : 70) * root.point
                                                    - 140 * root.s)

        // The bar's own box and the panel, which moves up while nothing plays.
        x: Math.round((root.width - width) / 2)
        y: Math.min(panelTop, root.height - 20 * root.point - 140 * root.s)
        width: 460 * root.s
        height: root.height - 20 * root.point - y

        /// A drag of the slider belongs to the bar wherever it goes.
        readonly property bool isHovered: hover.hovered || slider.isPressed

        onIsHoveredChanged: isHovered ? root.controls.enterBar() : root.controls.leaveBar()

        HoverHandler {
            id: hover

            acceptedDevices: PointerDevice.AllDevices & ~PointerDevice.TouchScreen
            onPointChanged: root.controls.pointerMoved(point.scenePosition)
        }

        FrostedPanel {
            id: panel

            x: Math.round((area.width - width) / 2)
            y: area.panelTop - area.y
            width: Math.round(460 * root.s)
            height: Math.round(140 * root.s)
            place: Qt.rect((area.x + x) / root.point, area.panelTop / root.point, width / root.point, height / root.point)
            radius: 22
            isWanted: opacity > 0
            opacity: root.controls.showTrackControls ? 1 : 0
            visible: opacity > 0

            Behavior on opacity { NumberAnimation { duration: Theme.fadeDuration; easing.type: Easing.BezierSpline; easing.bezierCurve: Theme.easeInOut } }
        }

        // One does not press what one cannot see: what falls on the panel stays here.
        MouseArea {
            x: panel.x
            y: panel.y
            width: panel.width
            height: panel.height
            enabled: root.controls.showTrackControls
            hoverEnabled: true
        }

        Item {
            id: front

            readonly property real centreY: panel.y + panel.height / 2

            anchors.fill: parent
            opacity: root.controls.showTrackControls ? 1 : 0

            Behavior on opacity { NumberAnimation { duration: Theme.fadeDuration; easing.type: Easing.BezierSpline; easing.bezierCurve: Theme.easeInOut } }

            Keys.onPressed: event => {
                if (event.key !== Qt.Key_PageUp && event.key !== Qt.Key_PageDown)
                    return;
                root.controls.setVolume(root.controls.volumeLevel + (event.key === Qt.Key_PageUp ? 0.05 : -0.05));
                root.controls.useByKeys();
                event.accepted = true;
            }
            Keys.onEscapePressed: event => {
                root.leaveByTab();
                event.accepted = false; // what it is for otherwise it is for here, too
            }

            Row {
                id: buttons

                anchors.horizontalCenter: parent.horizontalCenter
                y: Math.round(front.centreY - 4 * root.point - 12 * root.s - height / 2)
                spacing: 24 * root.s

                BarButton {
                    controls: root.controls
                    identifier: "previous"
                    Keys.onBacktabPressed: root.leaveByTab()
                    symbol: "backward.fill"
                    tip: qsTr("Previous Track")
                    side: 44 * root.s
                    point: root.point
                }
                BarButton {
                    controls: root.controls
                    identifier: "playPause"
                    symbol: root.isPlaying ? "pause.fill" : "play.fill"
                    tip: root.isPlaying ? qsTr("Pause") : qsTr("Play")
                    side: 44 * root.s
                    point: root.point
                }
                BarButton {
                    controls: root.controls
                    identifier: "next"
                    symbol: "forward.fill"
                    tip: qsTr("Next Track")
                    side: 44 * root.s
                    point: root.point
                }
                BarButton {
                    controls: root.controls
                    identifier: "shuffle"
                    symbol: "shuffle"
                    symbolColor: root.controls.isShuffleOn ? Theme.green : "white"
                    tip: root.controls.isShuffleOn ? qsTr("Shuffle: on") : qsTr("Shuffle: off")
                    Accessible.checkable: true
                    Accessible.checked: root.controls.isShuffleOn
                    side: 44 * root.s
                    point: root.point
                }
                BarButton {
                    id: playlistButton

                    controls: root.controls
                    identifier: "playlist"
                    symbol: "music.note.list"
                    tip: qsTr("Playlists")
                    isExpanded: root.controls.showPlaylistPicker
                    side: 44 * root.s
                    point: root.point
                }
                BarButton {
                    controls: root.controls
                    identifier: "preferences"
                    symbol: "gearshape.fill"
                    tip: qsTr("Preferences")
                    side: 44 * root.s
                    point: root.point
                }
            }

            VolumeSlider {
                id: slider

                Keys.onTabPressed: root.leaveByTab()
                anchors.horizontalCenter: parent.horizontalCenter
                y: Math.round(front.centreY + 28 * root.s - 8 * root.point - height / 2)
                controls: root.controls
                point: root.point
                s: root.s
                // As high as a finger needs it, as far as the buttons above leave room.
                reach: Math.max(6 * s, Math.min((44 * root.point - height) / 2, y - buttons.y - buttons.height))
            }
        }
    }

    Item {
        anchors.fill: area

        PointHandler {
            acceptedDevices: PointerDevice.TouchScreen
            onActiveChanged: root.controls.touch(active)
        }

        // A finger cannot point at what is hidden before it presses it.
        TapHandler {
            enabled: !root.controls.showTrackControls
            acceptedDevices: PointerDevice.TouchScreen
            gesturePolicy: TapHandler.ReleaseWithinBounds
            onTapped: root.controls.callUp()
        }
    }

    QuietScale {
        anchors { right: parent.right; rightMargin: 24 * root.point; verticalCenter: parent.verticalCenter }
        height: Math.round(Math.min(200 * root.point, 0.5 * root.height))
        scaleOfVolume: root.controls.volumeScale
        point: root.point
    }

    MessageBanner {
        anchors.horizontalCenter: parent.horizontalCenter
        y: area.panelTop - height - 14 * root.point
        maximumWidth: Math.min(560 * root.point, root.width - 40 * root.point)
        message: root.controls.message
        point: root.point
    }

    PlaylistPopover {
        anchors.fill: parent
        controls: root.controls
        settings: root.settings
        backgroundManager: root.backgroundManager
        bar: area
        opener: playlistButton
        barTop: area.panelTop
        point: root.point
    }
}
