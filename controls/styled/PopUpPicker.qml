pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Tarnwick.Assets
import Tarnwick.Controls

/// One of many options, in a list that pops up.
T.ComboBox {
    id: picker

    /// What is stored, which may be none of the options.
    required property string storedText
    property string name

    readonly property bool isExpanded: popup.visible
    readonly property string spokenNow: displayText

    function toggleList(): void {
        if (!enabled)
            return;
        if (popup.visible)
            popup.close();
        else
            popup.open();
    }

    implicitWidth: 200
    implicitHeight: 28
    leftPadding: 9
    rightPadding: 28
    Accessible.name: name
    Accessible.onPressAction: toggleList()
    Keys.onReturnPressed: event => {
        event.accepted = !popup.visible; // there it chooses
        if (event.accepted)
            toggleList();
    }
    displayText: currentIndex >= 0 ? currentText : storedText

    background: Rectangle {
        radius: 6
        color: PreferencesStyle.control
        border.width: 1
        border.color: PreferencesStyle.controlEdge
        opacity: picker.enabled ? 1 : 0.5

        FocusRing {
            visible: picker.visualFocus
            innerRadius: 6
            border.color: PreferencesStyle.icon
        }
    }

    contentItem: Text {
        text: picker.displayText
        textFormat: Text.PlainText
        color: picker.enabled ? PreferencesStyle.text : PreferencesStyle.disabled
        font.pixelSize: Theme.bodySize
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
    }

    indicator: Rectangle {
        x: picker.width - width - 5
        y: 5
        width: 18
        height: 18
        radius: 4.5
        color: picker.enabled ? PreferencesStyle.fill : PreferencesStyle.disabled

        Glyph {
            anchors.centerIn: parent
            width: 14
            height: 14
            sign: Glyph.UpDown
        }
    }

    delegate: T.ItemDelegate {
        id: option

        required property string modelData
        required property int index

        width: ListView.view.width
        height: 24
        leftPadding: 26
        text: modelData
        highlighted: picker.highlightedIndex === index
        Accessible.name: modelData
        Accessible.selectable: true
        Accessible.selected: picker.currentIndex === index
        Accessible.onPressAction: clicked()

        readonly property color textColor: highlighted ? "white" : PreferencesStyle.text

        background: Rectangle {
            radius: 4
            color: option.highlighted ? PreferencesStyle.fill : "transparent"

            Glyph {
                x: 7
                y: 6
                width: 12
                height: 12
                color: option.textColor
                visible: picker.currentIndex === option.index
            }
        }
        contentItem: Text {
            text: option.text
            textFormat: Text.PlainText
            color: option.textColor
            font.pixelSize: Theme.bodySize
            elide: Text.ElideRight
            verticalAlignment: Text.AlignVCenter
        }
    }

    popup: T.Popup {
        y: picker.height + 4
        width: Math.min(Math.max(picker.width, 240), picker.Window.width - 2 * margins)
        height: Math.min(contentItem.implicitHeight + 10, 324, picker.Window.height - 2 * margins)
        margins: 8
        padding: 5

        background: Item {
            SoftShadow {
                anchors.fill: parent
                layers: 8
                reach: 10
                drop: 4
                radius: 8
                strength: 0.4
            }
            Rectangle {
                anchors.fill: parent
                radius: 8
                color: PreferencesStyle.card
                border.width: 1
                border.color: PreferencesStyle.controlEdge
            }
        }
        contentItem: ListView {
            clip: true
            implicitHeight: contentHeight
            model: picker.popup.visible ? picker.delegateModel : null
            currentIndex: picker.highlightedIndex
            highlightMoveDuration: 0
            boundsBehavior: Flickable.StopAtBounds
            T.ScrollBar.vertical: PreferencesScrollBar {}
        }
    }
}
