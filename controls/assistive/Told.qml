import QtQuick
import Tarnwick.Controls

/// What is told once, when it changes.
AnnouncementItem {
    width: 1 // what has no place is not told of
    height: 1
    Accessible.role: Accessible.Notification
    Accessible.name: text
}
