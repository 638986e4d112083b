#include "players/mpris/TrackDetails.h"

namespace tarnwick::players {

namespace {

template <typename T>
void fill(T& fact, const T& other) {
    if (fact == T())
        fact = other;
}

} // namespace

Track describe(const Metadata& metadata, const TrackDetails& details, QDate today) {
    Track track = metadata.track;
    if (details.file) {
        const Track& file = *details.file;
        if (metadata.titleIsFileName && !file.name.isEmpty())
            track.name = file.name;
        fill(track.artist, file.artist);
        fill(track.album, file.album);
        fill(track.genre, file.genre);
        fill(track.comment, file.comment);
        fill(track.year, file.year);
        fill(track.duration, file.duration);
        // Of these the file knows more than any player.
        const auto prefer = [](auto& fact, const auto& better) {
            auto own = better;
            fill(own, fact);
            fact = own;
        };
        prefer(track.trackNumber, file.trackNumber);
        prefer(track.discNumber, file.discNumber);
        prefer(track.discCount, file.discCount);
        prefer(track.grouping, file.grouping);
        prefer(track.bitRate, file.bitRate);
        track.compilation = file.compilation;
        track.sampleRate = file.sampleRate;
        track.size = file.size;
        track.kind = file.kind;
        track.path = file.path;
    } else if (metadata.url.contains(QLatin1String("://")) &&
               !metadata.url.startsWith(QLatin1String("file:"), Qt::CaseInsensitive)) {
        track.kind = QStringLiteral("Internet audio stream");
    }
    const bool isDateOfFile =
        metadata.contentDate.isValid() &&
        (metadata.contentDate == today || details.fileDates.contains(metadata.contentDate));
    if (!isDateOfFile)
        fill(track.year, metadata.contentYear);
    return track;
}

} // namespace tarnwick::players
