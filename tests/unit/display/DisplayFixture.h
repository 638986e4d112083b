#pragma once

#include "display/state/TarnwickView.h"
#include "platform/defaults/MemoryDefaults.h"
#include "tests/fakes/CountingPower.h"
#include "tests/fakes/FakeWindows.h"
#include "tests/unit/music/MusicFixture.h"

namespace tarnwick {

/// The display's state on virtual time, over a source whose scripts are answered by a table.
class DisplayFixture : public MusicFixture {
protected:
    /// A track of an album; its title is the album's unless it has one of its own.
    static D album(const char* name, const char* title = nullptr) {
        return nowPlaying({{1, text(title ? title : name)}, {3, text(name)}});
    }

    /// Switches on every line of the panel that can be switched.
    void showEveryLine() {
        for (const auto show :
             {&Settings::setShowGenre, &Settings::setShowBitRate, &Settings::setShowFileSize,
              &Settings::setShowSampleRate, &Settings::setShowDateAndTime, &Settings::setShowTrackComments})
            (settings.*show)(true);
    }

    /// What a view is made of, for a test to change.
    TarnwickView::Parts parts() {
        return {.dispatcher = dispatcher,
                .musicSource = *source,
                .settings = settings,
                .backgroundManager = background,
                .windows = windows,
                .images = *store,
                .power = &power,
                .randomIndex = seededRandomIndex(1),
                .wallClock = [this] {
                    return wallClock.addMSecs(
                        std::chrono::duration_cast<std::chrono::milliseconds>(dispatcher.now()).count());
                }};
    }

    CountingPower power;
    windows::FakeWindows windows;
    defaults::MemoryDefaults defaults;
    Settings settings{{dispatcher, defaults, windows}};
    BackgroundManager background{dispatcher, seededRandomIndex(1)};
    QDateTime wallClock{QDate(2026, 11, 22), QTime(21, 47, 5), Qt::UTC};
    std::unique_ptr<TarnwickView> view = std::make_unique<TarnwickView>(parts());
};

} // namespace tarnwick
