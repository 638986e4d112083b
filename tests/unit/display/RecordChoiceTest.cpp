// The choice of the record's picture, and that every order of events ends in the right one.

#include "tests/fakes/Files.h"
#include "tests/unit/display/DisplayFixture.h"
#include "visuals/GeneratedRecord.h"

#include <QTemporaryDir>

#include <random>

using namespace std::chrono_literals;

namespace tarnwick {
namespace {

class RecordChoiceTest : public DisplayFixture {
protected:
    /// The track lies in a folder with these files; each is a picture as many pixels wide as its name is
    /// long, or broken when its name begins with '!'.
    void lieIn(const QString& folder, const QStringList& files) {
        QDir(root.path()).mkpath(folder);
        for (const QString& name : files) {
            const bool isBroken = name.startsWith(u'!');
            writeFile(path(folder) + name.mid(isBroken ? 1 : 0),
                      isBroken ? QByteArray("no picture") : png(static_cast<int>(name.size())));
        }
        answer(scripts::trackLocation(), D::text(path(folder) + "song.flac"));
    }

    QString path(const QString& folder) const {
        return root.path() + QLatin1Char('/') + folder + QLatin1Char('/');
    }

    DiscImage named(const char* tag) const {
        return DiscImage::named(Catalogue::shared(), QLatin1String(tag));
    }

    /// The picture that this file of a folder is.
    std::optional<images::Image> pictureOf(const char* name) const {
        return store->decode(png(static_cast<int>(qstrlen(name))));
    }

    QTemporaryDir root;
};

struct FolderCase {
    QStringList files;
    int disc;
    const char* shown; ///< null: none of the files
};

TEST_F(RecordChoiceTest, TheFirstFileThatIsThereIsTaken) {
    const FolderCase cases[] = {
        {{"cassette.png", "cd.png"}, 0, "cassette.png"},
        {{"cd2.png", "cd.png", "vinyl.png"}, 2, "cd2.png"},
        {{"cd2.png", "vinyl.png"}, 1, "vinyl.png"},
        {{"cd0.png", "cd.png"}, 0, "cd.png"},
        {{"front.png"}, 1, nullptr},
    };
    int number = 0;
    for (const FolderCase& row : cases) {
        SCOPED_TRACE(row.files.join(u' ').toStdString());
        lieIn(QString::number(++number), row.files);
        answer(scripts::discNumber(), D::integer(row.disc));
        view->refreshRecordImage(true);
        dispatcher.runUntilIdle();
        const bool isCassette = row.shown && QByteArray(row.shown) == "cassette.png";
        const auto shown = row.shown ? pictureOf(row.shown) : std::nullopt;
        EXPECT_EQ(view->cassetteImage(), isCassette ? Picture(shown) : Picture());
        if (!isCassette) {
            EXPECT_EQ(view->rotatingCDManager().cdImage(),
                      shown ? DiscImage::of(*shown) : named("cddefault"));
        }
    }
}

TEST_F(RecordChoiceTest, ABrokenFileEndsTheSearch) {
    lieIn("a", {"!cd.png", "vinyl.png"});
    settings.setDefaultCDImageChoice("33Vinyl");
    view->refreshRecordImage(true);
    dispatcher.runUntilIdle();
    EXPECT_TRUE(view->cdImage().isNull());
    EXPECT_EQ(view->rotatingCDManager().cdImage(), named("cddefault")) << "the record's own last resort";
}

TEST_F(RecordChoiceTest, PreferencesChooseWhereNoFileDoes) {
    play(nowPlaying({{11, D::data(png(8))}}));
    const auto cover = *source->currentAlbumArtwork();
    const auto printed = [&](const QString& tag) {
        return makeGeneratedRecord(Catalogue::shared(), cover, tag, {300, 30, 5}, [](const QString&) {});
    };
    settings.setDefaultCDImageChoice("45Vinyl");
    EXPECT_EQ(view->cdImage(), named("cddefault")) << "not before 0.2 s";
    dispatcher.advance(200ms);
    EXPECT_EQ(view->cdImage(), named("45Vinyl"));
    settings.setUseGeneratedCD(true);
    EXPECT_EQ(view->cdImage(), printed("45Vinyl"));
    settings.setRandomRotationEnabled(true);
    EXPECT_EQ(view->cdImage(), printed("45Vinyl")) << "switching it on redraws nothing";
    view->refreshRecordImage(true);
    const DiscImage drawn = view->currentRandomImage();
    EXPECT_EQ(view->cdImage(), printed(drawn.name()));
    settings.setUseGeneratedCD(false);
    EXPECT_EQ(view->cdImage(), drawn) << "kept unless it is forced";
    settings.setRandomRotationEnabled(false);
    EXPECT_EQ(view->cdImage(), named("45Vinyl"));
}

TEST_F(RecordChoiceTest, AnOvertakenLookIntoAFolderShowsNothingButIsStillForced) {
    settings.setRandomRotationEnabled(true);
    view->refreshRecordImage(true);
    const DiscImage before = view->currentRandomImage();
    lieIn("a", {"cd.png"});
    view->refreshRecordImage(true);
    lieIn("b", {});
    view->refreshRecordImage(false);
    dispatcher.runUntilIdle();
    EXPECT_EQ(view->cdImage(), view->currentRandomImage());
    EXPECT_NE(view->currentRandomImage(), before) << "with this seed another disc is drawn";
}

TEST_F(RecordChoiceTest, AnAlbumThatIsLeftAndFoundAgainAtOnceHasItsOwnRecord) {
    lieIn("a", {"cd.png"});
    play(album("Lontano", "Uno"));
    dispatcher.advance(2s);
    EXPECT_EQ(view->cdImage(), DiscImage::of(*pictureOf("cd.png")));
    lieIn("b", {"cassette.png"});
    play(album("Vicino", "Due"));
    dispatcher.advance(300ms); // before the album is written down
    lieIn("a", {});
    play(album("Lontano", "Tre"));
    dispatcher.advance(6s);
    EXPECT_EQ(view->cdImage(), DiscImage::of(*pictureOf("cd.png")));
    EXPECT_EQ(view->cassetteImage(), Picture());
}

/// What happens to a display in a few seconds, and what it must show when all has come to rest.
class Interleaving : public RecordChoiceTest, public testing::WithParamInterface<unsigned> {};

TEST_P(Interleaving, EndsInTheRightState) {
    std::mt19937 random(GetParam());
    const auto below = [&](int bound) { return static_cast<int>(random() % static_cast<unsigned>(bound)); };
    lieIn("with", {"cd.png", "cd2.png"});
    lieIn("tape", {"cassette.png"});
    const char* const albums[] = {"Uno", "Due", "Tre"};
    const char* const folders[] = {"with", "tape", ""};
    int playing = -1, disc = 1;
    view->appear();
    for (int event = 0; event < 25; ++event) {
        switch (below(7)) {
        case 0:
        case 1:
        case 2: { // another track, now and then with a cover that comes late
            playing = below(3);
            disc = 1 + below(2);
            const QByteArray title = QByteArray::number(event);
            if (*folders[playing] == '\0')
                answer(scripts::trackLocation(), text(""));
            else
                answer(scripts::trackLocation(),
                       D::text(path(QLatin1String(folders[playing])) + "song.flac"));
            answer(scripts::discNumber(), D::integer(disc));
            const auto track = [&](const D& cover) {
                return nowPlaying({{1, text(title.constData())},
                                   {3, text(albums[playing])},
                                   {6, D::integer(disc)},
                                   {11, cover}});
            };
            if (below(3) == 0) {
                play(track(D::missing()));
                dispatcher.advance(std::chrono::milliseconds(below(1200)));
            }
            play(track(D::data(png(10 + playing))));
            break;
        }
        case 3: // the player vanishes
            answer(scripts::nowPlaying(), [] { return failure(); });
            answer(scripts::trackLocation(), text(""));
            answer(scripts::discNumber(), D::missing());
            playing = -1;
            source->fetchNowPlaying();
            break;
        case 4:
            settings.setUseGeneratedCD(!settings.useGeneratedCD());
            break;
        case 5:
            settings.setDefaultCDImageChoice(below(2) ? "33Vinyl" : "45Vinyl");
            settings.setEnableCDAnimation(below(3) != 0);
            break;
        default:
            view->tapCover();
            break;
        }
        dispatcher.advance(std::chrono::milliseconds(below(900)));
    }
    dispatcher.advance(6s);
    EXPECT_TRUE(view->isCDVisible());
    EXPECT_EQ(std::fmod(view->rotationAngle(), 360), 0);
    EXPECT_EQ(view->artwork(), Picture(source->currentAlbumArtwork()));
    EXPECT_EQ(source->previousAlbumTitle().value_or(QString()),
              source->currentAlbumName().value_or(QString()));
    if (playing == 1) {
        EXPECT_EQ(view->cassetteImage(), Picture(pictureOf("cassette.png")));
        return;
    }
    EXPECT_EQ(view->cassetteImage(), Picture());
    DiscImage expected = named(qPrintable(settings.defaultCDImageChoice()));
    if (playing == 0)
        expected = DiscImage::of(*pictureOf(disc == 2 ? "cd2.png" : "cd.png"));
    else if (settings.useGeneratedCD() && source->currentAlbumArtwork())
        expected = makeGeneratedRecord(Catalogue::shared(), *source->currentAlbumArtwork(),
                                       settings.defaultCDImageChoice(), {300, 30, 5}, [](const QString&) {});
    EXPECT_EQ(view->rotatingCDManager().cdImage(), expected);
}

INSTANTIATE_TEST_SUITE_P(Seeds, Interleaving, testing::Range(1u, 201u));

} // namespace
} // namespace tarnwick
