#pragma once

#include "platform/dispatch/SystemDispatcher.h"
#include "platform/images/ImageStore.h"
#include "players/mpris/MprisMusic.h"
#include "tests/fakes/FakePlayer.h"
#include "tests/fakes/Files.h"
#include "tests/fakes/MusicProbe.h"
#include "tests/fakes/Pictures.h"
#include "tests/fakes/PrivateBus.h"

#include <QTemporaryDir>
#include <gmock/gmock.h>

namespace tarnwick {

using namespace std::chrono_literals;

inline const QVariantMap alba = metadata("Alba", "Nevia", "Lontano");

/// A picture of one colour as PNG, other bytes for every size and colour.
inline QByteArray picture(QRgb colour, int size = 32, int quality = -1) {
    return encoded(plainPicture(colour, {size, size}, QImage::Format_RGB32), "PNG", quality);
}

/// A bus of its own, a folder, and the MPRIS source looking at both.
struct MprisFixture : testing::Test {
    PrivateBus bus;
    QTemporaryDir folder;
    dispatch::SystemDispatcher dispatcher;
    images::ImageStore images{dispatcher};
    std::unique_ptr<players::MprisMusic> music;
    std::unique_ptr<MusicProbe> probe;
    std::unique_ptr<FakePlayer> player; ///< the one that `startWith` has made

    void start(players::MprisMusic::Options options = {}) {
        options.busAddress = bus.address();
        probe.reset(); // may look at the one before
        music = std::make_unique<players::MprisMusic>(options, dispatcher, images);
        probe = std::make_unique<MusicProbe>(*music);
        ASSERT_TRUE(music->waitUntilReady(5s));
    }

    /// The same, with a player that is there already.
    void startWith(const QVariantMap& metadata) {
        player = makePlayer("fake", playing(metadata));
        start();
    }

    void TearDown() override {
        probe.reset();
        const auto begin = std::chrono::steady_clock::now();
        music.reset();
        EXPECT_LT(std::chrono::steady_clock::now() - begin, 800ms) << "leaving must not wait for a player";
        player.reset(); // what it answers may look at what a test has
    }

    std::unique_ptr<FakePlayer> makePlayer(const QString& name, const QVariantMap& properties) {
        auto made = std::make_unique<FakePlayer>(bus.address(), name);
        made->put(properties);
        made->appear();
        return made;
    }

    QString write(const QString& name, const QByteArray& bytes) const {
        return writeFile(folder.filePath(name), bytes);
    }

    bool eventually(const std::function<bool()>& condition, std::chrono::milliseconds timeout = 3s) const {
        return probe->eventually(condition, timeout);
    }
    bool titleBecomes(const QString& title) const {
        return eventually([&] { return probe->title() == title; });
    }
    bool stateBecomes(const QString& state, std::chrono::milliseconds timeout = 3s) const {
        return eventually([&] { return probe->state() == state; }, timeout);
    }
    bool coverBecomes(const QByteArray& bytes) const {
        return eventually([&] { return probe->cover() == bytes; });
    }
};

} // namespace tarnwick
