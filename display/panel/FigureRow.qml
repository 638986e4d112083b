pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick.Display

// A text of figures and colons in its place on the panel.
FigureCells {
    required property panelFigures figures

    font: figures.font
    cell: figures.cell
    colon: figures.colon
    raise: figures.raise
    x: figures.box.x
    y: figures.baseline
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
