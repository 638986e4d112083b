import QtQuick
// Where the desktop has no chooser, Qt's own needs this, and crashes without it.
import Qt.labs.folderlistmodel
import QtQuick.Dialogs

// The desktop's file chooser, for fonts.
FileDialog {
    title: "Import Fonts"
    fileMode: FileDialog.OpenFiles
    nameFilters: ["Fonts (*.ttf *.otf *.TTF *.OTF)"]
    acceptLabel: "Import"
}
