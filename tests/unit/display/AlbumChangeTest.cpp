#include "tests/fakes/Files.h"
#include "tests/unit/display/LegibilityFixture.h"
#include "tests/unit/display/TestCovers.h"

#include <QDir>
#include <QTemporaryDir>

#include <algorithm>
#include <cmath>

using namespace std::chrono_literals;

namespace tarnwick {
namespace {

constexpr int withoutCover = -1;

struct Change {
    int from = 0; ///< number of a cover
    int to = 0;
    BackgroundOption style = BackgroundOption::Gradient;
};

/// One album after another, frame by frame.
class AlbumChange : public LegibilityFixture {
protected:
    static constexpr auto frame = 16ms;
    static constexpr int margin = 2; // of 255

    D albumOf(int cover) {
        std::map<int, D> facts{
            {1, text(cover % 2 == 0 ? "Concerto per due violini, archi e continuo nella sala"
                                    : "Alba sul Carso")},
            {2, text("Orchestra da camera della laguna di Grado")},
            {3, text(("Album " + std::to_string(cover)).c_str())}};
        if (cover != withoutCover)
            facts.emplace(11, D::data(encoded(testCover(cover))));
        return nowPlaying(facts);
    }

    QImage nextFrame() {
        dispatcher.advance(frame);
        animations.step(frame.count());
        renderer->layOut();
        return pictureWithoutType();
    }

    /// Beside the cover and the record, where neither slides past.
    static bool isGround(QPoint at, const QSize& window) {
        const double radius = std::min(window.width() / 2, window.height()) / 2.0 + 2;
        const double up = at.y() - window.height() / 2.0;
        const double edge = std::abs(up) < radius ? std::sqrt(radius * radius - up * up) : 0;
        return at.x() > window.width() / 2.0 + edge;
    }

    /// The ground behind the lines, a point every few pixels.
    std::vector<QPoint> groundBehind(const std::vector<std::pair<QRectF, double>>& boxes,
                                     const QSize& window) {
        std::vector<QPoint> points;
        for (const auto& [box, ratio] : boxes) {
            for (int y = int(box.top()); y < int(box.bottom()); y += 5) {
                for (int x = int(box.left()); x < int(box.right()); x += 7) {
                    if (isGround({x, y}, window))
                        points.emplace_back(x, y);
                }
            }
        }
        return points;
    }

    static void expectMonotonic(const std::vector<QImage>& frames, QPoint at) {
        for (const auto channel : std::initializer_list<int (*)(QRgb)>{qRed, qGreen, qBlue}) {
            const int first = channel(frames.front().pixel(at));
            const int last = channel(frames.back().pixel(at));
            const int direction = last >= first ? 1 : -1;
            int furthest = first;
            for (size_t i = 0; i < frames.size(); ++i) {
                const int value = channel(frames[i].pixel(at));
                ASSERT_GE(direction * (value - furthest), -margin)
                    << "frame " << i << " at " << at.x() << ", " << at.y() << ": " << value << " after "
                    << furthest;
                ASSERT_LE(direction * (value - last), margin)
                    << "frame " << i << " at " << at.x() << ", " << at.y() << ": " << value
                    << " on the way to " << last;
                if (direction * (value - furthest) > 0)
                    furthest = value;
            }
        }
    }

    QSize size{1200, 600};
};

class AlbumPair : public AlbumChange, public testing::WithParamInterface<Change> {};

TEST_P(AlbumPair, NothingBlinksAndEveryLineStaysLegible) {
    settings.setBackgroundOption(GetParam().style);
    settings.setDefaultCDImageChoice(GetParam().from % 2 == 0 ? "33Vinyl" : "33WhiteBlured");
    showEveryLine();
    answer(scripts::tracksByDisc(), discs({{"Uno", "Due", "Tre"}}));
    answer(scripts::nowPlaying(), albumOf(GetParam().from));
    windows.addWindow();
    open(size);
    settle();
    auto boxes = panelBoxes();
    std::vector<QImage> frames{pictureWithoutType()};

    answer(scripts::nowPlaying(), albumOf(GetParam().to));
    source->fetchNowPlaying();
    Worst worst;
    for (auto time = 0ms; time < 5s; time += frame) {
        frames.push_back(nextFrame());
        for (const auto& [box, ratio] : panelBoxes()) {
            Worst found = worstOf(frames.back(), {{box, ratio - 0.2}});
            found.where += QStringLiteral(", %1 ms").arg(time.count());
            if (found.share < worst.share)
                worst = found;
        }
    }
    EXPECT_GE(worst.share, 1) << qPrintable(worst.where);
    for (const auto& box : panelBoxes())
        boxes.push_back(box);
    EXPECT_GT(groundBehind(boxes, size).size(), 500U);
    for (const QPoint at : groundBehind(boxes, size)) {
        expectMonotonic(frames, at);
        if (HasFatalFailure())
            return;
    }
}

INSTANTIATE_TEST_SUITE_P(Pairs, AlbumPair,
                         testing::Values(Change{1, 0}, Change{0, 1}, Change{6, 4}, Change{4, 6}, Change{2, 3},
                                         Change{3, 2}, Change{2, withoutCover}, Change{withoutCover, 3},
                                         Change{1, 3, BackgroundOption::Shapes},
                                         Change{3, 1, BackgroundOption::OneColor},
                                         Change{7, 5, BackgroundOption::DarkColor}));

/// Covers, discs in folders and colours of two albums, one after the other.
class AlbumInOneFrame : public AlbumChange {
protected:
    D albumIn(const char* folder, const QColor& cover, const QColor& disc) {
        const QString path = root.filePath(folder);
        QDir().mkpath(path);
        writeFile(path + "/cd.png", encoded(plainPicture(disc, QSize(300, 300), QImage::Format_RGB32)));
        answer(scripts::trackLocation(), D::text(path + "/song.flac"));
        return nowPlaying(
            {{1, text(folder)},
             {3, text(folder)},
             {11, D::data(encoded(plainPicture(cover, QSize(300, 300), QImage::Format_RGB32)))}});
    }

    QTemporaryDir root;
};

TEST_F(AlbumInOneFrame, CoverDiscAndColoursChangeTogether) {
    settings.setBackgroundOption(BackgroundOption::OneColor);
    settings.setEnableFlip(false);
    settings.setEnableCDAnimation(false);
    answer(scripts::nowPlaying(), albumIn("Rosso", QColor("#d02020"), QColor("#2020d0")));
    windows.addWindow();
    open(size);
    settle();
    const auto placesThatDiffer = [](const QImage& a, const QImage& b) {
        const QPoint cover(100, 300);
        const QPoint disc(700, 520);
        const QPoint ground(1180, 580);
        int differ = 0;
        for (const QPoint at : {cover, disc, ground})
            differ += a.pixel(at) != b.pixel(at);
        return differ;
    };
    const QImage before = pictureWithoutType();
    answer(scripts::nowPlaying(), albumIn("Verde", QColor("#20d020"), QColor("#d0d020")));
    source->fetchNowPlaying();
    QImage previous = before;
    for (auto time = 0ms; time < 1s; time += frame) {
        const QImage picture = nextFrame();
        const int differ = placesThatDiffer(previous, picture);
        EXPECT_TRUE(differ == 0 || differ == 3) << differ << " of three places at " << time.count() << " ms";
        previous = picture;
    }
    EXPECT_EQ(placesThatDiffer(before, previous), 3);
}

} // namespace
} // namespace tarnwick
