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

    /// How far the second one has come, and the first one has gone; 0 or 1 at rest.
    property real change: showsSecond ? 1 : 0
    Behavior on change {
        enabled: root.hasShown && root.isGentle
        NumberAnimation { id: changing; duration: Theme.fadeDuration; easing.type: Easing.InOutQuad }
    }
    /// How much of either is seen.
    property real presence: isShown ? 1 : 0
    Behavior on presence {
        enabled: root.hasShown && root.isGentle
        NumberAnimation { duration: Theme.fadeDuration; easing.type: Easing.InOutQuad }
    }

    // While one veil goes over into another, the next one waits; of several the last one comes.
    readonly property bool isChanging: changing.running
    property bool isWaiting: false

    onVeilChanged: take()
    Component.onCompleted: take()
    onIsChangingChanged: if (!isChanging && isWaiting) Qt.callLater(take) // qmllint disable type

    function take() {
        isWaiting = isChanging && isGentle; // what lies below is another: it is not waited for
        if (isWaiting)
            return;
        const next = showsSecond ? first : second;
        next.veil = veil;
        showsSecond = !showsSecond;
        hasShown = hasShown || veil.isPresent;
    }

    /// What is left of a veil whose largest alpha is `alpha` under another that has come to `share`, so that
    /// two equal ones are at every moment as strong as one.
    function remaining(alpha: real, share: real) : real {
        return alpha > 0 ? (1 - (1 - alpha) / (1 - alpha * share)) / alpha : 1 - share;
    }

    component Layer: VeilLayer {
        required property real share
        required property bool isComing

        visible: opacity > 0
        opacity: root.presence * (isComing ? share : root.remaining(strongest, 1 - share))
    }

    Layer { id: first; share: 1 - root.change; isComing: !root.showsSecond }
    Layer { id: second; share: root.change; isComing: root.showsSecond }
}
