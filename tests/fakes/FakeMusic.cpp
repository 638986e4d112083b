#include "tests/fakes/FakeMusic.h"

#include "players/MusicTerms.h"
#include "script/values/Coercion.h"

namespace tarnwick::fakes {

using script::ObjectPointer;
using script::Query;
using script::Term;
using script::Value;

namespace {

/// The program's words, and a command with a label, of which the program has none.
const script::Terminology& words() {
    static const script::Terminology terminology = [] {
        script::Terminology all = players::terms::music();
        return all.addCommand(QStringLiteral("play"), players::terms::Play,
                              {{QStringLiteral("once"), script::term("POne")}});
    }();
    return terminology;
}

QString describe(const Value& value) {
    return value.is(script::Kind::Object) ? value.asObject()->specifier()
                                          : script::textOf(value).value_or(QString());
}

/// The library; counts how it is asked.
class CountedPlaylist final : public script::Object {
public:
    CountedPlaylist(ObjectPointer real, std::shared_ptr<FakeLibrary> library)
        : m_real(std::move(real)), m_library(std::move(library)) {}

    Term objectClass() const override { return m_real->objectClass(); }
    QString specifier() const override { return m_real->specifier(); }
    Value property(Term property) const override { return m_real->property(property); }
    std::vector<ObjectPointer> elements(const Query& query) const override {
        ++m_library->elementCalls;
        return m_real->elements(query);
    }
    qint64 count(const Query& query) const override { return m_real->count(query); }
    std::vector<Value> values(const Query& query, Term property) const override {
        ++m_library->valuesCalls;
        return m_real->values(query, property);
    }

private:
    const ObjectPointer m_real;
    const std::shared_ptr<FakeLibrary> m_library;
};

/// The application as the program has it; takes note of what a script does to it.
class RecordedMusic final : public script::Application {
public:
    RecordedMusic(std::shared_ptr<script::Application> real, std::shared_ptr<FakeLibrary> library)
        : m_real(std::move(real)), m_library(std::move(library)) {}

    QString name() const override { return m_real->name(); }
    bool isRunning() const override { return m_real->isRunning(); }
    Value property(Term property) const override { return m_real->property(property); }
    void setProperty(Term property, const Value& value) override {
        m_library->record.append(
            QStringLiteral("set %1 to %2").arg(words().propertyName(property), describe(value)));
        m_real->setProperty(property, value);
    }
    std::vector<ObjectPointer> elements(const Query& query) const override {
        std::vector<ObjectPointer> found = m_real->elements(query);
        if (query.elementClass == players::terms::LibraryPlaylist)
            for (ObjectPointer& each : found)
                each = std::make_shared<CountedPlaylist>(each, m_library);
        return found;
    }
    Value perform(Term command, const Value& direct, const Parameters& parameters) override {
        QString line = words().commandName(command);
        if (!direct.isNothing())
            line += u' ' + describe(direct);
        for (const auto& [code, value] : parameters)
            line += QStringLiteral(" once ") + describe(value);
        m_library->record.append(line);
        return m_real->perform(command, direct, parameters);
    }

private:
    const std::shared_ptr<script::Application> m_real;
    const std::shared_ptr<FakeLibrary> m_library;
};

} // namespace

void FakeLibrary::makeIndex() {
    std::vector<players::Track> known;
    for (const FakeTrack& each : tracks) {
        players::Track& track = known.emplace_back(each.facts);
        track.name = each.name;
        track.artist = each.artist;
        track.album = each.album;
        track.path = QStringLiteral("/music/%1.flac").arg(each.name);
        track.trackNumber = each.trackNumber;
        track.discNumber = each.discNumber;
        track.compilation = each.compilation;
        track.duration = each.duration;
    }
    m_library = std::make_shared<const players::Library>(std::move(known));
}

std::shared_ptr<const players::Snapshot> FakeLibrary::snapshot() const {
    auto now = std::make_shared<players::Snapshot>();
    now->running = running;
    now->state = state;
    if (current < m_library->tracks().size())
        now->current = m_library->tracks()[current];
    if (!artwork.isNull())
        now->artwork = players::Artwork{artwork, {}};
    now->position.seconds = 12.5;
    now->volume = volume;
    now->shuffle = shuffle;
    now->library = m_library;
    for (const QString& name : playlists)
        now->playlists.push_back({{}, name});
    now->currentPlaylist = playlists.value(0);
    return now;
}

const script::Terminology* FakeProvider::terminology(const QString& name) const {
    return m_music.terminology(name) ? &words() : nullptr;
}

std::shared_ptr<script::Application> FakeProvider::application(const QString& name) {
    auto real = m_music.application(name);
    return real ? std::make_shared<RecordedMusic>(std::move(real), m_library) : nullptr;
}

} // namespace tarnwick::fakes
