import QtQuick
import Tarnwick.Controls
import Tarnwick.Display

// A strip at the right edge where a finger that goes up or down changes the volume.
Item {
    id: strip

    required property VolumeScale volume

    /// The way from silence to the loudest.
    readonly property real travel: 0.6 * height

    DragHandler {
        id: drag

        property real from

        target: null
        acceptedDevices: PointerDevice.TouchScreen
        xAxis.enabled: false
        onActiveChanged: if (active) from = strip.volume.level
        onActiveTranslationChanged: if (active) strip.volume.slideTo(from - activeTranslation.y / strip.travel)
    }
}
