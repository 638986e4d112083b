#pragma once

#include "controls/bar/TrackControls.h"
#include "tests/unit/music/MusicFixture.h"

namespace tarnwick {

/// The bar's logic on virtual time. What the display would do is only noted, in `called`.
class ControlsFixture : public MusicFixture {
protected:
    ControlsFixture() { MusicSource::setShared(source.get()); }

    std::function<void()> note(const QString& what) {
        return [this, what] { called.append(what); };
    }

    QStringList called;
    std::unique_ptr<TrackControls> controls = std::make_unique<TrackControls>(TrackControls::Parts{
        dispatcher, *source, note(QStringLiteral("previous")), note(QStringLiteral("playPause")),
        note(QStringLiteral("next")), note(QStringLiteral("shuffle")), note(QStringLiteral("preferences"))});
};

} // namespace tarnwick
