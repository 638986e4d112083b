// What is read from real files, which ffmpeg makes.

#include "players/tags/FileFacts.h"

#include "players/mpris/TrackDetails.h"
#include "players/tags/AlbumFolder.h"
#include "players/tags/TagCache.h"
#include "tests/fakes/Files.h"
#include "tests/fakes/Pictures.h"
#include "tests/fakes/RealPlayer.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <taglib/fileref.h>
#include <taglib/tag.h>

namespace tarnwick::players {
namespace {

const Tags tags{{"title", "Perché \"no\"?"}, {"artist", "Nevia"}, {"album", "Lontano"}, {"genre", "Jazz"},
                {"comment", "Italy"},        {"date", "2019"},    {"track", "4"},       {"disc", "2/3"}};

TEST(FileFacts, EveryFormatIsRead) {
    const struct {
        const char* suffix;
        const char* codec;
        const char* kind;
        bool hasDisc = true;
    } formats[] = {{"flac", "", "FLAC audio file"},
                   {"mp3", "", "MPEG audio file"},
                   {"m4a", "aac", "AAC audio file"},
                   {"m4a", "alac", "Apple Lossless audio file"},
                   {"ogg", "libvorbis", "Ogg Vorbis audio file"},
                   {"opus", "", "Opus audio file"},
                   {"wav", "", "WAV audio file", false},
                   {"aiff", "", "AIFF audio file"},
                   {"wv", "", "WavPack audio file"}};
    QTemporaryDir folder;
    for (const auto& format : formats) {
        SCOPED_TRACE(format.kind);
        const QString path = folder.filePath(QStringLiteral("suono è.") + format.suffix);
        ASSERT_TRUE(makeSound(path, tags, 2, format.codec));
        const auto facts = TagCache().read(path);
        ASSERT_TRUE(facts);
        EXPECT_EQ(facts->kind, format.kind);
        EXPECT_EQ(facts->name, "Perché \"no\"?");
        EXPECT_EQ(facts->artist, "Nevia");
        EXPECT_EQ(facts->album, "Lontano");
        EXPECT_EQ(facts->trackNumber, 4);
        EXPECT_EQ(facts->year, 2019);
        EXPECT_EQ(facts->discNumber, format.hasDisc ? 2 : 0);
        EXPECT_EQ(facts->discCount, format.hasDisc ? 3 : 0);
        EXPECT_NEAR(facts->duration, 2, 0.2);
        EXPECT_GT(facts->sampleRate, 20000);
        EXPECT_GT(facts->bitRate, 0);
        EXPECT_EQ(facts->size, QFileInfo(path).size());
    }
}

/// A number as it stands in a file, the lowest byte first.
QByteArray number(quint64 value, int bytes) {
    QByteArray result;
    for (int i = 0; i < bytes; ++i)
        result.append(static_cast<char>(value >> (8 * i)));
    return result;
}

// Three seconds of each format that ffmpeg cannot write with a tag that others read: nothing but headers.

QByteArray monkeysAudio() {
    return "MAC " + number(3990, 4) + number(52, 4) + number(24, 4) + QByteArray(36, '\0') + number(2000, 2) +
           number(0, 2) + number(44100, 4) + number(44100, 4) + number(3, 4) + number(16, 2) + number(2, 2) +
           number(44100, 4) + QByteArray(500, '\0');
}

QByteArray musepack() { // its frames have 1152 samples
    return "MP+\7" + number(115, 4) + number(0, 4) + QByteArray(500, '\0');
}

QByteArray trueAudio() {
    return "TTA1" + number(1, 2) + number(2, 2) + number(16, 2) + number(44100, 4) + number(132300, 4) +
           QByteArray(500, '\0');
}

QByteArray module() {
    QByteArray file(1084 + 1024, '\0');
    file.replace(950, 2, "\1\x7f"); // one pattern is played
    return file.replace(1080, 4, "M.K.");
}

/// A DSF file: its header, some silence, and an ID3 tag.
QByteArray dsf() {
    const QByteArray title = QByteArray("TIT2") + QByteArray("\0\0\0\5\0\0", 6) + QByteArray("\0Alba", 5);
    const QByteArray tag = QByteArray("ID3\3\0\0\0\0\0\17", 10) + title;
    QByteArray file = "DSD " + number(28, 8) + number(92 + tag.size(), 8) + number(92, 8);
    file += "fmt " + number(52, 8) + number(1, 4) + number(0, 4) + number(2, 4) + number(2, 4) +
            number(2822400, 4) + number(1, 4) + number(2822400ULL * 3, 8) + number(4096, 4) + number(0, 4);
    return file + "data" + number(12, 8) + tag;
}

TEST(FileFacts, WhatOnlyHasAHeaderIsReadToo) {
    const struct {
        const char* suffix;
        QByteArray bytes;
        const char* kind;
        int sampleRate = 44100; ///< 0 for a module, which says nothing of its sound
    } headers[] = {{"ape", monkeysAudio(), "Monkey’s Audio (APE) file"},
                   {"mpc", musepack(), "Musepack audio file"},
                   {"tta", trueAudio(), "TTA audio file"},
                   {"mod", module(), "Module audio file", 0},
                   {"dsf", dsf(), "DSD audio file", 2822400}};
    QTemporaryDir folder;
    for (const auto& header : headers) {
        SCOPED_TRACE(header.kind);
        const QString path = writeFile(folder.filePath(QStringLiteral("a.") + header.suffix), header.bytes);
        if (qstrcmp(header.suffix, "dsf") != 0) { // which has its tag
            TagLib::FileRef tagged(QFile::encodeName(path).constData());
            ASSERT_FALSE(tagged.isNull());
            tagged.tag()->setTitle("Alba");
            ASSERT_TRUE(tagged.save());
        }
        const auto facts = TagCache().read(path);
        ASSERT_TRUE(facts);
        EXPECT_EQ(facts->kind, header.kind);
        EXPECT_EQ(facts->name, "Alba");
        if (header.sampleRate > 0) {
            EXPECT_EQ(facts->sampleRate, header.sampleRate);
            EXPECT_NEAR(facts->duration, 3, header.sampleRate == 44100 ? 0.05 : 1e-9);
        }
    }
}

TEST(FileFacts, WhatIsNoMusicHarmsNobody) {
    QTemporaryDir folder;
    const QString pipe = folder.filePath("pipe.flac");
    ASSERT_EQ(::mkfifo(pipe.toUtf8().constData(), 0600), 0);
    EXPECT_FALSE(TagCache().read(pipe));
    EXPECT_FALSE(TagCache().read(folder.path()));
    EXPECT_FALSE(TagCache().read("/dev/zero"));
    EXPECT_FALSE(TagCache().read(folder.filePath("gone.mp3")));
    for (const char* suffix : {"flac", "mp3", "m4a", "ogg", "dsf", "wv", "ape", "mpc", "aiff", "xm", "txt"}) {
        QByteArray noise;
        for (int i = 0; i < 5000; ++i)
            noise.append(static_cast<char>(i * 7919 % 251));
        const QString path = writeFile(folder.filePath(QStringLiteral("noise.") + suffix), noise);
        const auto facts = TagCache().read(path);
        ASSERT_TRUE(facts) << suffix;
        EXPECT_EQ(facts->size, 5000);
        EXPECT_EQ(readEmbeddedPicture(path, 1000000), QByteArray());
    }
}

TEST(FileFacts, ThePictureInsideIsFound) {
    QTemporaryDir folder;
    const QImage image = plainPicture(Qt::red, {40, 40});
    ASSERT_TRUE(image.save(folder.filePath("p.png")));
    for (const char* suffix : {"mp3", "flac", "m4a"}) {
        const QString path = folder.filePath(QStringLiteral("a.") + suffix);
        ASSERT_EQ(QProcess::execute("ffmpeg", {"-v", "error", "-y", "-f", "lavfi", "-i", "sine=d=1", "-i",
                                               folder.filePath("p.png"), "-map", "0", "-map", "1", "-c:v",
                                               "copy", "-disposition:v", "attached_pic", path}),
                  0);
        const QByteArray bytes = readEmbeddedPicture(path, 1000000);
        EXPECT_EQ(QImage::fromData(bytes).size(), image.size()) << suffix;
        EXPECT_EQ(readEmbeddedPicture(path, 10), QByteArray()) << "too large is none";
    }
}

struct AlbumTest : testing::Test {
    QTemporaryDir folder;
    TagCache cache;

    void make(const QString& name, const QString& album, int track, int disc = 0) {
        Tags own{{"title", name}, {"artist", "Nevia"}, {"album", album}, {"track", QString::number(track)}};
        if (disc > 0)
            own.emplace_back("disc", QString::number(disc));
        ASSERT_TRUE(makeSound(folder.filePath(name + ".flac"), own, 1));
    }
    QStringList albumOf(const QString& name) {
        const auto facts = cache.read(folder.filePath(name + ".flac"));
        Track current = *facts;
        current.name = "CURRENT";
        QStringList names;
        for (const Track& track : readAlbum(current, *facts, cache, [] { return false; }))
            names.append(QString::number(track.discNumber) + ":" + track.name.section('/', -1));
        return names;
    }
};

TEST_F(AlbumTest, IsTheFolderAndItsSiblings) {
    make("CD1/b", "Lontano", 2, 1);
    make("CD1/a", "lontano", 1, 1);
    make("Disc 2/c", "Lontano", 1); // the folder knows its number
    make("CD1/x", "Altro", 3, 1);
    make("Live/d", "Lontano", 1, 1);
    EXPECT_EQ(albumOf("CD1/b"), (QStringList{"1:a", "1:CURRENT", "2:c"}));
    const int before = cache.readCount();
    EXPECT_EQ(albumOf("CD1/b").size(), 3);
    EXPECT_EQ(cache.readCount(), before) << "a second look reads no file again";
    make("CD1/a", "Altro", 1, 1);
    EXPECT_EQ(albumOf("CD1/b").size(), 2) << "a file that has changed is";
}

TEST(TrackDetails, EveryFactComesFromTheFirstThatHasIt) {
    const QDate today(2026, 11, 22);
    Metadata said;
    said.url = "file:///m/a.flac";
    said.track.name = "a";
    said.titleIsFileName = true;
    said.track.artist = "Nevia C.";
    said.track.trackNumber = 9;
    said.contentYear = 2026;
    said.contentDate = today;
    auto file = std::make_shared<Track>();
    file->name = "Alba";
    file->artist = "Nevia";
    file->trackNumber = 4;
    file->compilation = true;
    TrackDetails details{file, {QDate(2020, 1, 1)}, {}};

    Track shown = describe(said, details, today);
    EXPECT_EQ(shown.name, "Alba");
    EXPECT_EQ(shown.artist, "Nevia C.");
    EXPECT_EQ(shown.trackNumber, 4);
    EXPECT_TRUE(shown.compilation);
    EXPECT_EQ(shown.year, 0) << "today is no release date";
    said.contentDate = details.fileDates.value(0);
    EXPECT_EQ(describe(said, details, today).year, 0) << "nor is the day the file was made";
    said.contentDate = QDate(2019, 5, 1);
    said.contentYear = 2019;
    EXPECT_EQ(describe(said, details, today).year, 2019);
    file->year = 1994;
    EXPECT_EQ(describe(said, details, today).year, 1994) << "the tag wins";
}

} // namespace
} // namespace tarnwick::players
