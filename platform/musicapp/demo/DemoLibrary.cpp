#include "platform/musicapp/demo/DemoLibrary.h"

#include <array>
#include <span>

// The invented music, as data.

namespace tarnwick::musicapp {

namespace {

struct Song {
    const char* title;
    int seconds;
    const char* artist = nullptr;  ///< of a compilation
    const char* comment = nullptr; ///< where it differs from the album's
};

struct Encoding {
    const char* kind;
    const char* suffix;
    int bitRate;
    int sampleRate;
};

struct Album {
    const char* title;
    const char* artist;
    const char* grouping;
    const char* genre;
    const char* comment;
    int year;
    Encoding encoding;
    DemoCover cover;
    std::vector<std::vector<Song>> discs;
    bool compilation = false;
};

constexpr Encoding alac96{"Apple Lossless audio file", "m4a", 1018, 96000};
constexpr Encoding aac{"AAC audio file", "m4a", 256, 44100};
constexpr Encoding mp3{"MPEG audio file", "mp3", 320, 44100};
constexpr Encoding flac{"FLAC audio file", "flac", 912, 44100};
constexpr Encoding wav{"WAV audio file", "wav", 2304, 48000};
constexpr Encoding aiff{"AIFF audio file", "aiff", 1411, 44100};
constexpr Encoding opus{"Opus audio file", "opus", 160, 48000};

std::vector<Album> makeAlbums() {
    return {
        {"Lontano",
         "Nevia Corallo",
         "Notturni per pianoforte e archi",
         "Jazz",
         "Italy, Japan, Germany. Registrato dal vivo a Trieste nel maggio 2019, missaggio di Ada Ferri, "
         "pianoforte Bösendorfer.",
         2019,
         alac96,
         DemoCover::Dusk,
         {{{"Alba sul Carso", 254},
           {"Tre finestre", 312},
           {"La neve di aprile", 287},
           {"Notturno per Ada", 401},
           {"Perché no?", 226},
           {"Il traghetto delle sei", 348}},
          {{"Barcola, mezzanotte", 295},
           {"Valzer del faro", 233},
           {"Acqua alta", 372},
           {"Le luci lontane del porto", 318},
           {"Più piano", 264},
           {"Città senza nome", 419},
           {"Lontano", 505}}}},
        {"遠い海",
         "新井みずきトリオ",
         "ピアノと弦のための",
         "Jazz",
         "Japan. 二〇一九年五月、東京にて録音。",
         2016,
         flac,
         DemoCover::Sea,
         {{{"朝の桟橋", 276},
           {"雨の停車場", 331},
           {"遠い海へ、もう一度だけ手紙を書く夜に", 412},
           {"塩の道", 248},
           {"Lighthouse Keeper’s Waltz", 301},
           {"白い帆", 359},
           {"遠い海", 487}}}},
        {"Quadri",
         "Tullio Marchesan",
         "Studi",
         "Elettronica",
         "Italy / France",
         2008,
         mp3,
         DemoCover::Shapes,
         {{{"Rosso su blu", 204},
           {"Cerchio, quadrato", 191},
           {"Giallo cadmio", 243},
           {"Angolo retto", 178},
           {"Diagonale \"lenta\"", 266},
           {"Carta da pacchi", 219},
           {"Quadri di un’esposizione mancata", 352},
           {"Cornice", 97}}}},
        {"Stanza bianca",
         "Orchestra da camera della Laguna",
         "Movimenti lenti",
         "Classica",
         "Italy",
         2021,
         wav,
         DemoCover::WhiteRoom,
         {{{"Concerto per due violini, archi e continuo nella sala grande: I. Andante", 438},
           {"Concerto per due violini: II. Largo", 512},
           {"Concerto per due violini: III. Allegretto", 296},
           {"Stanza bianca", 621},
           {"Congedo", 184}}}},
        {"Notte",
         "فرقة المرفأ القديم",
         "ليالي المرفأ",
         "World",
         "Lebanon, registrato a Beirut. تسجيل حي في بيروت.",
         2014,
         aac,
         DemoCover::Night,
         {{{"ليلة على الميناء البعيد", 377},
           {"Nuit sans lune", 294},
           {"Notte", 425},
           {"אור קטן", 213},
           {"Ночной трамвай", 268}}}},
        {"Marée basse, cahier bleu",
         "Colette Aubrac",
         "Carnets",
         "Chanson",
         "France",
         1994,
         flac,
         DemoCover::Pier,
         {{{"Les pieux dans la brume", 231},
           {"Été indien", 257},
           {"Où vont les bouées", 189},
           {"Cœur à marée basse", 302},
           {"Ça ira mieux demain", 214},
           {"Noël au sémaphore", 276},
           {"Le phare éteint", 341}}}},
        {"Strade d’Europa",
         "Artisti vari",
         "Raccolte",
         "Pop",
         "Italy",
         2011,
         mp3,
         DemoCover::Crossing,
         {{{"Piazza vuota", 208, "Gli Ombrelli", "Italy"},
           {"Trambahn 18", 193, "Mia Vogelsang", "Germany"},
           {"Rua do açúcar", 247, "Inês Carvalhal", "Portugal"},
           {"Łódź o świcie", 226, "Wiśniowy Sad", "Poland"},
           {"Þoka yfir höfninni", 283, "Hrafnhildur Sól", "Iceland"},
           {"Smørrebrød & Stjerner", 175, "Søndagsklubben", "Denmark"},
           {"Železniční stanice", 239, "Kvarteto Mlýn", "Czech Republic"},
           {"Οδός Ονείρων 7", 264, "Το Καφενείο", "Greece"},
           {"Utca, éjfél után", 218, "Kőrösi Ödön", "Hungary"},
           {"Calle del Pez", 201, "Los Faroles", "Spain"},
           {"Ulița mare", 232, "Brândușa Ionescu", "Romania"},
           {"A tired tram called Joe", 187, "The Ferrymen’s Daughters", "Ireland"}}},
         true},
        {"Straßenlaternen im Regen",
         "Jörn Österlind Quartett",
         "Nachtstücke",
         "Jazz",
         "Sweden, Germany",
         2003,
         alac96,
         DemoCover::CityLights,
         {{{"Straßenlaternen im Regen", 366},
           {"Grüne Welle", 254},
           {"Överallt ljus", 318},
           {"Letzte Bahn, erste Bahn", 421},
           {"Pfützenwalzer", 237},
           {"Große Müdigkeit", 389}}}},
        {"Se il vento gira prima di sera, chi resta sul molo conta le barche e chi parte non conta più "
         "niente",
         "Coro e Banda di San Giacomo, Ada Ferri, Nevia Corallo, Tullio Marchesan",
         "Ballate popolari dell’alto Adriatico raccolte, trascritte e armonizzate per coro misto e banda",
         "Musica popolare e canzone d’autore delle isole e delle coste",
         "Italy, Slovenia, Croatia. Registrato in tre serate nella palestra della scuola elementare di San "
         "Giacomo in Monte, con le finestre aperte, il campanile che suona le ore e un cane che non voleva "
         "saperne di tacere; lo ringraziamo lo stesso. Testi originali dal quaderno di Bepi il calafato, "
         "trovato in soffitta nel 1978 e qui cantato per intero per la prima volta.",
         2017,
         aac,
         DemoCover::Typography,
         {{{"Se il vento gira prima di sera, chi resta sul molo conta le barche e chi parte non conta più "
            "niente: "
            "ballata in sette parti per coro misto, banda di paese, due organetti e una voce che arriva "
            "tardi",
            754},
           {"Donaudampfschifffahrtselektrizitätenhauptbetriebswerkbauunterbeamtengesellschaft", 233},
           {"O", 121},
           {"Ninna nanna della barca vecchia", 268}}}},
        {"Sin título (cinta de garaje)",
         "Los Faroles",
         "Maquetas",
         "Rock",
         "Spain",
         1989,
         opus,
         DemoCover::None,
         {{{"¿Quién apagó la luz?", 187},
           {"Mañana será jueves", 214},
           {"Cigüeñas", 246},
           {"Ruido, corazón", 172}}}},
        {"Nastro del sabato",
         "Duo Ginestra",
         "Cassette",
         "Folk",
         "Italy, Switzerland",
         1982,
         aiff,
         DemoCover::Stripes,
         {{{"Lato A: la corriera", 223},
           {"Fisarmonica e geranio", 198},
           {"Gelato al limone, due cucchiaini", 241},
           {"Lato B: il ritorno", 267},
           {"Sabato è già domenica", 209}}}},
    };
}

QString utf8(const char* text) { return QString::fromUtf8(text); }

/// A file name without what a file system would not take.
QString fileName(QString text) { return text.replace(u'/', u'-').left(80); }

Track makeTrack(const Album& album, std::size_t disc, std::size_t number, const QString& folder) {
    const Song& song = album.discs[disc][number];
    Track track;
    track.name = utf8(song.title);
    track.artist = utf8(song.artist != nullptr ? song.artist : album.artist);
    track.album = utf8(album.title);
    track.genre = utf8(album.genre);
    track.grouping = utf8(album.grouping);
    track.comment = utf8(song.comment != nullptr ? song.comment : album.comment);
    track.kind = utf8(album.encoding.kind);
    track.year = album.year;
    track.trackNumber = static_cast<int>(number) + 1;
    track.discNumber = static_cast<int>(disc) + 1;
    track.discCount = static_cast<int>(album.discs.size());
    track.compilation = album.compilation;
    track.duration = song.seconds;
    track.bitRate = album.encoding.bitRate;
    track.sampleRate = album.encoding.sampleRate;
    track.size = qint64{song.seconds} * track.bitRate * 1000 / 8 + 61440;
    track.path = QStringLiteral("%1/%2-%3 %4.%5")
                     .arg(folder)
                     .arg(track.discNumber)
                     .arg(track.trackNumber, 2, 10, QLatin1Char('0'))
                     .arg(fileName(track.name), QLatin1String(album.encoding.suffix));
    return track;
}

/// Tracks by the dozen, for measurements.
void addGenerated(std::vector<Track>& tracks, int count) {
    constexpr int perAlbum = 12;
    for (int i = 0; i < count; ++i) {
        const int album = i / perAlbum;
        Track track;
        track.name = QStringLiteral("Brano %1").arg(i);
        track.artist = QStringLiteral("Artista %1").arg(album % 997);
        track.album = QStringLiteral("Album %1").arg(album);
        track.kind = utf8(flac.kind);
        track.trackNumber = i % perAlbum + 1;
        track.discNumber = 1;
        track.discCount = 1;
        track.duration = 180 + i % 240;
        tracks.push_back(std::move(track));
    }
}

DemoPlaylist makePlaylist(const QString& name, std::vector<int> tracks) {
    return {{QStringLiteral("/playlist/") + name, name}, std::move(tracks)};
}

/// The numbers of the tracks of these albums, one album after the other.
std::vector<int> tracksOf(const Library& library, std::span<const char* const> albums) {
    std::vector<int> numbers;
    for (const char* album : albums) {
        const auto found = library.ofAlbum(utf8(album));
        numbers.insert(numbers.end(), found.begin(), found.end());
    }
    return numbers;
}

std::vector<DemoPlaylist> makePlaylists(const Library& library, int realTracks, DemoScene scene) {
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
                playlists.push_back(makePlaylist(QStringLiteral("%1 %2").arg(utf8(month)).arg(year), all));
        }
        playlists.push_back(makePlaylist(
            QStringLiteral("Tutto quello che suonavamo in cucina l’anno in cui non smetteva più di piovere"),
            all));
    }
    return playlists;
}

struct SceneStart {
    const char* album;
    int number; ///< among the album's tracks, from 0
    double position;
};

SceneStart startOf(DemoScene scene) {
    switch (scene) {
    case DemoScene::TwoDiscs:
        return {"Lontano", 1, 74};
    case DemoScene::Cassette:
        return {"Nastro del sabato", 1, 52};
    case DemoScene::NoCover:
        return {"Sin título (cinta de garaje)", 0, 41};
    case DemoScene::LongTexts:
        return {"Se il vento gira prima di sera, chi resta sul molo conta le barche e chi parte non conta "
                "più niente",
                0, 187};
    default:
        return {"Lontano", 9, 161};
    }
}

} // namespace

DemoLibrary makeDemoLibrary(DemoScene scene, int additionalTracks, const QString& cassetteFolder) {
    DemoLibrary result;
    std::vector<Track> tracks;
    for (const Album& album : makeAlbums()) {
        result.covers.insert(utf8(album.title), album.cover);
        const QString folder = album.cover == DemoCover::Stripes && !cassetteFolder.isEmpty()
                                   ? cassetteFolder
                                   : QStringLiteral("/Tarnwick/%1/%2")
                                         .arg(fileName(utf8(album.artist)), fileName(utf8(album.title)));
        for (std::size_t disc = 0; disc < album.discs.size(); ++disc) {
            for (std::size_t number = 0; number < album.discs[disc].size(); ++number)
                tracks.push_back(makeTrack(album, disc, number, folder));
        }
    }
    const int realTracks = static_cast<int>(tracks.size());
    addGenerated(tracks, additionalTracks);
    for (std::size_t i = 0; i < tracks.size(); ++i)
        tracks[i].id = QString::number(i);
    result.library = std::make_shared<const Library>(std::move(tracks));
    result.playlists = makePlaylists(*result.library, realTracks, scene);

    const SceneStart start = startOf(scene);
    result.sceneTrack = result.library->ofAlbum(utf8(start.album))[static_cast<std::size_t>(start.number)];
    result.scenePosition = start.position;
    for (std::size_t i = 0; i < result.playlists.size() && result.scenePlaylist < 0; ++i) {
        const std::vector<int>& numbers = result.playlists[i].tracks;
        if (std::find(numbers.begin(), numbers.end(), result.sceneTrack) != numbers.end())
            result.scenePlaylist = static_cast<int>(i);
    }
    return result;
}

} // namespace tarnwick::musicapp
