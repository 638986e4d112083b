import QtQuick
import Tarnwick.Controls

/// A card with a header line and a row of controls.
Rectangle {
    id: card

    property string title
    property string subtitle
    default property alias controls: row.data
    /// Of the row, which does not count what its controls are moved down.
    property int controlsHeight: 28

    readonly property var symbols: ({
        "Background": "photo.fill",
        "Playlist Background": "music.note.list",
        "Record Image": "record.circle",
        "Date & Time": "clock",
        "Track Info Font": "textformat",
        "Tracklist Style": "list.bullet",
        "Audio Info": "waveform"
    })

    width: 550
    height: row.y + controlsHeight + 10
    radius: 10
    color: PreferencesStyle.card
    border.width: 1
    border.color: PreferencesStyle.edge

    SectionHeader {
        x: 10
        y: 10
        width: card.width - 20
        symbol: card.symbols[card.title] ?? "gear"
        title: card.title
        subtitle: card.subtitle
    }

    Row {
        id: row

        x: 10
        y: 37
        spacing: 10
    }
}
