import QtQuick
import Tarnwick.Display

// A tap on what lies on the display: a click, or a finger's, which calls up the bar where that stands. What has
// moved is none.
TapHandler {
    id: tap

    required property Gestures gestures

    /// What is tapped is a control, which has taps of every place.
    property bool isOfControl: false

    signal chosen

    gesturePolicy: TapHandler.ReleaseWithinBounds // else what lies below is tapped as well
    grabPermissions: PointerHandler.ApprovesTakeOverByAnything // and takes from none
    onTapped: point => {
        const mayCall = !isOfControl && point.device.type === PointerDevice.TouchScreen;
        const height = parent.Window.height;
        if (gestures.isStill(point.scenePressPosition, point.scenePosition)
                && !(mayCall && gestures.callBar(point.scenePosition.y / height)))
            chosen();
    }
}
