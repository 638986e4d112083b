pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Tarnwick.Controls
import Tarnwick.Settings

/// Every preference, on cards, bound to the settings without a detour. Its content has a size of its
/// own and scrolls where the view is smaller.
FocusScope {
    id: view

    required property Settings settings
    required property PreferencesModel model

    readonly property size contentSize: Qt.size(590, 1000)
    /// The colours, for whoever wants others than the desktop's.
    readonly property QtObject style: PreferencesStyle
    /// What scrolls, for whoever wants to look at it.
    readonly property alias flickable: flickable

    Rectangle {
        anchors.fill: parent
        color: PreferencesStyle.ground
    }
    Rectangle {
        anchors.fill: parent
        gradient: Gradient {
            GradientStop { position: 0; color: "#33808080" }
            GradientStop { position: 1; color: "#0d000000" }
        }
    }

    Flickable {
        id: flickable

        anchors.fill: parent
        contentWidth: Math.max(width, view.contentSize.width)
        contentHeight: Math.max(height, view.contentSize.height)
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        T.ScrollBar.vertical: PreferencesScrollBar {}
        T.ScrollBar.horizontal: PreferencesScrollBar {}

        // Where a view of `length` that begins at `now` begins to show what lies `from` … `to`, its beginning first.
        function shifted(now: real, length: real, whole: real, from: real, to: real): real {
            const latest = Math.max(0, Math.min(to, whole) - length);
            return Math.max(0, Math.min(from, Math.max(now, latest)));
        }

        // Brings what the keyboard acts on into view with something around it, the first row with its header.
        function reveal(item: Item): void {
            const around = 12;
            const place = item.mapToItem(contentItem, 0, 0);
            const firstRow = general.mapToItem(contentItem, 0, 0).y;
            contentX = shifted(contentX, width, contentWidth, place.x - around, place.x + item.width + around);
            contentY = shifted(contentY, height, contentHeight, place.y > firstRow ? place.y - around : 0,
                               place.y + item.height + around);
        }

        Connections {
            target: view.Window.window
            function onActiveFocusItemChanged(): void {
                const item = view.Window.activeFocusItem;
                for (let each = item; each; each = each.parent) {
                    if (each === content) {
                        flickable.reveal(item);
                        return;
                    }
                }
            }
        }

        Column {
            id: content

            x: Math.max(0, (flickable.contentWidth - view.contentSize.width) / 2) + 20
            y: 10
            spacing: 15
            width: 550

            Row {
                spacing: 20

                Column {
                    spacing: 8

                    SectionHeader {
                        width: 320
                        height: 27
                        symbol: "gear"
                        title: qsTr("General Settings")
                    }
                    Rectangle {
                        width: 320
                        height: general.height + 20
                        radius: 10
                        color: PreferencesStyle.card
                        border.width: 1
                        border.color: PreferencesStyle.edge

                        Column {
                            id: general

                            x: 10
                            y: 10
                            spacing: 5

                            CheckRow { settings: view.settings; key: "rotateCDDuringPlayback"; text: qsTr("Rotate record during playback") }
                            CheckRow { settings: view.settings; key: "enableCDAnimation"; text: qsTr("Enable slide record") }
                            CheckRow { settings: view.settings; key: "preventSleep"; text: qsTr("Prevent screen sleep") }
                            CheckRow { settings: view.settings; key: "showTrackComments"; text: qsTr("Show track comments") }
                            CheckRow { settings: view.settings; key: "showTrackFlags"; text: qsTr("Show flags based on first track comments") }
                            Item {
                                width: 300
                                height: 13
                                Rectangle {
                                    y: 6
                                    width: 300
                                    height: 1
                                    color: PreferencesStyle.divider
                                }
                            }
                            CheckRow { settings: view.settings; key: "autoUpdateAppIcon"; text: qsTr("Use the album cover for the icon") }
                            CheckRow { settings: view.settings; key: "enableFlip"; text: qsTr("Enable cover flip animation") }
                            CheckRow { settings: view.settings; key: "useGeneratedCD"; text: qsTr("Create rotation image based on album cover") }
                            CheckRow { settings: view.settings; key: "isAlwaysOnTop"; text: qsTr("Keep app always on top") }
                            CheckRow { settings: view.settings; key: "showFileFormatLogo"; text: qsTr("Show file format logo") }
                            CheckRow { settings: view.settings; key: "showCurrentPlaylist"; text: qsTr("Show current playlist") }
                            CheckRow { settings: view.settings; key: "showGenre"; text: qsTr("Show track genre") }
                            CheckRow { settings: view.settings; key: "launchInFullscreen"; text: qsTr("Launch app in fullscreen on first run") }
                            CheckRow { settings: view.settings; key: "launchAtLogin"; text: qsTr("Start automatically at login and play music") }
                        }
                    }
                }

                Column {
                    spacing: 8

                    SectionHeader {
                        width: 200
                        height: 27
                        symbol: "waveform"
                        title: qsTr("Audio Info")
                    }
                    Rectangle {
                        width: 200
                        height: audio.height + 20
                        radius: 10
                        color: PreferencesStyle.card
                        border.width: 1
                        border.color: PreferencesStyle.edge

                        Column {
                            id: audio

                            x: 10
                            y: 10
                            spacing: 5

                            CheckRow { settings: view.settings; key: "showBitRate"; text: qsTr("Bit Rate") }
                            CheckRow { settings: view.settings; key: "showFileSize"; text: qsTr("File Size") }
                            CheckRow { settings: view.settings; key: "showSampleRate"; text: qsTr("Sample Rate") }
                        }
                    }
                }
            }

            SectionCard {
                title: "Background"
                subtitle: qsTr("Choose Background")

                SegmentedPicker {
                    name: qsTr("Background")
                    options: view.model?.backgroundNames ?? []
                    padding: 8
                    enabled: !view.settings.randomBackgroundEnabled
                    currentIndex: view.settings.backgroundOption
                    onPicked: index => view.settings.backgroundOption = index
                }
                SwitchToggle { settings: view.settings; key: "randomBackgroundEnabled"; text: qsTr("Random"); name: qsTr("Random Background") }
            }

            SectionCard {
                title: "Playlist Background"
                subtitle: qsTr("Choose Style")

                SegmentedPicker {
                    name: qsTr("Playlist Background")
                    options: view.model?.playlistBackgroundNames ?? []
                    currentIndex: view.settings.playlistBackgroundOption
                    onPicked: index => view.settings.playlistBackgroundOption = index
                }
            }

            SectionCard {
                title: "Record Image"
                subtitle: qsTr("Choose Record Image")

                PopUpPicker {
                    name: qsTr("Record Image")
                    enabled: !view.settings.randomRotationEnabled
                    model: view.model?.recordNames ?? []
                    storedText: view.settings.defaultCDImageChoice
                    currentIndex: view.model?.recordTags.indexOf(storedText) ?? -1
                    onActivated: index => view.settings.defaultCDImageChoice = view.model.recordTags[index]
                }
                SwitchToggle { settings: view.settings; key: "randomRotationEnabled"; text: qsTr("Random"); name: qsTr("Random Record Image") }
            }

            FontSection {
                title: "Date & Time"
                subtitle: qsTr("Show Date, Time & Choose Font")
                settings: view.settings
                model: view.model
                isClock: true
                switchKey: "showDateAndTime"
                fontKey: "selectedClockFont"
                randomKey: "randomClockFontEnabled"
                importText: qsTr("Import Clock Font")
                removeTip: qsTr("Remove selected clock font")
                fontName: qsTr("Clock Font")
                randomName: qsTr("Random Clock Font")
            }

            FontSection {
                title: "Track Info Font"
                subtitle: qsTr("Choose Track Info Font")
                settings: view.settings
                model: view.model
                isClock: false
                switchKey: "enableTrackInfoFont"
                fontKey: "selectedTrackInfoFont"
                randomKey: "randomTrackInfoFontEnabled"
                importText: qsTr("Import Track Font")
                removeTip: qsTr("Remove selected track info font")
                fontName: qsTr("Font of Track Info")
                randomName: qsTr("Random Track Info Font")
            }

            SectionCard {
                title: "Tracklist Style"
                subtitle: qsTr("Choose Tracklist Style")

                SegmentedPicker {
                    name: qsTr("Tracklist Style")
                    options: view.model?.tracklistStyleNames ?? []
                    currentIndex: view.settings.tracklistStyle
                    onPicked: index => view.settings.tracklistStyle = index
                }
            }
        }
    }

    ConfirmAlert {
        objectName: "removeAlert"
        anchors.fill: parent
        title: qsTr("Remove Font?")
        message: qsTr("Are you sure you want to remove this font?")
        confirmText: qsTr("Remove")
        isAsked: view.model?.showRemoveAlert ?? false
        onConfirmed: view.model.confirmRemoval()
        onCancelled: view.model.cancelRemoval()
    }
}
