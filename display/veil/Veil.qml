pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick.Assets
import Tarnwick.Display

// A veil over its surface, which this item covers.
Item {
    id: root

    required property veilPicture veil
    required property bool isGentle ///< a new one comes over the old one, instead of taking its place at once
    property bool isShown: true

    property bool hasShown: false
    property bool showsSecond: false

    // While one veil goes over into another, the next one waits; of several the last one comes.
    readonly property bool isChanging: first.isFading || second.isFading
    property bool isWaiting: false

    onVeilChanged: take()
    Component.onCompleted: take()
    onIsChangingChanged: if (!isChanging && isWaiting) Qt.callLater(take) // qmllint disable type

    function take() {
        isWaiting = isChanging;
        if (isWaiting)
            return;
        const next = showsSecond ? first : second;
        next.veil = veil;
        showsSecond = !showsSecond;
        hasShown = hasShown || veil.isPresent;
    }

    component Layer: VeilLayer {
        required property bool isOn

        readonly property bool isFading: fade.running

        visible: opacity > 0
        opacity: isOn && root.isShown ? 1 : 0
        Behavior on opacity {
            enabled: root.hasShown && root.isGentle
            NumberAnimation {
                id: fade

                duration: Theme.fadeDuration
                easing.type: Easing.InOutQuad
            }
        }
    }

    Layer { id: first; isOn: !root.showsSecond }
    Layer { id: second; isOn: root.showsSecond }
}
