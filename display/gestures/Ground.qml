import QtQuick
import Tarnwick.Controls
import Tarnwick.Display

// What lies under everything: a finger's tap low on it calls up the bar, a double click fills the screen, and
// the wheel is the volume.
Item {
    id: ground

    required property Gestures gestures
    required property TrackControls controls

    TapHandler {
        acceptedDevices: PointerDevice.TouchScreen
        gesturePolicy: TapHandler.ReleaseWithinBounds
        grabPermissions: PointerHandler.ApprovesTakeOverByAnything // and takes from none
        onTapped: point => {
            if (ground.gestures.isStill(point.scenePressPosition, point.scenePosition))
                ground.gestures.callBar(point.position.y / ground.height);
        }
    }

    TapHandler {
        acceptedDevices: PointerDevice.AllDevices & ~PointerDevice.TouchScreen
        gesturePolicy: TapHandler.ReleaseWithinBounds
        grabPermissions: PointerHandler.ApprovesTakeOverByAnything // and takes from none
        onDoubleTapped: ground.gestures.toggleFullScreen()
    }

    WheelHandler {
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        onWheel: wheel => {
            if (!ground.controls.showPlaylistPicker)
                ground.controls.volumeScale.turn((wheel.inverted ? -1 : 1) * wheel.angleDelta.y);
        }
    }
}
