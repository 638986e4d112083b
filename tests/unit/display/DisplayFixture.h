#pragma once

#include "display/state/TarnwickView.h"
#include "music/Scripts.h"
#include "platform/defaults/MemoryDefaults.h"
#include "tests/fakes/FakeWindows.h"
#include "tests/unit/music/MusicFixture.h"

namespace tarnwick {

/// Counts what is held; answers at once.
class CountingPower : public power::PowerManager {
public:
    void preventUserIdleDisplaySleep(const QString& why, CreatedHandler created) override {
        reason = why;
        ++held;
        created(1);
    }
    void release(Assertion) override { --held; }

    int held = 0;
    QString reason;
};

/// The display's state on virtual time, over a source whose scripts are answered by a table.
class DisplayFixture : public MusicFixture {
protected:
    /// A track of an album; its title is the album's unless it has one of its own.
    static D album(const char* name, const char* title = nullptr) {
        return nowPlaying({{1, text(title ? title : name)}, {3, text(name)}});
    }

    /// Music plays this from now on, and the display has heard of it; no time passes.
    void play(const D& reply) {
        answer(scripts::nowPlaying(), reply);
        source->fetchNowPlaying();
        dispatcher.runUntilIdle();
    }

    std::unique_ptr<TarnwickView> makeView() {
        return std::make_unique<TarnwickView>(TarnwickView::Parts{
            .dispatcher = dispatcher,
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
            }});
    }

    CountingPower power;
    windows::FakeWindows windows;
    defaults::MemoryDefaults defaults;
    Settings settings{{dispatcher, defaults, windows}};
    BackgroundManager background{dispatcher, seededRandomIndex(1)};
    QDateTime wallClock{QDate(2026, 11, 22), QTime(21, 47, 5), Qt::UTC};
    std::unique_ptr<TarnwickView> view = makeView();
};

} // namespace tarnwick
