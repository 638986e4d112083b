#include "display/pictures/CutPictureItem.h"
#include "tests/unit/display/SceneFixture.h"
#include "tests/unit/display/TestCovers.h"

#include <random>

using namespace std::chrono_literals;

namespace tarnwick {
namespace {

/// Whatever comes while something still moves, the display ends as if it had been opened just now.
class SceneInterleaving : public SceneFixture, public testing::WithParamInterface<unsigned> {
protected:
    int below(int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }

    static QByteArray cover(int number) {
        return encoded(testCover(number, 120).copy(0, 0, 120, number == 2 ? 90 : 120));
    }

    void playAlbum(int number, bool hasCover, const char* state = "playing") {
        const std::string name = "Album " + std::to_string(number);
        const std::string title = "Titolo " + std::to_string(below(3)) + " dell'" + name;
        play(nowPlaying({{1, text(title.c_str())},
                         {3, text(name.c_str())},
                         {6, D::integer(1 + below(2))},
                         {10, text(below(2) ? "Japan, Italy" : "")},
                         {11, hasCover ? D::data(cover(number)) : D::missing()},
                         {12, text(state)}}));
    }

    void doAnything() {
        const int album = below(4);
        switch (below(13)) {
        case 0:
        case 1:
        case 2:
            return playAlbum(album, true);
        case 3:
            playAlbum(album, false); // its cover comes late
            advance(20ms * below(30));
            return playAlbum(album, true);
        case 4:
            return playAlbum(album, below(4) > 0, "paused");
        case 5: // the player vanishes
            answer(scripts::nowPlaying(), [] { return failure(); });
            source->fetchNowPlaying();
            return dispatcher.runUntilIdle();
        case 6:
        case 7:
            return view->tapCover();
        case 8:
            return renderer->resize(below(2) ? QSize(1200, 600) : QSize(640, 400));
        case 9:
            settings.setEnableCDAnimation(below(2));
            return settings.setEnableFlip(below(2));
        case 10:
            return settings.setUseGeneratedCD(below(2));
        case 11:
            return view->setReducedMotion(below(2));
        default:
            window.toggleFullScreen();
            renderer->resize(window.isFullScreen() ? QSize(1280, 720) : QSize(1200, 600));
        }
    }

    std::mt19937 random{GetParam()};
    windows::FakeWindow& window = windows.addWindow();
};

TEST_P(SceneInterleaving, EndsAsIfItHadBeenOpenedJustNow) {
    answer(scripts::tracksByDisc(), discs({{"Titolo 0 dell'Album 0", "Titolo 1 dell'Album 0"}}));
    settings.setShowTrackFlags(true);
    playAlbum(0, true);
    open();
    for (int action = 0; action < 12; ++action) {
        doAnything();
        renderer->render();
        advance(20ms * below(50));
    }
    settle();
    EXPECT_TRUE(view->isCDVisible());
    EXPECT_EQ(source->previousAlbumTitle().value_or(QString()),
              source->currentAlbumName().value_or(QString()));

    const std::unique_ptr<SceneRenderer> before = std::move(renderer);
    renderer = std::make_unique<SceneRenderer>(DisplayScene::create(engine, *view), before->window().size());
    settle();
    const QImage anew = renderer->render();
    const QImage ended = before->render();
    if (ended != anew) {
        ended.save(QStringLiteral("interleaving-%1-ended.png").arg(GetParam()));
        anew.save(QStringLiteral("interleaving-%1-anew.png").arg(GetParam()));
        FAIL() << "it is not as in a display that was opened just now";
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, SceneInterleaving, testing::Range(0U, 12U));

} // namespace
} // namespace tarnwick
