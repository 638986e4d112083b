import QtQuick
import QtQuick.Dialogs

// The desktop's file chooser, for fonts.
FileDialog {
    title: "Import Fonts"
    fileMode: FileDialog.OpenFiles
    nameFilters: ["Fonts (*.ttf *.otf *.TTF *.OTF)"]
    acceptLabel: "Import"
}
