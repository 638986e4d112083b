#include "tests/fakes/FakeMusic.h"

#include "platform/script/Coercion.h"

namespace tarnwick::fakes {

using script::Error;
using script::Filter;
using script::ObjectPointer;
using script::Query;
using script::Term;
using script::Value;

namespace {

class TrackObject final : public script::Object {
public:
    TrackObject(std::shared_ptr<FakeLibrary> library, std::size_t index)
        : m_library(std::move(library)), m_index(index) {}

    Term objectClass() const override { return music::Track; }
    QString specifier() const override { return QStringLiteral("track %1").arg(m_index + 1); }
    bool isSame(const Object& other) const override { return specifier() == other.specifier(); }
    Value property(Term property) const override { return propertyOf(m_library, m_index, property); }
    std::vector<ObjectPointer> elements(const Query& query) const override;

    static Value propertyOf(const std::shared_ptr<FakeLibrary>& library, std::size_t index, Term property);

private:
    std::shared_ptr<FakeLibrary> m_library;
    std::size_t m_index;
};

class ArtworkObject final : public script::Object {
public:
    Term objectClass() const override { return music::Artwork; }
    QString specifier() const override { return QStringLiteral("artwork 1"); }
    Value property(Term property) const override {
        if (property != music::Data)
            throw Error::noSuchObject();
        return Value::data(QByteArrayLiteral("cover"));
    }
};

class PlaylistObject final : public script::Object {
public:
    PlaylistObject(std::shared_ptr<FakeLibrary> library, QString name, bool isLibrary)
        : m_library(std::move(library)), m_name(std::move(name)), m_isLibrary(isLibrary) {}

    Term objectClass() const override { return m_isLibrary ? music::LibraryPlaylist : music::UserPlaylist; }
    QString specifier() const override { return QStringLiteral("playlist \"%1\"").arg(m_name); }
    Value property(Term property) const override {
        if (property != script::terms::Name)
            throw Error::noSuchObject();
        return Value::text(m_name);
    }
    std::vector<ObjectPointer> elements(const Query& query) const override {
        ++m_library->elementCalls;
        std::vector<ObjectPointer> found;
        for (const std::size_t index : matching(query))
            found.push_back(std::make_shared<TrackObject>(m_library, index));
        return found;
    }
    std::vector<Value> values(const Query& query, Term property) const override {
        ++m_library->valuesCalls;
        std::vector<Value> found;
        for (const std::size_t index : matching(query))
            found.push_back(TrackObject::propertyOf(m_library, index, property));
        return found;
    }

private:
    std::vector<std::size_t> matching(const Query& query) const {
        if (query.elementClass != music::Track)
            throw Error::noSuchObject();
        std::vector<std::size_t> found;
        const auto consider = [&](std::size_t index) {
            if (!query.filter || query.filter->matches(TrackObject(m_library, index)))
                found.push_back(index);
        };
        const Value* album = query.filter ? query.filter->equalTo(music::Album) : nullptr;
        if (album && album->is(script::Kind::Text)) {
            for (const std::size_t index : m_library->byAlbum.value(script::comparisonKey(album->asText())))
                consider(index);
        } else {
            for (std::size_t index = 0; index < m_library->tracks.size(); ++index)
                consider(index);
        }
        const auto [first, last] = query.within(static_cast<qint64>(found.size()));
        return {found.begin() + first, found.begin() + last};
    }

    std::shared_ptr<FakeLibrary> m_library;
    QString m_name;
    bool m_isLibrary;
};

Value TrackObject::propertyOf(const std::shared_ptr<FakeLibrary>& library, std::size_t index, Term property) {
    const FakeTrack& track = library->tracks[index];
    switch (property) {
    case script::terms::Name:
        return Value::text(track.name);
    case music::Artist:
        return Value::text(track.artist);
    case music::Album:
        return Value::text(track.album);
    case music::TrackNumber:
        return Value::integer(track.trackNumber);
    case music::DiscNumber:
        return Value::integer(track.discNumber);
    case music::Compilation:
        return Value::boolean(track.compilation);
    case music::Duration:
        return Value::real(track.duration);
    case music::Location:
        return Value::alias(QStringLiteral("/music/") + track.name + QStringLiteral(".flac"));
    case music::Container:
        return Value::object(std::make_shared<PlaylistObject>(library, QStringLiteral("Library"), true));
    default:
        break;
    }
    const auto fact = track.facts.constFind(FakeMusic::words().propertyName(property));
    if (fact == track.facts.constEnd())
        throw Error::noSuchObject();
    return *fact;
}

std::vector<ObjectPointer> TrackObject::elements(const Query& query) const {
    if (query.elementClass != music::Artwork)
        throw Error::noSuchObject();
    const auto [first, last] =
        query.within(m_library->tracks[m_index].facts.contains(QStringLiteral("data")) ? 1 : 0);
    return first < last ? std::vector<ObjectPointer>{std::make_shared<ArtworkObject>()}
                        : std::vector<ObjectPointer>();
}

QString describe(const Value& value) {
    return value.is(script::Kind::Object) ? value.asObject()->specifier()
                                          : script::textOf(value).value_or(QString());
}

} // namespace

void FakeLibrary::makeIndex() {
    byAlbum.clear();
    for (std::size_t index = 0; index < tracks.size(); ++index)
        byAlbum[script::comparisonKey(tracks[index].album)].push_back(index);
}

Value FakeMusic::property(Term property) const {
    if (!m_library->running)
        throw Error::notRunning();
    switch (property) {
    case music::PlayerState:
        return Value::constant(*words().find(m_library->state)->enumerator, m_library->state);
    case music::CurrentTrack:
        if (m_library->current >= m_library->tracks.size())
            throw Error::noSuchObject();
        return Value::object(std::make_shared<TrackObject>(m_library, m_library->current));
    case music::PlayerPosition:
        return Value::real(m_library->position);
    case music::SoundVolume:
        return Value::integer(m_library->volume);
    case music::ShuffleEnabled:
        return Value::boolean(m_library->shuffle);
    default:
        throw Error::noSuchObject();
    }
}

void FakeMusic::setProperty(Term property, const Value& value) {
    m_library->record.append(
        QStringLiteral("set %1 to %2").arg(words().propertyName(property), describe(value)));
    if (property == music::SoundVolume)
        m_library->volume = static_cast<int>(script::requireInteger(value));
    else if (property == music::ShuffleEnabled)
        m_library->shuffle = script::requireBoolean(value);
    else
        throw Error::notSettable();
}

std::vector<ObjectPointer> FakeMusic::elements(const Query& query) const {
    std::vector<ObjectPointer> all;
    if (query.elementClass == music::LibraryPlaylist)
        all.push_back(std::make_shared<PlaylistObject>(m_library, QStringLiteral("Library"), true));
    else if (query.elementClass == music::UserPlaylist || query.elementClass == music::Playlist)
        for (const QString& name : m_library->playlists)
            all.push_back(std::make_shared<PlaylistObject>(m_library, name, false));
    else
        throw Error::noSuchObject();
    if (query.filter)
        std::erase_if(all, [&](const ObjectPointer& each) { return !query.filter->matches(*each); });
    const auto [first, last] = query.within(static_cast<qint64>(all.size()));
    return {all.begin() + first, all.begin() + last};
}

Value FakeMusic::perform(Term command, const Value& direct, const Parameters& parameters) {
    QString line = words().commandName(command);
    if (!direct.isNothing())
        line += QLatin1Char(' ') + describe(direct);
    for (const auto& [code, value] : parameters)
        line += QStringLiteral(" once ") + describe(value);
    m_library->record.append(line);
    if (command == script::terms::Launch)
        m_library->running = true;
    return {};
}

const script::Terminology& FakeMusic::words() {
    static const script::Terminology terminology = [] {
        script::Terminology t;
        t.addClass(QStringLiteral("track"), QStringLiteral("tracks"), music::Track)
            .addClass(QStringLiteral("library playlist"), QStringLiteral("library playlists"),
                      music::LibraryPlaylist)
            .addClass(QStringLiteral("user playlist"), QStringLiteral("user playlists"), music::UserPlaylist)
            .addClass(QStringLiteral("playlist"), QStringLiteral("playlists"), music::Playlist)
            .addClass(QStringLiteral("artwork"), QStringLiteral("artworks"), music::Artwork);
        const std::pair<const char*, Term> properties[] = {
            {"current track", music::CurrentTrack},
            {"player state", music::PlayerState},
            {"player position", music::PlayerPosition},
            {"sound volume", music::SoundVolume},
            {"shuffle enabled", music::ShuffleEnabled},
            {"album", music::Album},
            {"artist", music::Artist},
            {"track number", music::TrackNumber},
            {"disc number", music::DiscNumber},
            {"disc count", script::term("pDsC")},
            {"year", script::term("pYr ")},
            {"grouping", script::term("pGrp")},
            {"kind", script::term("pKnd")},
            {"comment", script::term("pCmt")},
            {"data", music::Data},
            {"duration", music::Duration},
            {"genre", script::term("pGen")},
            {"bit rate", script::term("pBRt")},
            {"size", script::term("pSiz")},
            {"sample rate", script::term("pSRt")},
            {"compilation", music::Compilation},
            {"container", music::Container},
            {"location", music::Location},
        };
        for (const auto& [words, code] : properties)
            t.addProperty(QString::fromLatin1(words), code);
        t.addEnumerator(QStringLiteral("playing"), script::term("kPSP"))
            .addEnumerator(QStringLiteral("paused"), script::term("kPSp"))
            .addEnumerator(QStringLiteral("stopped"), script::term("kPSS"))
            .addCommand(QStringLiteral("play"), script::term("Play"),
                        {{QStringLiteral("once"), script::term("POne")}})
            .addCommand(QStringLiteral("pause"), script::term("Paus"))
            .addCommand(QStringLiteral("next track"), script::term("Next"))
            .addCommand(QStringLiteral("previous track"), script::term("Prev"));
        return t;
    }();
    return terminology;
}

const script::Terminology* FakeProvider::terminology(const QString& name) const {
    return name.compare(QLatin1String("Music"), Qt::CaseInsensitive) == 0 ? &FakeMusic::words() : nullptr;
}

std::shared_ptr<script::Application> FakeProvider::application(const QString& name) {
    return terminology(name) ? std::make_shared<FakeMusic>(m_library) : nullptr;
}

} // namespace tarnwick::fakes
