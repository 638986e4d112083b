#pragma once

#include "platform/dispatch/SystemDispatcher.h"
#include "platform/images/ImageStore.h"
#include "platform/musicapp/mpris/MprisMusic.h"
#include "tests/fakes/FakePlayer.h"
#include "tests/fakes/MusicProbe.h"
#include "tests/fakes/PrivateBus.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QTemporaryDir>
#include <gmock/gmock.h>

namespace tarnwick {

using namespace std::chrono_literals;

/// A picture of one colour as PNG, other bytes for every size and colour.
inline QByteArray picture(QRgb colour, int size = 32) {
    QImage image(size, size, QImage::Format_RGB32);
    image.fill(colour);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "PNG");
    return bytes;
}

/// A bus of its own, a folder, and the MPRIS source looking at both.
struct MprisFixture : testing::Test {
    PrivateBus bus;
    QTemporaryDir folder;
    dispatch::SystemDispatcher dispatcher;
    images::ImageStore images{dispatcher};
    std::unique_ptr<musicapp::MprisMusic> music;
    std::unique_ptr<MusicProbe> probe;

    void start(musicapp::MprisMusic::Options options = {}) {
        options.busAddress = bus.address();
        music = std::make_unique<musicapp::MprisMusic>(options, dispatcher, images);
        probe = std::make_unique<MusicProbe>(*music);
        ASSERT_TRUE(music->waitUntilReady(5s));
    }

    void TearDown() override {
        probe.reset();
        const auto begin = std::chrono::steady_clock::now();
        music.reset();
        EXPECT_LT(std::chrono::steady_clock::now() - begin, 800ms) << "leaving must not wait for a player";
    }

    std::unique_ptr<FakePlayer> makePlayer(const QString& name, const QVariantMap& properties) {
        auto player = std::make_unique<FakePlayer>(bus.address(), name);
        player->put(properties);
        player->appear();
        return player;
    }

    QString write(const QString& name, const QByteArray& bytes) const {
        const QString path = folder.filePath(name);
        EXPECT_TRUE(QDir().mkpath(QFileInfo(path).path()));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return path;
    }

    bool titleBecomes(const QString& title) {
        return probe->eventually([&] { return probe->title() == title; });
    }
};

} // namespace tarnwick
