#include "players/ScriptObjects.h"

#include "players/MusicTerms.h"

#include <numeric>

namespace tarnwick::players {

using script::Error;
using script::ObjectPointer;
using script::Query;
using script::Term;
using script::Value;

namespace {

Value known(const QString& text) {
    if (text.isEmpty())
        throw Error::noSuchObject();
    return Value::text(text);
}

/// A fact that the track does not have is empty or 0. Only what there is nothing to ask for is an error.
Value factOf(const Track& track, Term property) {
    switch (property) {
    case script::terms::Name:
        return known(track.name);
    case script::terms::Id:
        return known(track.id);
    case terms::Artist:
        return Value::text(track.artist);
    case terms::Album:
        return Value::text(track.album);
    case terms::Genre:
        return Value::text(track.genre);
    case terms::Year:
        return Value::integer(track.year);
    case terms::Comment:
        return Value::text(track.comment);
    case terms::Grouping:
        return Value::text(track.grouping);
    case terms::TrackKind:
        return Value::text(track.kind);
    case terms::TrackNumber:
        return Value::integer(track.trackNumber);
    case terms::DiscNumber:
        return Value::integer(track.discNumber);
    case terms::DiscCount:
        return Value::integer(track.discCount);
    case terms::Compilation:
        return Value::boolean(track.compilation);
    case terms::Duration: // a stream has none, and still plays
        return Value::real(track.duration);
    case terms::BitRate:
        return Value::integer(track.bitRate);
    case terms::SampleRate: // in kilohertz
        return Value::real(track.sampleRate / 1000.0);
    case terms::Size:
        return Value::integer(track.size);
    case terms::Location:
        if (track.path.isEmpty())
            throw Error::noSuchObject();
        return Value::alias(track.path);
    default:
        throw Error::noSuchObject();
    }
}

/// The same of one among many tracks, where one without the fact must not cost the others theirs.
Value factAmongMany(const Track& track, Term property) {
    switch (property) {
    case script::terms::Name:
        return Value::text(track.name);
    case script::terms::Id:
        return Value::text(track.id);
    case terms::Location:
        return track.path.isEmpty() ? Value::missing() : Value::alias(track.path);
    default:
        return factOf(track, property);
    }
}

QString quoted(QString text) {
    return u'"' + text.replace(u'\\', QLatin1String("\\\\")).replace(u'"', QLatin1String("\\\"")) + u'"';
}

std::vector<int> everyNumber(std::size_t size) {
    std::vector<int> numbers(size);
    std::iota(numbers.begin(), numbers.end(), 0);
    return numbers;
}

} // namespace

std::vector<ObjectPointer> select(std::vector<ObjectPointer> objects, const Query& query) {
    if (query.filter != nullptr)
        std::erase_if(objects, [&](const ObjectPointer& object) { return !query.filter->matches(*object); });
    const auto [first, last] = query.within(static_cast<qint64>(objects.size()));
    return {objects.begin() + first, objects.begin() + last};
}

TrackObject::TrackObject(const std::shared_ptr<const Library>& library, int number)
    : m_track(library, &library->tracks()[static_cast<std::size_t>(number)]), m_number(number + 1) {}

TrackObject::TrackObject(const SnapshotPointer& snapshot)
    : m_track(snapshot, &*snapshot->current), m_current(snapshot) {}

Term TrackObject::objectClass() const { return terms::Track; }

QString TrackObject::specifier() const {
    return m_current ? QStringLiteral("current track")
                     : QStringLiteral("track %1 of library playlist 1").arg(m_number);
}

Value TrackObject::property(Term property) const {
    if (property != terms::Container)
        return m_current ? factOf(*m_track, property) : factAmongMany(*m_track, property);
    if (!m_current)
        return Value::object(std::make_shared<LibraryPlaylistObject>(Library::empty()));
    if (m_current->currentPlaylist.isEmpty())
        throw Error::noSuchObject();
    return Value::object(std::make_shared<UserPlaylistObject>(Playlist{{}, m_current->currentPlaylist}));
}

std::vector<ObjectPointer> TrackObject::elements(const Query& query) const {
    if (query.elementClass != terms::Artwork)
        throw Error::noSuchObject();
    std::vector<ObjectPointer> artworks;
    if (m_current && m_current->artwork)
        artworks.push_back(std::make_shared<ArtworkObject>(m_current->artwork->bytes));
    return select(std::move(artworks), query);
}

bool TrackObject::isSame(const Object& other) const {
    const auto* track = dynamic_cast<const TrackObject*>(&other);
    return track != nullptr && *track->m_track == *m_track;
}

Term LibraryPlaylistObject::objectClass() const { return terms::LibraryPlaylist; }

QString LibraryPlaylistObject::specifier() const { return QStringLiteral("library playlist 1"); }

Value LibraryPlaylistObject::property(Term property) const {
    if (property == script::terms::Name)
        return Value::text(QStringLiteral("Library"));
    throw Error::noSuchObject();
}

/// The numbers of the tracks that are meant, found by an index where the condition allows it.
std::vector<int> LibraryPlaylistObject::found(const Query& query) const {
    if (query.elementClass != terms::Track)
        throw Error::noSuchObject();
    std::vector<int> numbers;
    bool complete = query.filter == nullptr;
    if (complete) {
        numbers = everyNumber(m_library->tracks().size());
    } else if (const Value* album = query.filter->equalTo(terms::Album);
               album != nullptr && album->is(script::Kind::Text)) {
        const auto matching = m_library->ofAlbum(album->asText());
        numbers.assign(matching.begin(), matching.end());
        complete = query.filter->isOnly(terms::Album);
    } else if (const Value* name = query.filter->equalTo(script::terms::Name);
               name != nullptr && name->is(script::Kind::Text)) {
        const auto matching = m_library->named(name->asText());
        numbers.assign(matching.begin(), matching.end());
        complete = query.filter->isOnly(script::terms::Name);
    } else {
        numbers = everyNumber(m_library->tracks().size());
    }
    if (!complete)
        std::erase_if(numbers,
                      [&](int number) { return !query.filter->matches(TrackObject(m_library, number)); });
    const auto [first, last] = query.within(static_cast<qint64>(numbers.size()));
    return {numbers.begin() + first, numbers.begin() + last};
}

std::vector<ObjectPointer> LibraryPlaylistObject::elements(const Query& query) const {
    std::vector<ObjectPointer> tracks;
    for (const int number : found(query))
        tracks.push_back(std::make_shared<TrackObject>(m_library, number));
    return tracks;
}

qint64 LibraryPlaylistObject::count(const Query& query) const {
    return static_cast<qint64>(found(query).size());
}

std::vector<Value> LibraryPlaylistObject::values(const Query& query, Term property) const {
    std::vector<Value> values;
    for (const int number : found(query)) {
        const Track& track = m_library->tracks()[static_cast<std::size_t>(number)];
        values.push_back(property == terms::Container ? TrackObject(m_library, number).property(property)
                                                      : factAmongMany(track, property));
    }
    return values;
}

bool LibraryPlaylistObject::isSame(const Object& other) const {
    return dynamic_cast<const LibraryPlaylistObject*>(&other) != nullptr;
}

Term UserPlaylistObject::objectClass() const { return terms::UserPlaylist; }

QString UserPlaylistObject::specifier() const {
    return QStringLiteral("user playlist ") + quoted(m_playlist.name);
}

Value UserPlaylistObject::property(Term property) const {
    if (property == script::terms::Name)
        return Value::text(m_playlist.name);
    if (property == script::terms::Id)
        return known(m_playlist.id);
    throw Error::noSuchObject();
}

bool UserPlaylistObject::isSame(const Object& other) const {
    const auto* playlist = dynamic_cast<const UserPlaylistObject*>(&other);
    return playlist != nullptr && playlist->m_playlist == m_playlist;
}

Term ArtworkObject::objectClass() const { return terms::Artwork; }

QString ArtworkObject::specifier() const { return QStringLiteral("artwork 1 of current track"); }

Value ArtworkObject::property(Term property) const {
    if (property == terms::Data || property == terms::RawData)
        return Value::data(m_bytes);
    throw Error::noSuchObject();
}

} // namespace tarnwick::players
