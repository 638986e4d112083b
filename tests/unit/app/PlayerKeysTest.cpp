#include "app/program/PlayerKeys.h"

#include "tests/unit/display/DisplayFixture.h"

#include <QKeyEvent>
#include <QWindow>

#include <optional>

using namespace std::chrono_literals;

namespace tarnwick {
namespace {

class PlayerKeysTest : public DisplayFixture {
protected:
    void SetUp() override {
        view->setCapabilities({.canSetVolume = true, .canSeek = true});
        keys.emplace(*source, *view);
        play(nowPlaying());
        setVolume(0.5);
    }

    void setVolume(double level) {
        source->setVolume(level);
        dispatcher.advance(300ms);
        sent.clear();
    }

    /// What was sent by a key, after which half a second passes.
    QStringList sentBy(const std::function<void()>& press) {
        sent.clear();
        press();
        dispatcher.runUntilIdle();
        QStringList result = sent;
        result.removeAll(scripts::nowPlaying()); // what is asked after a command
        dispatcher.advance(500ms);
        return result;
    }
    QStringList sentBy(int mediaKey) {
        return sentBy([&] {
            QKeyEvent press(QEvent::KeyPress, mediaKey, Qt::NoModifier);
            QCoreApplication::sendEvent(&window, &press);
        });
    }

    QWindow window;
    std::optional<PlayerKeys> keys;
};

TEST_F(PlayerKeysTest, MediaKeysActInEveryWindow) {
    struct Row {
        Qt::Key key;
        QString sends;
    };
    for (const Row& row :
         {Row{Qt::Key_MediaTogglePlayPause, scripts::playPause()},
          Row{Qt::Key_MediaPause, scripts::playPause()}, Row{Qt::Key_MediaPlay, {}},
          Row{Qt::Key_MediaStop, scripts::stop()}, Row{Qt::Key_MediaNext, scripts::nextTrack()},
          Row{Qt::Key_MediaPrevious, scripts::previousTrack()},
          Row{Qt::Key_VolumeUp, scripts::setVolume(0.55)}, Row{Qt::Key_VolumeDown, scripts::setVolume(0.5)},
          Row{Qt::Key_Space, {}}, Row{Qt::Key_Right, {}}}) {
        const QStringList expected = row.sends.isEmpty() ? QStringList() : QStringList(row.sends);
        EXPECT_EQ(sentBy(row.key), expected) << row.key;
    }
    play(nowPlaying({{12, text("paused")}}));
    EXPECT_EQ(sentBy(Qt::Key_MediaPlay).count(scripts::playPause()), 1);
    EXPECT_EQ(sentBy(Qt::Key_MediaPause).count(scripts::playPause()), 0);
}

TEST_F(PlayerKeysTest, MuteIsSilenceAndBack) {
    setVolume(0.35);
    EXPECT_THAT(sentBy(Qt::Key_VolumeMute), testing::Contains(scripts::setVolume(0)));
    EXPECT_TRUE(view->controls()->volumeScale()->isShown());
    EXPECT_THAT(sentBy(Qt::Key_VolumeMute), testing::Contains(scripts::setVolume(0.35)));
    EXPECT_EQ(source->volumeLevel(), 0.35);
    view->controls()->setCapabilities({.canSetVolume = false});
    dispatcher.advance(2s);
    EXPECT_THAT(sentBy(Qt::Key_VolumeUp), testing::IsEmpty());
    EXPECT_FALSE(view->controls()->volumeScale()->isShown()) << "there is nothing to tell";
}

TEST_F(PlayerKeysTest, KeysOfTheMainWindow) {
    const auto press = [this](QKeyCombination key) { return sentBy([&] { keys->press(key); }); };
    const double now = source->elapsedTime();
    EXPECT_THAT(press(Qt::Key_Space), testing::Contains(scripts::playPause()));
    EXPECT_THAT(press(Qt::Key_PageUp), testing::Contains(scripts::setVolume(0.55)));
    EXPECT_THAT(press(Qt::Key_PageDown), testing::Contains(scripts::setVolume(0.5)));
    play(nowPlaying({{14, D::real(now)}}));
    EXPECT_THAT(press(Qt::SHIFT | Qt::Key_Right), testing::Contains(scripts::setPosition(now + 10)));
    play(nowPlaying({{14, D::real(4)}}));
    EXPECT_THAT(press(Qt::SHIFT | Qt::Key_Left), testing::Contains(scripts::setPosition(0)));
    play(nowPlaying({{14, D::real(315)}}));
    EXPECT_THAT(press(Qt::SHIFT | Qt::Key_Right), testing::Contains(scripts::setPosition(318.5)));
    view->setCapabilities({.canSeek = false});
    EXPECT_THAT(press(Qt::SHIFT | Qt::Key_Left), testing::IsEmpty());
    EXPECT_THAT(press(Qt::CTRL | Qt::Key_Space), testing::IsEmpty());
}

} // namespace
} // namespace tarnwick
