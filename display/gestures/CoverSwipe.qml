import QtQuick
import Tarnwick.Display

// A finger that goes left or right over the front of the cover: the cover goes with it, and falls back, or goes
// its way and comes in again from the other side.
DragHandler {
    id: swipe

    required property Gestures gestures
    required property real coverWidth
    required property real point   ///< pixels of a point
    required property bool isStill ///< nothing shall move by itself

    /// What the cover is displaced by, and how much of it is seen.
    property real offset: 0
    property real shown: 1

    property real movedAt: 0 ///< ms
    property int way: 1      ///< where it goes: -1 to the left

    readonly property real away: 0.6 * coverWidth
    readonly property int backTime: 350
    readonly property int awayTime: 180

    target: null
    acceptedDevices: PointerDevice.TouchScreen
    yAxis.enabled: false

    onActiveTranslationChanged: {
        if (!active)
            return;
        offset = activeTranslation.x / point;
        movedAt = Date.now();
    }
    onActiveChanged: {
        if (active) {
            going.stop();
            back.stop();
            shown = 1;
        }
    }
    onGrabChanged: (transition, finger) => {
        if (transition === PointerDevice.UngrabExclusive)
            letGo(gestures.swipeCover(finger, offset / coverWidth, Date.now() - movedAt, point));
    }

    function letGo(direction: int): void {
        if (direction === 0 || isStill) {
            back.restart();
            return;
        }
        swipe.way = direction;
        going.restart();
    }

    readonly property NumberAnimation back: NumberAnimation {
        target: swipe
        property: "offset"
        to: 0
        duration: swipe.isStill ? 0 : swipe.backTime
        easing.type: Easing.OutCubic
    }

    readonly property SequentialAnimation going: SequentialAnimation {
        ParallelAnimation {
            NumberAnimation { target: swipe; property: "offset"; to: swipe.way * swipe.away; duration: swipe.awayTime; easing.type: Easing.InQuad }
            NumberAnimation { target: swipe; property: "shown"; to: 0; duration: swipe.awayTime; easing.type: Easing.InQuad }
        }
        PropertyAction { target: swipe; property: "offset"; value: -swipe.way * swipe.away }
        ParallelAnimation {
            NumberAnimation { target: swipe; property: "offset"; to: 0; duration: swipe.backTime; easing.type: Easing.OutCubic }
            NumberAnimation { target: swipe; property: "shown"; to: 1; duration: swipe.backTime; easing.type: Easing.OutCubic }
        }
    }
}
