// Files as people really have them: named before UTF-8, dated in every way, tagged by programs gone wrong.

#include "players/FileName.h"
#include "players/Year.h"
#include "players/mpris/LocalFile.h"
#include "players/mpris/LocalPictures.h"
#include "players/mpris/WebPictures.h"
#include "players/tags/AlbumFolder.h"
#include "players/tags/TagCache.h"
#include "tests/fakes/Files.h"
#include "tests/fakes/RealPlayer.h"

#include <gmock/gmock.h>
#include <taglib/fileref.h>
#include <taglib/tpropertymap.h>

#include <cstdio>

namespace tarnwick::players {
namespace {

TEST(FileNames, LeadBackToTheBytesThatTheyWereMadeOf) {
    const struct {
        QByteArray bytes;
        QString readable;
    } rows[] = {{"caff\xC3\xA8", "caffè"},
                {"caf\xE9.flac", "caf\uFFFD.flac"},
                {"\xFF\xC3\xA8\xE2\x82", "\uFFFDè\uFFFD\uFFFD"},
                {"\xF0\x9F\x8E\xB5\x80", "\U0001F3B5\uFFFD"},
                {"", ""}};
    for (const auto& row : rows) {
        const QString name = nameFromBytes(row.bytes);
        EXPECT_EQ(bytesOfName(name), row.bytes);
        EXPECT_EQ(readableName(name), row.readable);
    }
}

TEST(Years, AreFoundHoweverADateIsWritten) {
    const struct {
        const char16_t* date;
        int year;
    } rows[] = {{u"2019", 2019},
                {u"2019-05-01T00:00:00Z", 2019},
                {u"20210305", 2021},
                {u"20210305T101500", 2021},
                {u"05/03/2021", 2021},
                {u"(P) 1994 Nevia", 1994},
                {u"94", 0},
                {u"123456", 0},
                {u"0000", 0},
                {u"", 0}};
    for (const auto& row : rows)
        EXPECT_EQ(yearIn(row.date), row.year) << QString::fromUtf16(row.date).toStdString();
}

TEST(OddFiles, ANameThatIsNoUtf8LosesNothing) {
    const QTemporaryDir folder;
    const QByteArray odd = folder.path().toUtf8() + "/caf\xE9.flac";
    const QString plain = folder.filePath("plain.flac");
    ASSERT_TRUE(makeSound(plain, {{"album", "Lontano"}, {"artist", "Nevia"}, {"date", "20210305"}}, 1));
    ASSERT_TRUE(QFile::copy(plain, folder.filePath("copy.flac")));
    ASSERT_EQ(std::rename(folder.filePath("copy.flac").toUtf8().constData(), odd.constData()), 0);

    const QString path = localPathOf("file://" + folder.path() + "/caf%E9.flac");
    TagCache cache;
    const auto facts = cache.read(path);
    ASSERT_TRUE(facts);
    EXPECT_EQ(facts->album, "Lontano");
    EXPECT_EQ(facts->year, 2021);
    EXPECT_TRUE(readRegularFile(path, 1 << 20));
    EXPECT_EQ(datesOfFile(path).size(), 3);

    const auto first = cache.read(plain);
    const auto tracks = readAlbum(*first, *first, cache, [] { return false; });
    ASSERT_EQ(tracks.size(), 2U);
    EXPECT_EQ(tracks[0].name, "caf\uFFFD");
    EXPECT_EQ(tracks[0].path, path);
    std::remove(odd.constData()); // which the folder cannot
}

TEST(OddFiles, AFolderThatIsNoUtf8KeepsItsSleeve) {
    const QTemporaryDir folder;
    const QByteArray odd = folder.path().toUtf8() + "/caf\xE9";
    writeFile(folder.filePath("plain/a.flac"), "no music");
    writeFile(folder.filePath("plain/Cover.PNG"), "the sleeve");
    writeFile(folder.filePath("plain/.cover.png"), "hidden");
    ASSERT_EQ(std::rename(folder.filePath("plain").toUtf8().constData(), odd.constData()), 0);
    const QString path = localPathOf("file://" + folder.path() + "/caf%E9/a.flac");
    EXPECT_FALSE(path.isEmpty());
    EXPECT_EQ(findLocalPictures({}, path), std::vector<QByteArray>{"the sleeve"});
    ASSERT_EQ(std::rename(odd.constData(), folder.filePath("plain").toUtf8().constData()), 0);
}

TEST(OddFiles, OfAHundredThousandArtistsSomeAreRead) {
    const QTemporaryDir folder;
    const QString path = folder.filePath("many.flac");
    ASSERT_TRUE(makeSound(path, {{"title", "Alba"}}, 1));
    {
        TagLib::FileRef file(path.toUtf8().constData());
        TagLib::PropertyMap properties = file.file()->properties();
        TagLib::StringList artists;
        for (int i = 0; i < 100'000; ++i)
            artists.append(std::to_string(i));
        properties.insert("ARTIST", artists);
        file.file()->setProperties(properties);
        ASSERT_TRUE(file.save());
    }
    const auto facts = TagCache().read(path);
    ASSERT_TRUE(facts);
    EXPECT_EQ(facts->name, "Alba");
    EXPECT_EQ(facts->artist.count(','), 63);
}

TEST(WebPictureCaches, DropWhatWasUnusedTheLongestBeyond64Mebibytes) {
    const QTemporaryDir folder;
    const WebPictureCache cache(folder.path());
    const QByteArray picture(15 * 1024 * 1024, 'x');
    for (const char* url : {"a", "b", "c", "d"})
        cache.keep(url, "Lontano", picture);
    EXPECT_FALSE(cache.find("a", "Lontano").isEmpty()) << "which makes it the newest";
    EXPECT_TRUE(cache.find("a", "Vicino").isEmpty()) << "another album";
    cache.keep("e", "Lontano", picture);
    EXPECT_FALSE(cache.find("a", "Lontano").isEmpty());
    EXPECT_TRUE(cache.find("b", "Lontano").isEmpty());
    EXPECT_FALSE(cache.find("e", "Lontano").isEmpty());
}

} // namespace
} // namespace tarnwick::players
