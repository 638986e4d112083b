#include "display/gestures/Gestures.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarnwick {

namespace {

constexpr double lowerQuarter = 0.75;

/// How far a hand moves that means to stay, pixels.
constexpr double tremor = 16;

/// How far a finger goes with a swipe that is meant, as a share of the cover, or how fast, in points a
/// second.
constexpr double farEnough = 0.30;
constexpr double fastEnough = 500;

/// A finger that has not moved for so long has no speed any more, ms.
constexpr double restTime = 80;

} // namespace

bool Gestures::isStill(const QPointF& pressed, const QPointF& released) {
    const QPointF way = released - pressed;
    return std::max(std::abs(way.x()), std::abs(way.y())) < tremor;
}

bool Gestures::callBar(double down) {
    if (down < lowerQuarter)
        return false;
    m_parts.controls.callUp();
    return true;
}

int Gestures::swipeCover(const QEventPoint& finger, double across, double rested, double point) {
    if (finger.state() != QEventPoint::Released)
        return 0;
    const double velocity = rested < restTime ? finger.velocity().x() / point : 0;
    const bool isFast = std::abs(velocity) >= fastEnough;
    if (!isFast && std::abs(across) < farEnough)
        return 0;
    const double way = isFast ? velocity : across;
    if (way * across <= 0)
        return 0; // it was taken back
    m_parts.controls.press(way < 0 ? QStringLiteral("next") : QStringLiteral("previous"));
    return way < 0 ? -1 : 1;
}

void Gestures::seekTo(double fraction) {
    if (m_canSeek)
        m_parts.musicSource.seek(fraction * m_parts.musicSource.trackDuration());
}

void Gestures::seekBy(double seconds) {
    if (m_canSeek)
        m_parts.musicSource.seek(m_parts.musicSource.elapsedTime() + seconds);
}

void Gestures::toggleFullScreen() {
    if (windows::Window* window = m_parts.windows.firstWindow())
        window->toggleFullScreen();
}

void Gestures::setCanSeek(bool can) {
    if (std::exchange(m_canSeek, can) != can)
        Q_EMIT canSeekChanged();
}

} // namespace tarnwick
