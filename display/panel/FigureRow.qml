pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick.Canvas
import Tarnwick.Display

// A text of figures and colons in its place on the panel.
TypeItem {
    required property panelFigures figures

    inCells: true
    font: figures.font
    raise: figures.raise
    x: figures.box.x
    y: figures.baseline - baselineOffset
    Accessible.ignored: true // it changes at every second
}
