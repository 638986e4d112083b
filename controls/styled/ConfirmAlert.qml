import QtQuick
import Tarnwick.Assets
import Tarnwick.Controls

/// A question over everything else, which must be answered first.
FocusScope {
    id: alert

    required property string title
    required property string message
    required property string confirmText
    /// Whether it is asked.
    required property bool isAsked

    signal confirmed()
    signal cancelled()

    /// What had the keyboard when it was asked, and gets it back; the ring is shown if it was shown there.
    property var returnTo: null
    property int focusReason: Qt.PopupFocusReason

    visible: isAsked
    Accessible.role: Accessible.AlertMessage
    Accessible.name: title
    Accessible.description: message
    onIsAskedChanged: {
        if (isAsked) {
            returnTo = Window.activeFocusItem;
            focusReason = returnTo?.visualFocus ? Qt.TabFocusReason : Qt.PopupFocusReason;
        }
        (isAsked ? cancel : returnTo)?.forceActiveFocus(focusReason);
    }
    Keys.enabled: isAsked
    Keys.onEscapePressed: cancelled()
    Keys.onReturnPressed: confirm.activeFocus ? confirmed() : cancelled()
    Keys.onEnterPressed: confirm.activeFocus ? confirmed() : cancelled()
    Keys.onTabPressed: (cancel.activeFocus ? confirm : cancel).forceActiveFocus(Qt.TabFocusReason)
    Keys.onBacktabPressed: (cancel.activeFocus ? confirm : cancel).forceActiveFocus(Qt.TabFocusReason)

    Told { text: alert.isAsked ? alert.title + " " + alert.message : "" }

    Rectangle {
        anchors.fill: parent
        color: "#66000000"
    }
    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
        acceptedButtons: Qt.AllButtons
        onWheel: wheel => wheel.accepted = true
    }

    Rectangle {
        objectName: "card"
        anchors.centerIn: parent
        width: Math.min(330, alert.width - 16)
        height: column.height + 40
        radius: 12
        color: PreferencesStyle.card
        border.width: 1
        border.color: PreferencesStyle.controlEdge

        Column {
            id: column

            anchors.centerIn: parent
            width: parent.width - 40
            spacing: 10

            Text {
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                text: alert.title
                color: PreferencesStyle.text
                font.pixelSize: Theme.headlineSize
                font.weight: Font.DemiBold
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
            Text {
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                text: alert.message
                color: PreferencesStyle.text
                font.pixelSize: Theme.bodySize
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
            Row {
                topPadding: 6
                spacing: 10

                PushButton {
                    id: cancel
                    objectName: "cancel"
                    width: (column.width - 10) / 2
                    text: qsTr("Cancel")
                    onClicked: alert.cancelled()
                }
                PushButton {
                    id: confirm
                    objectName: "confirm"
                    width: (column.width - 10) / 2
                    isDestructive: true
                    text: alert.confirmText
                    onClicked: alert.confirmed()
                }
            }
        }
    }
}
