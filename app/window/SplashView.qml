import QtQuick

// The application's picture over the whole window, which is let go of when it is no longer seen.
Image {
    source: visible && width > 0 && height > 0 ? "image://catalogue/applogo800" : ""
    sourceSize: Qt.size(width * Screen.devicePixelRatio, height * Screen.devicePixelRatio) // qmllint disable type
    fillMode: Image.Stretch
    cache: false
}
