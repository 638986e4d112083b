#include "music/Scripts.h"
#include "tests/unit/controls/ControlsFixture.h"

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace tarnwick {
namespace {

using TrackControlsTest = ControlsFixture;

TEST_F(TrackControlsTest, OneCommandInEachFifthOfASecondWhicheverButtonItComesFrom) {
    controls->press("next");
    dispatcher.advance(100ms);
    controls->press("next");
    controls->press("previous");
    dispatcher.advance(99ms);
    controls->press("shuffle");
    EXPECT_THAT(called, ElementsAre("next"));
    dispatcher.advance(1ms);
    controls->press("shuffle");
    controls->press("preferences");
    controls->press("preferences");
    EXPECT_THAT(called, ElementsAre("next", "shuffle", "preferences", "preferences"))
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

TEST_F(TrackControlsTest, NothingKeepsTheBarForEver) {
    controls->enterBar();
    controls->pointerMoved({100, 100});
    dispatcher.advance(9s);
    controls->pointerMoved({110, 100});
    dispatcher.advance(9s);
    EXPECT_TRUE(controls->showTrackControls());
    dispatcher.advance(1s);
    EXPECT_FALSE(controls->showTrackControls()) << "a pointer that rests";
    controls->pointerMoved({120, 100});
    EXPECT_TRUE(controls->showTrackControls()) << "and moves again";
    controls->leaveBar();
    dispatcher.advance(1s);
    ASSERT_FALSE(controls->showTrackControls());

    QObject::connect(&*controls, &TrackControls::focusRested, &*controls,
                     [&] { controls->setFocused(false); });
    controls->setFocused(true);
    dispatcher.advance(9s);
    controls->press("preferences");
    dispatcher.advance(9s);
    controls->useByKeys();
    dispatcher.advance(9s);
    EXPECT_TRUE(controls->showTrackControls());
    dispatcher.advance(2s);
    EXPECT_FALSE(controls->showTrackControls());
}

TEST_F(TrackControlsTest, ThePickerOpensAtOnceAndItsListComesLater) {
    answer(scripts::playlistNames(), texts({"Uno", "<b>Due</b>\n"}));
    controls->press("playlist");
    EXPECT_TRUE(controls->showPlaylistPicker());
    EXPECT_THAT(controls->playlists(), IsEmpty());
    EXPECT_EQ(sentCount(scripts::playlistNames()), 0) << "not on the main thread";
    dispatcher.runUntilIdle();
    EXPECT_THAT(controls->playlists(), ElementsAre("Uno", "<b>Due</b>\n"));
    controls->press("playlist");
    dispatcher.runUntilIdle();
    EXPECT_FALSE(controls->showPlaylistPicker());
    EXPECT_EQ(sentCount(scripts::playlistNames()), 2) << "closing fetches too";
    answer(scripts::playlistNames(), [] { return failure(); });
    controls->press("playlist");
    dispatcher.runUntilIdle();
    EXPECT_THAT(controls->playlists(), IsEmpty());
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
    players::Capabilities capabilities;
    capabilities.canPlay = capabilities.canGoNext = capabilities.hasPlaylists = true;
    controls->setCapabilities(capabilities);
    EXPECT_THAT(controls->dimmedButtons(), ElementsAre("previous", "shuffle"));
    controls->press("previous");
    EXPECT_THAT(called, ElementsAre("previous")) << "it still answers";
}

TEST_F(TrackControlsTest, WhatIsUnderWayMayOutliveTheBar) {
    controls->press("next");
    controls->press("playlist");
    controls->leaveBar();
    controls.reset();
    dispatcher.advance(5s);
}

} // namespace
} // namespace tarnwick
