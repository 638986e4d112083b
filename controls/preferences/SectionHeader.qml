import QtQuick
import Tarnwick.Assets
import Tarnwick.Controls

/// A symbol and a title, and at the right end what the section is for.
Item {
    id: header

    required property string symbol
    required property string title
    property string subtitle

    implicitHeight: 22

    CataloguePicture {
        id: icon

        x: (height - width) / 2
        anchors.verticalCenter: parent.verticalCenter
        width: Math.round(height * aspectRatio)
        height: Theme.title2IconSize
        name: header.symbol
        tint: PreferencesStyle.icon
    }
    Text {
        x: 25
        anchors.verticalCenter: parent.verticalCenter
        text: header.title
        color: PreferencesStyle.text
        font.pixelSize: Theme.headlineSize
        font.weight: Font.DemiBold
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    Text {
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        text: header.subtitle
        color: PreferencesStyle.subtitle
        font.pixelSize: Theme.subheadlineSize
    }
}
