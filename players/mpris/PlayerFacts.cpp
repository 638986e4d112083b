#include "players/mpris/PlayerFacts.h"

#include "players/Year.h"
#include "players/mpris/BusValue.h"

#include <QFileInfo>
#include <QUrl>

#include <algorithm>
#include <cmath>

namespace tarnwick::players {

namespace {

constexpr double longest = 30 * 24 * 3600.0;     // seconds; more is rubbish
constexpr qsizetype longestPicture = 30'000'000; // letters of an address that is the picture itself

/// The first of `keys` that `metadata` has something for.
QString firstText(const QVariantMap& metadata, std::initializer_list<const char*> keys) {
    for (const char* key : keys) {
        if (const QString text = textOf(metadata.value(QLatin1String(key))); !text.isEmpty())
            return text;
    }
    return {};
}

int firstCount(const QVariantMap& metadata, std::initializer_list<const char*> keys) {
    for (const char* key : keys) {
        if (const int count = countOf(metadata.value(QLatin1String(key))); count > 0)
            return count;
    }
    return 0;
}

int firstYear(const QVariantMap& metadata, std::initializer_list<const char*> keys) {
    for (const char* key : keys) {
        const QVariant value = metadata.value(QLatin1String(key));
        const QString text = textOf(value);
        if (const int year = yearIn(text.isEmpty() ? QString::number(countOf(value)) : text); year > 0)
            return year;
    }
    return 0;
}

/// The second number of "1/2"; 0 without one.
int afterSlash(const QString& text) {
    const auto slash = text.indexOf(u'/');
    return slash < 0 ? 0 : countOf(text.mid(slash + 1));
}

/// "Italy,Italy" is said once.
QString withoutEcho(const QString& text) {
    const auto half = text.size() / 2;
    const bool doubled = text.size() % 2 == 1 && text[half] == u',' && text.left(half) == text.mid(half + 1);
    return doubled ? text.left(half) : text;
}

/// Kilobits per second, from players of which some count bits.
int bitRateOf(const QVariantMap& metadata) {
    const int rate = firstCount(metadata, {"bitrate", "sayonara:bitrate", "xesam:audiobitrate"});
    return rate > 20000 ? rate / 1000 : rate;
}

/// The name of the file behind `url`, without its suffix; empty when it names none.
QString fileNameOf(const QString& url, bool withSuffix) {
    QString path = url;
    if (url.startsWith(QLatin1String("file:"), Qt::CaseInsensitive) || !url.contains(QLatin1String("://"))) {
        path = QUrl::fromPercentEncoding(url.toUtf8());
    } else {
        // A page's address is no file; a stream's may be one.
        path = QUrl(url).path(QUrl::FullyDecoded);
        const QString suffix = QFileInfo(path).suffix();
        if (suffix.size() < 2 || suffix.size() > 4 || suffix.startsWith(QLatin1String("htm")))
            return {};
    }
    const QFileInfo file(path);
    return withSuffix ? file.fileName() : file.completeBaseName();
}

/// The folder of the local file at `url`, as the player spells it; empty when it is none.
QString folderOf(const QString& url) { return namesFile(url) ? url.left(url.lastIndexOf(u'/')) : QString(); }

/// Whether `a` and `b` are the same; none when one of them is not known.
std::optional<bool> areEqual(const QString& a, const QString& b) {
    return a.isEmpty() || b.isEmpty() ? std::nullopt : std::optional(a == b);
}

PlayerState stateOf(const QString& status) {
    if (status.compare(QLatin1String("Playing"), Qt::CaseInsensitive) == 0)
        return PlayerState::Playing;
    if (status.compare(QLatin1String("Paused"), Qt::CaseInsensitive) == 0)
        return PlayerState::Paused;
    return PlayerState::Stopped;
}

} // namespace

bool isSameTrack(const Metadata& before, const Metadata& after) {
    if (before.url != after.url)
        return false;
    // One that names its file first and its tags a little later is still at the same file.
    const bool filledIn = !after.url.isEmpty() && before.titleIsFileName;
    if (filledIn)
        return (before.track.artist.isEmpty() || before.track.artist == after.track.artist) &&
               (before.track.album.isEmpty() || before.track.album == after.track.album);
    if (before.track.name != after.track.name || before.track.artist != after.track.artist ||
        before.track.album != after.track.album)
        return false;
    return !after.url.isEmpty() || before.track.duration == 0 || after.track.duration == 0 ||
           std::abs(before.track.duration - after.track.duration) < 1;
}

bool isSameAlbum(const Metadata& before, const Metadata& after) {
    if (before.track.album.isEmpty() && after.track.album.isEmpty()) {
        if (namesFile(before.url) || namesFile(after.url))
            return folderOf(before.url) == folderOf(after.url);
        return areEqual(before.track.artist, after.track.artist).value_or(false);
    }
    if (!areEqual(before.track.album, after.track.album).value_or(false))
        return false;
    // The artists of a sampler's tracks are others; its own is not, nor is its folder.
    if (const auto isSameArtist = areEqual(before.albumArtist, after.albumArtist))
        return *isSameArtist;
    const auto isSameArtist = areEqual(before.track.artist, after.track.artist);
    const auto isSameFolder = areEqual(folderOf(before.url), folderOf(after.url));
    return isSameArtist.value_or(false) || isSameFolder.value_or(!isSameArtist);
}

bool namesFile(const QString& url) {
    return url.startsWith(u'/') || url.startsWith(QLatin1String("file:"), Qt::CaseInsensitive);
}

Metadata normaliseMetadata(const QVariantMap& given) {
    const QVariantMap map = plainMap(given, true);
    Metadata result;
    Track& track = result.track;
    track.id = textOf(map.value(QStringLiteral("mpris:trackid")));
    track.artist = firstText(map, {"xesam:artist", "xesam:albumartist"});
    track.album = firstText(map, {"xesam:album"});
    result.albumArtist = firstText(map, {"xesam:albumartist"});
    track.genre = firstText(map, {"xesam:genre"});
    track.comment = withoutEcho(firstText(map, {"xesam:comment", "comment"}));
    track.grouping = firstText(map, {"xesam:grouping", "grouping"});
    track.trackNumber = firstCount(map, {"xesam:tracknumber", "track"});
    track.discNumber = firstCount(map, {"xesam:discnumber", "disc"});
    track.discCount = std::max(firstCount(map, {"xesam:disccount", "disctotal"}),
                               afterSlash(firstText(map, {"xesam:discnumber", "disc"})));
    track.bitRate = bitRateOf(map);
    track.year = firstYear(map, {"year", "xesam:year", "sayonara:year", "date"});
    const double length = numberOf(map.value(QStringLiteral("mpris:length"))).value_or(0) / 1e6;
    track.duration = length > 0 && length < longest ? length : 0;
    result.url = firstText(map, {"xesam:url"});
    result.artUrl = textsOf(map.value(QStringLiteral("mpris:arturl")), longestPicture).value(0);
    // Where old builds of one player say their pictures are, and where they are.
    static const QString oldHost = QStringLiteral("https://open.spotify.com/image/");
    if (result.artUrl.startsWith(oldHost))
        result.artUrl.replace(0, oldHost.size(), QStringLiteral("https://i.scdn.co/image/"));

    const QString created = firstText(map, {"xesam:contentcreated"});
    result.contentYear = yearIn(created);
    result.contentDate = QDate::fromString(created.left(10), Qt::ISODate);

    track.name = firstText(map, {"xesam:title"});
    const bool isLocal = !track.name.isEmpty() && track.name == fileNameOf(result.url, true);
    if (track.name.isEmpty() || isLocal) {
        track.name = fileNameOf(result.url, false);
        result.titleIsFileName = true;
    }
    return result;
}

PlayerFacts normalise(const QVariantMap& properties) {
    const auto value = [&](const char* key) { return properties.value(QLatin1String(key)); };
    const auto flag = [&](const char* key) { return flagOf(value(key)).value_or(false); };
    PlayerFacts facts;
    facts.metadata = normaliseMetadata(value("Metadata").toMap());
    facts.status = facts.metadata.isEmpty() ? PlayerState::Stopped : stateOf(textOf(value("PlaybackStatus")));
    if (const auto microseconds = numberOf(value("Position")))
        facts.position = std::clamp(*microseconds / 1e6, 0.0, longest);
    if (const double rate = numberOf(value("Rate")).value_or(1); rate > 0 && rate <= 32)
        facts.rate = rate;
    if (const auto volume = numberOf(value("Volume")))
        facts.volume = std::clamp(*volume, 0.0, 1.0);
    facts.shuffle = flagOf(value("Shuffle"));

    const bool canControl = flagOf(value("CanControl")).value_or(true);
    Capabilities& can = facts.capabilities;
    can.canPlay = canControl && (flag("CanPlay") || flag("CanPause"));
    can.canGoNext = canControl && flag("CanGoNext");
    can.canGoPrevious = canControl && flag("CanGoPrevious");
    can.canShuffle = canControl && facts.shuffle.has_value();
    can.canSetVolume = canControl && facts.volume.has_value();
    can.canSeek = canControl && flag("CanSeek");
    return facts;
}

QVariantMap believable(const QVariantMap& properties) {
    QVariantMap result;
    for (auto entry = properties.begin(); entry != properties.end(); ++entry) {
        const QString& key = entry.key();
        const QVariant& value = entry.value();
        bool fits = true;
        if (key == QLatin1String("Metadata"))
            fits = value.typeId() == QMetaType::QVariantMap;
        else if (key == QLatin1String("PlaybackStatus"))
            fits = value.typeId() == QMetaType::QString;
        else if (key == QLatin1String("Shuffle") || key.startsWith(QLatin1String("Can")))
            fits = value.typeId() == QMetaType::Bool;
        else if (key == QLatin1String("Position") || key == QLatin1String("Volume") ||
                 key == QLatin1String("Rate"))
            fits = value.typeId() != QMetaType::QString && numberOf(value).has_value();
        if (fits)
            result.insert(key, value);
    }
    return result;
}

} // namespace tarnwick::players
