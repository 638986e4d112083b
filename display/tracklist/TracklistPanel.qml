pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick.Assets
import Tarnwick.Canvas
import Tarnwick.Display
import Tarnwick.Settings

// The back of the cover: the album's titles by disc, in one of three styles.
SharpRectangle {
    id: root

    required property TarnwickView view
    required property Stage stage
    required property bool isInUse ///< else there are no rows and no pictures

    readonly property int style: view.settings.tracklistStyle
    readonly property bool isIPod: style === Options.TracklistStyle.IPod
    readonly property bool isDynamic: style === Options.TracklistStyle.Dynamic
    readonly property real fraction: 0.95
    /// Round the column of the dynamic style, above and below the copy of the cover.
    readonly property real padding: onPixels(20)
    readonly property real copySide: onPixels(0.5 * fraction * Math.min(width, height))
    readonly property real copyHeight: stage.artwork.isPresent ? copySide + 2 * padding : 0 ///< with the room round it
    readonly property color plainText: isIPod ? "black" : "white"

    // It stands above all rows, which have not been laid out anew yet.
    onCopyHeightChanged: Qt.callLater(() => list.bringIntoView(tracks.currentRow)) // qmllint disable type

    radius: 10
    color: isIPod ? "white" : Qt.rgba(0, 0, 0, 0.7)

    function onPixels(length: real): real {
        return Theme.onPixels(length, pixelRatio);
    }

    Tap {
        gestures: root.view.gestures
        onChosen: root.view.tapCover()
    }

    // Over a list the wheel scrolls and does nothing else, at its ends and where there is nothing to scroll.
    WheelHandler { acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad }

    ListView {
        id: list

        x: root.onPixels((root.width - width) / 2)
        y: root.onPixels((root.height - height) / 2)
        width: root.onPixels(root.fraction * root.width)
        height: root.onPixels(root.fraction * root.height)
        topMargin: root.isDynamic ? root.padding : 0
        bottomMargin: topMargin
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        interactive: contentHeight + topMargin + bottomMargin > height
        model: TracklistModel {
            id: tracks

            view: root.isInUse ? root.view : null
            onSelectedRowChanged: list.centreRow(selectedRow)
            onRowsChanged: list.bringIntoView(currentRow)
        }
        // The list keeps the taps that no row answers to itself while it can be scrolled.
        Tap {
            margin: list.topMargin
            gestures: root.view.gestures
            onChosen: root.view.tapCover()
        }

        Accessible.role: Accessible.List
        Accessible.name: root.view.musicSource.currentAlbumName ?? ""

        delegate: Item {
            id: row

            required property int index
            required property int kind
            required property int discNumber
            required property string title
            required property string duration
            required property bool isCurrent
            required property bool isHovered
            required property bool isSelected

            readonly property real inset: root.isDynamic ? root.padding : 0

            x: inset
            width: list.width - 2 * inset
            height: root.onPixels(kind === TracklistModel.CoverRow ? copy.implicitHeight
                                  : kind === TracklistModel.HeaderRow ? header.implicitHeight : track.implicitHeight)

            Item {
                id: copy

                readonly property bool isShown: row.kind === TracklistModel.CoverRow && root.stage.artwork.isPresent

                implicitHeight: root.copyHeight

                CoverStack {
                    /// From the cover's left edge to the record's right one.
                    readonly property real shownWidth: record.isPresent ? 1.6 * root.copySide : coverWidth

                    x: root.onPixels((row.width - shownWidth) / 2)
                    y: root.padding
                    width: root.copySide
                    height: root.copySide
                    artwork: copy.isShown ? root.stage.artwork : root.view.noPicture
                    record: copy.isShown && !root.stage.cassette.isPresent ? root.stage.record : root.view.noPicture
                    area: Qt.size(root.copySide, root.copySide)
                    pixelRatio: root.pixelRatio
                    gestures: root.view.gestures
                    shadowOpacity: 0.3
                    name: root.view.musicSource.currentAlbumName ?? ""
                    onTapped: root.view.tapCover()
                }
            }

            DiscHeader {
                id: header

                width: parent.width
                visible: row.kind === TracklistModel.HeaderRow
                discNumber: row.discNumber
                color: root.plainText
                isFirst: row.index <= 1
                gapBelow: root.isIPod ? 0 : 15
                pixelRatio: root.pixelRatio
            }

            TrackRow {
                id: track

                width: parent.width
                height: parent.height
                visible: row.kind === TracklistModel.TitleRow
                style: root.style
                title: row.title
                duration: row.duration
                isCurrent: row.isCurrent
                isHighlighted: (row.isHovered && root.view.canPlayTitles) || row.isSelected
                textColor: root.stage.textColor
                ground: root.stage.ground
                veil: root.stage.rowColor
                pixelRatio: root.pixelRatio
                gestures: root.view.gestures
                onTapped: tracks.play(row.index)
                onHovered: entered => tracks.hover(row.index, entered)
            }
        }

        // Shows the row with this number, in the middle where it could not be seen before.
        function bringIntoView(number) {
            if (number < 0)
                return;
            forceLayout();
            const row = itemAtIndex(number);
            if (row && row.y + row.height <= contentY + height)
                return;
            positionViewAtEnd(); // else it takes all rows to be as high as those it has made so far
            positionViewAtIndex(number, ListView.Center);
        }

        // Moves the row with this number to the middle, as far as the list goes.
        function centreRow(number) {
            if (number < 0)
                return;
            centring.stop();
            const from = contentY;
            positionViewAtIndex(number, ListView.Center);
            const to = contentY;
            contentY = from;
            centring.to = to;
            centring.start();
        }

        NumberAnimation {
            id: centring

            target: list
            property: "contentY"
            duration: Theme.defaultDuration
            easing { type: Easing.BezierSpline; bezierCurve: Theme.easeInOut }
        }
    }

    Rectangle {
        x: root.onPixels((root.width - width) / 2)
        y: root.onPixels(root.copyHeight > 0 ? list.y + list.topMargin + root.copyHeight : (root.height - height) / 2)
        visible: tracks.isEmpty
        width: message.implicitWidth + 2 * Theme.padding
        height: message.implicitHeight + 2 * Theme.padding
        color: Qt.rgba(1, 0, 0, 0.5)

        TypeItem {
            id: message

            x: (parent.width - implicitWidth) / 2
            y: (parent.height - implicitHeight) / 2
            color: root.plainText
            font { family: Theme.fontFamily; pixelSize: Theme.headlineSize; weight: Theme.semibold }
            text: "Nessuna traccia trovata."
            pixelRatio: root.pixelRatio
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
}
