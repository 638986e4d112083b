import QtQuick
import Tarnwick.Assets

/// A row of the standard look: as the dynamic one, but yellow on dark under the pointer.
FancyHoverRow {
    textColor: isHovering ? Theme.yellow : "white"
    plate.color: isHovering ? "#33000000" : "transparent"
}
