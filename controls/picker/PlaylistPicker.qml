pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Tarnwick.Assets
import Tarnwick.Controls
import Tarnwick.Settings

/// The names of the playlists on a card, in one of three looks.
FocusScope {
    id: picker

    required property TrackControls controls
    required property Settings settings
    required property var backgroundManager
    property real point: 1
    property bool hasArrow: true

    readonly property int look: settings.playlistBackgroundOption
    readonly property bool isIPod: look === Options.IPod
    readonly property color textColor: isIPod ? "black"
                                     : look === Options.Dynamic ? backgroundManager.dynamicTextColor : "white"
    /// Whether the card behind the texts is there; without it they could not be read.
    readonly property alias hasCard: frame.isThere
    /// The list, for whoever wants to look at it.
    readonly property alias listView: list

    Accessible.role: Accessible.List
    Accessible.name: qsTr("Select Playlist")
    // What moves within a list ends at its ends, and does not go on to what is behind it.
    Keys.onPressed: event => event.accepted = [Qt.Key_Up, Qt.Key_Down, Qt.Key_Left, Qt.Key_Right, Qt.Key_Home,
                                               Qt.Key_End, Qt.Key_PageUp, Qt.Key_PageDown].includes(event.key)
    Keys.onEscapePressed: controls.showPlaylistPicker = false
    Keys.onTabPressed: controls.showPlaylistPicker = false
    Keys.onBacktabPressed: controls.showPlaylistPicker = false

    PopoverFrame {
        id: frame

        x: -margin * picker.point
        y: -margin * picker.point
        width: picker.width + 2 * margin * picker.point
        height: picker.height + 2 * margin * picker.point
        point: picker.point
        look: picker.settings.playlistBackgroundOption
        gradientColors: picker.backgroundManager.gradientColors
        textColor: picker.backgroundManager.dynamicTextColor
        hasArrow: picker.hasArrow
    }

    MouseArea {
        anchors.fill: parent // what is beside a row does not close the popover
    }

    Text {
        anchors.horizontalCenter: parent.horizontalCenter
        y: 12 * picker.point
        height: 17 * picker.point
        verticalAlignment: Text.AlignVCenter
        text: qsTr("Select Playlist")
        color: picker.textColor
        font.pixelSize: Theme.headlineSize * picker.point
        font.weight: Font.DemiBold
    }

    Text {
        x: 8 * picker.point
        y: 37 * picker.point
        width: picker.width - 16 * picker.point
        height: picker.height - 45 * picker.point
        visible: list.count === 0
        padding: 10 * picker.point
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        text: qsTr("No Playlists Found")
        color: picker.textColor
        font.pixelSize: Theme.bodySize * picker.point
    }

    ListView {
        id: list

        x: 8 * picker.point
        y: 45 * picker.point
        width: picker.width - 16 * picker.point
        height: picker.height - 61 * picker.point
        clip: true
        focus: true
        boundsBehavior: Flickable.StopAtBounds
        model: picker.controls.playlists
        currentIndex: -1
        keyNavigationEnabled: true
        highlightFollowsCurrentItem: true
        highlightMoveDuration: 0
        reuseItems: false
        Keys.onReturnPressed: choose()
        Keys.onEnterPressed: choose()
        Keys.onSpacePressed: choose()
        Keys.onPressed: event => {
            const page = Math.max(1, Math.floor(height / (38 * picker.point)));
            const steps = {[Qt.Key_Home]: -count, [Qt.Key_End]: count, [Qt.Key_PageUp]: -page, [Qt.Key_PageDown]: page};
            const step = steps[event.key];
            if (step === undefined || count === 0)
                return;
            currentIndex = Math.min(count - 1, Math.max(0, Math.max(0, currentIndex) + step));
            event.accepted = true;
        }

        function choose(): void {
            if (currentIndex >= 0)
                picker.controls.choosePlaylist(picker.controls.playlists[currentIndex]);
        }

        delegate: picker.isIPod ? iPodRow : picker.look === Options.Dynamic ? fancyRow : darkRow

        T.ScrollBar.vertical: T.ScrollBar {
            id: bar

            implicitWidth: 8 * picker.point
            minimumSize: 0.08
            visible: size < 1
            contentItem: Rectangle {
                implicitWidth: 4 * picker.point
                radius: width / 2
                color: picker.textColor
                opacity: bar.active ? 0.4 : 0

                Behavior on opacity { NumberAnimation { duration: Theme.fadeDuration } }
            }
        }
    }

    PopoverFrame { // the rows of this look go from edge to edge, and the card's corners are round
        x: frame.x
        y: frame.y
        width: frame.width
        height: frame.height
        visible: picker.isIPod
        isPassePartout: true
        point: picker.point
        look: Options.IPod
        hasArrow: picker.hasArrow
    }

    /// The row under the pointer, or where the keyboard is.
    property int litIndex: -1

    function light(index: int, isLit: bool): void {
        if (isLit)
            litIndex = index;
        else if (litIndex === index)
            litIndex = -1;
    }

    /// No line beside the row that is lit.
    function separatorColor(index: int): color {
        return index === litIndex || index + 1 === litIndex ? "transparent" : textColor;
    }

    Component {
        id: darkRow

        FancyDarkHoverRow {
            required property string modelData
            required property int index

            x: 14 * picker.point
            width: list.width - 28 * picker.point
            text: modelData
            point: picker.point
            isCurrent: list.currentIndex === index
            separatorColor: picker.separatorColor(index)
            onIsHoveringChanged: picker.light(index, isHovering)
            onTapped: picker.controls.choosePlaylist(modelData)
        }
    }

    Component {
        id: fancyRow

        FancyHoverRow {
            required property string modelData
            required property int index

            x: 14 * picker.point
            width: list.width - 28 * picker.point
            text: modelData
            textColor: picker.textColor
            point: picker.point
            isCurrent: list.currentIndex === index
            separatorColor: picker.separatorColor(index)
            onIsHoveringChanged: picker.light(index, isHovering)
            onTapped: picker.controls.choosePlaylist(modelData)
        }
    }

    Component {
        id: iPodRow

        IPodHoverRow {
            required property string modelData
            required property int index

            width: list.width
            text: modelData
            point: picker.point
            isCurrent: list.currentIndex === index
            onTapped: picker.controls.choosePlaylist(modelData)
        }
    }
}
