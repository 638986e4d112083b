#include "controls/bar/VolumeScale.h"

#include <QPointer>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarnwick {

namespace {

/// A notch of a common wheel.
constexpr double eighthsOfNotch = 120;

/// The nearest level of whole per cents. As the player is told the per cents below a level, it is not less
/// than them by a rounding either, or steps up and down would not meet.
double wholePerCents(double level) {
    const double perCents = std::round(std::clamp(level, 0.0, 1.0) * 100);
    double result = perCents / 100;
    while (std::floor(result * 100) < perCents)
        result = std::nextafter(result, 2);
    return result;
}

} // namespace

VolumeScale::VolumeScale(dispatch::Dispatcher& dispatcher, MusicSource& source)
    : m_dispatcher(dispatcher), m_source(source) {
    connect(&source, &MusicSource::volumeLevelChanged, this, &VolumeScale::levelChanged);
}

VolumeScale::~VolumeScale() { m_end.cancel(); }

void VolumeScale::change(double by) { slideTo(wholePerCents(level() + by)); }

void VolumeScale::turn(double eighths) { change(eighths / eighthsOfNotch * step); }

void VolumeScale::slideTo(double wanted) {
    if (!m_isAvailable)
        return;
    if (const double bounded = std::clamp(wanted, 0.0, 1.0); bounded != level())
        m_source.setVolume(bounded);
    show();
}

void VolumeScale::toggleMute() {
    if (level() > 0)
        m_beforeSilence = level();
    slideTo(level() > 0 ? 0 : m_beforeSilence);
}

void VolumeScale::show() {
    if (!std::exchange(m_isShown, true))
        Q_EMIT isShownChanged();
    m_end.cancel();
    m_end = m_dispatcher.asyncAfter(m_dispatcher.mainQueue(), stayTime, [self = QPointer(this)] {
        if (self && std::exchange(self->m_isShown, false))
            Q_EMIT self->isShownChanged();
    });
}

} // namespace tarnwick
