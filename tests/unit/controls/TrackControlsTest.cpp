#include "music/Scripts.h"
#include "tests/unit/controls/ControlsFixture.h"

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace tarnwick {
namespace {

using TrackControlsTest = ControlsFixture;

TEST_F(TrackControlsTest, TheScaleFollowsTheWidthBetweenItsLimits) {
    const std::pair<double, double> rows[] = {{1200, 1},  {3000, 1.5}, {1800, 1.5},
                                              {400, 0.5}, {600, 0.5},  {900, 0.75}};
    for (const auto& [width, scale] : rows) {
        controls->setWindowWidth(width);
        EXPECT_EQ(controls->sizeScale(), scale) << width;
    }
}

TEST_F(TrackControlsTest, OneCommandInEachFifthOfASecondWhicheverButtonItComesFrom) {
    controls->press(QStringLiteral("next"));
    dispatcher.advance(100ms);
    controls->press(QStringLiteral("next"));
    controls->press(QStringLiteral("previous"));
    dispatcher.advance(99ms);
    controls->press(QStringLiteral("shuffle"));
    EXPECT_THAT(called, ElementsAre(QStringLiteral("next")));
    dispatcher.advance(1ms);
    controls->press(QStringLiteral("shuffle"));
    controls->press(QStringLiteral("preferences"));
    controls->press(QStringLiteral("preferences"));
    EXPECT_THAT(called, ElementsAre(QStringLiteral("next"), QStringLiteral("shuffle"),
                                    QStringLiteral("preferences"), QStringLiteral("preferences")))
        << "what opens something is not guarded";
}

TEST_F(TrackControlsTest, HidesASecondAfterThePointerHasLeftUnlessItComesBack) {
    controls->enterBar();
    EXPECT_TRUE(controls->showTrackControls() && controls->isHovered());
    controls->leaveBar();
    dispatcher.advance(999ms);
    EXPECT_TRUE(controls->showTrackControls() && !controls->isHovered());
    controls->enterBar();
    dispatcher.advance(5s);
    EXPECT_TRUE(controls->showTrackControls());
    controls->leaveBar();
    dispatcher.advance(500ms);
    controls->leaveBar(); // begins anew
    dispatcher.advance(999ms);
    EXPECT_TRUE(controls->showTrackControls());
    dispatcher.advance(1ms);
    EXPECT_FALSE(controls->showTrackControls());
}

TEST_F(TrackControlsTest, TheKeyboardsFocusShowsItAndKeepsItShown) {
    controls->setFocused(true);
    controls->enterBar();
    controls->leaveBar();
    dispatcher.advance(5s);
    EXPECT_TRUE(controls->showTrackControls());
    controls->setFocused(false);
    dispatcher.advance(1s);
    EXPECT_FALSE(controls->showTrackControls());
}

TEST_F(TrackControlsTest, ThePickerOpensAtOnceAndItsListComesLater) {
    answer(scripts::playlistNames(), texts({"Uno", "<b>Due</b>\n"}));
    controls->press(QStringLiteral("playlist"));
    EXPECT_TRUE(controls->showPlaylistPicker());
    EXPECT_THAT(controls->playlists(), IsEmpty());
    EXPECT_EQ(sentCount(scripts::playlistNames()), 0) << "not on the main thread";
    dispatcher.runUntilIdle();
    EXPECT_THAT(controls->playlists(), ElementsAre(QStringLiteral("Uno"), QStringLiteral("<b>Due</b>\n")));
    controls->press(QStringLiteral("playlist"));
    dispatcher.runUntilIdle();
    EXPECT_FALSE(controls->showPlaylistPicker());
    EXPECT_EQ(sentCount(scripts::playlistNames()), 2) << "closing fetches too";
    answer(scripts::playlistNames(), [] { return failure(); });
    controls->press(QStringLiteral("playlist"));
    dispatcher.runUntilIdle();
    EXPECT_THAT(controls->playlists(), IsEmpty());
}

TEST_F(TrackControlsTest, ChoosingPlaysThatPlaylistAndCloses) {
    answer(scripts::playlistNames(), texts({"Uno", "Due"}));
    controls->setShowPlaylistPicker(true);
    controls->choosePlaylist(QStringLiteral("Due"));
    EXPECT_FALSE(controls->showPlaylistPicker());
    EXPECT_EQ(sentCount(scripts::playPlaylist(QStringLiteral("Due"))), 1);
}

TEST_F(TrackControlsTest, TheVolumeStaysInItsRange) {
    for (const auto& [asked, level] : {std::pair(-0.1, 0.0), std::pair(0.25, 0.25), std::pair(1.7, 1.0)}) {
        controls->setVolume(asked);
        dispatcher.runUntilIdle();
        EXPECT_EQ(sentCount(scripts::setVolume(level)), 1) << asked;
        EXPECT_EQ(controls->volumeLevel(), level);
    }
}

TEST_F(TrackControlsTest, DimsWhatThePlayerCannotDo) {
    musicapp::Capabilities capabilities;
    capabilities.canPlay = capabilities.canGoNext = capabilities.hasPlaylists = true;
    controls->setCapabilities(capabilities);
    EXPECT_THAT(controls->dimmedButtons(),
                ElementsAre(QStringLiteral("previous"), QStringLiteral("shuffle")));
    controls->press(QStringLiteral("previous"));
    EXPECT_THAT(called, ElementsAre(QStringLiteral("previous"))) << "it still answers";
}

TEST_F(TrackControlsTest, AMessageStandsForFourSecondsUnlessAnotherReplacesIt) {
    controls->showMessage(QStringLiteral("Traccia non trovata"));
    dispatcher.advance(3s);
    controls->showMessage(QStringLiteral("Un'altra"));
    dispatcher.advance(3999ms);
    EXPECT_EQ(controls->message(), QStringLiteral("Un'altra"));
    dispatcher.advance(1ms);
    EXPECT_EQ(controls->message(), QString());
}

TEST_F(TrackControlsTest, WhatIsUnderWayMayOutliveTheBar) {
    controls->press(QStringLiteral("next"));
    controls->press(QStringLiteral("playlist"));
    controls->leaveBar();
    controls.reset();
    dispatcher.advance(5s);
}

} // namespace
} // namespace tarnwick
