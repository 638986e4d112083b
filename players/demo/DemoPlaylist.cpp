#include "players/demo/DemoPlaylist.h"

#include <array>
#include <span>

namespace tarnwick::players {

namespace {

DemoPlaylist makePlaylist(const QString& name, std::vector<int> tracks) {
    return {{QStringLiteral("/playlist/") + name, name}, std::move(tracks)};
}

/// The numbers of the tracks of these albums, one album after the other.
std::vector<int> tracksOf(const Library& library, std::span<const char* const> albums) {
    std::vector<int> numbers;
    for (const char* album : albums) {
        const auto found = library.ofAlbum(QString::fromUtf8(album));
        numbers.insert(numbers.end(), found.begin(), found.end());
    }
    return numbers;
}

} // namespace

std::vector<DemoPlaylist> makeDemoPlaylists(const Library& library, int realTracks, DemoScene scene) {
    static constexpr std::array evening{"Lontano", "Straßenlaternen im Regen", "遠い海"};
    static constexpr std::array coffee{"Quadri", "Sin título (cinta de garaje)", "Marée basse, cahier bleu"};
    static constexpr std::array quiet{"Stanza bianca", "Notte"};
    static constexpr std::array train{"Strade d’Europa", "Nastro del sabato"};
    static constexpr std::array sunday{"遠い海", "Stanza bianca"};
    if (scene == DemoScene::NoPlaylists)
        return {};
    std::vector<int> all(static_cast<std::size_t>(realTracks));
    for (int i = 0; i < realTracks; ++i)
        all[static_cast<std::size_t>(i)] = i;
    std::vector<DemoPlaylist> playlists;
    playlists.push_back(makePlaylist(QStringLiteral("Sere di settembre"), tracksOf(library, evening)));
    playlists.push_back(makePlaylist(QStringLiteral("Caffè del mattino"), tracksOf(library, coffee)));
    playlists.push_back(makePlaylist(QStringLiteral("Musica"), all));
    playlists.push_back(makePlaylist(QStringLiteral("Da ascoltare piano"), tracksOf(library, quiet)));
    playlists.push_back(makePlaylist(QStringLiteral("In viaggio, col \"treno\""), tracksOf(library, train)));
    playlists.push_back(makePlaylist(QStringLiteral("日曜日の午後"), tracksOf(library, sunday)));
    if (scene == DemoScene::ManyPlaylists) {
        static constexpr std::array months{"Gennaio",   "Febbraio", "Marzo",    "Aprile",
                                           "Maggio",    "Giugno",   "Luglio",   "Agosto",
                                           "Settembre", "Ottobre",  "Novembre", "Dicembre"};
        for (int year = 2019; year < 2024; ++year) {
            for (const char* month : months)
                playlists.push_back(
                    makePlaylist(QStringLiteral("%1 %2").arg(QString::fromUtf8(month)).arg(year), all));
        }
        playlists.push_back(makePlaylist(
            QStringLiteral("Tutto quello che suonavamo in cucina l’anno in cui non smetteva più di piovere"),
            all));
    }
    return playlists;
}

} // namespace tarnwick::players
