import QtQuick

// The application's picture over the whole window, which is let go of when it is no longer seen.
Image {
    source: visible && width > 0 && height > 0 ? "image://catalogue/applogo800" : ""
    sourceSize { width: width * Screen.devicePixelRatio; height: height * Screen.devicePixelRatio }
    fillMode: Image.Stretch
    cache: false
}
