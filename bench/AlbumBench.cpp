// A folder of 2,000 tagged files, against TagLib alone; and a player that signals a thousand times a second.
// Usage: album_bench [FILES]

#include "app/program/MusicSession.h"
#include "players/tags/AlbumFolder.h"
#include "players/tags/TagCache.h"
#include "tests/fakes/FakePlayer.h"
#include "tests/fakes/PrivateBus.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>
#include <taglib/fileref.h>
#include <taglib/tag.h>
#include <taglib/tpropertymap.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <functional>
#include <thread>

using namespace tarnwick;
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

namespace {

/// Copies of one sound, each with its own tags.
bool makeAlbum(const QTemporaryDir& folder, int files) {
    const QString model = folder.filePath("model.flac");
    if (QProcess::execute("ffmpeg", {"-v", "error", "-y", "-f", "lavfi", "-i", "sine=d=2", model}) != 0)
        return false;
    QDir(folder.path()).mkpath("album");
    for (int i = 0; i < files; ++i) {
        const QString path = folder.filePath(QStringLiteral("album/%1.flac").arg(i, 5, 10, QLatin1Char('0')));
        QFile::copy(model, path);
        TagLib::FileRef file(QFile::encodeName(path).constData(), false);
        file.tag()->setTitle(("Brano " + std::to_string(i)).c_str());
        file.tag()->setArtist("Nevia Corallo");
        file.tag()->setAlbum("Lontano");
        file.tag()->setTrack(static_cast<unsigned>(i + 1));
        file.save();
    }
    return true;
}

double milliseconds(Clock::time_point since) {
    return std::chrono::duration<double, std::milli>(Clock::now() - since).count();
}

double tagLibAlone(const QTemporaryDir& folder, const QStringList& names) {
    const auto begin = Clock::now();
    std::size_t sum = 0;
    for (const QString& name : names) {
        const TagLib::FileRef file(QFile::encodeName(folder.filePath("album/" + name)).constData(), true);
        sum += file.file()->properties().size() + static_cast<std::size_t>(file.audioProperties()->bitrate());
    }
    const double time = milliseconds(begin);
    return sum > 0 ? time : 0;
}

double median(std::array<double, 5> values) {
    std::sort(values.begin(), values.end());
    return values[2];
}

void measureAlbum(int files) {
    const QTemporaryDir folder;
    if (!makeAlbum(folder, files))
        return;
    const QStringList names = QDir(folder.filePath("album")).entryList(QDir::Files, QDir::Name);
    const QString first = folder.filePath("album/" + names.first());
    tagLibAlone(folder, names); // warms the disk's cache
    std::array<double, 5> alone{};
    std::array<double, 5> ours{};
    std::array<double, 5> again{};
    int readAgain = 0;
    for (std::size_t run = 0; run < alone.size(); ++run) {
        alone[run] = tagLibAlone(folder, names);
        players::TagCache cache;
        const auto facts = cache.read(first);
        auto begin = Clock::now();
        const auto tracks = players::readAlbum(*facts, *facts, cache, [] { return false; });
        ours[run] = milliseconds(begin);
        const int read = cache.readCount();
        begin = Clock::now();
        players::readAlbum(*facts, *facts, cache, [] { return false; });
        again[run] = milliseconds(begin);
        readAgain += cache.readCount() - read;
        if (static_cast<int>(tracks.size()) != files)
            std::printf("only %zu tracks\n", tracks.size());
    }
    std::printf(
        "album of %d files: TagLib alone %.0f ms, listed %.0f ms, ratio %.2f; second look %.1f ms, %d files "
        "read again\n",
        files, median(alone), median(ours), median(ours) / median(alone), median(again), readAgain);
}

double cpuSeconds(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

/// The main thread of the display's model: the longest that it computes at once, and all of it.
struct MainThread {
    double longest = 0; ///< CPU seconds
    double sum = 0;     ///< the same

    /// Lets it work until `isEnough`, for a minute at most.
    void run(const std::function<bool()>& isEnough) {
        QTimer wake; // so that waiting ends
        wake.start(10ms);
        const auto begin = Clock::now();
        while (!isEnough() && Clock::now() - begin < 60s) {
            const double before = cpuSeconds(CLOCK_THREAD_CPUTIME_ID);
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            const double used = cpuSeconds(CLOCK_THREAD_CPUTIME_ID) - before;
            longest = std::max(longest, used);
            sum += used;
        }
    }
};

/// The model as the display has it, on a bus with one player that plays the first of `files` files.
void measureModel(int files) {
    const QTemporaryDir folder;
    if (!makeAlbum(folder, files))
        return;
    const PrivateBus bus;
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8());
    qputenv("XDG_CACHE_HOME", folder.path().toUtf8());
    qputenv("XDG_DATA_HOME", folder.path().toUtf8());
    FakePlayer player(bus.address(), "fake");
    const auto track = [&](const QString& title, int file) {
        const QString name = QStringLiteral("album/%1.flac").arg(file, 5, 10, QLatin1Char('0'));
        return metadata(title, "Nevia Corallo", "Lontano",
                        {{"xesam:url", "file://" + folder.filePath(name)}});
    };
    player.put(playing(track("Brano 0", 0)));
    player.appear();
    MusicSession session({}, {.log = [](const QString&) {}, .showDialog = [](const QString&) {}});
    MusicSource& source = session.source();
    source.follow(session.music());
    source.startUpdating();

    MainThread listing;
    bool isListed = false;
    listing.run([&] { return source.trackNames().size() == files; });
    source.fetchTracksByDisc([&] { isListed = true; });
    listing.run([&] { return isListed; });
    std::printf("a folder of %d files: longest task of the main thread %.2f ms, at most 4 is wanted\n", files,
                1e3 * listing.longest);

    constexpr int signalsASecond = 1000;
    constexpr int seconds = 10;
    std::thread sender([&] {
        const auto begin = Clock::now();
        for (int i = 1; i <= signalsASecond * seconds; ++i) {
            std::this_thread::sleep_until(begin + i * 1ms);
            player.signal({{"Metadata", track(QString::number(i), i % files)}});
        }
    });
    MainThread flood;
    const auto begin = Clock::now();
    flood.run([&] { return Clock::now() - begin > std::chrono::seconds(seconds); });
    sender.join();
    MainThread rest;
    rest.run([&] { return source.currentTrackTitle() == QString::number(signalsASecond * seconds); });
    std::printf(
        "%d signals a second for %d s: main thread %.1f %% of a core, at most 10 is wanted; last state "
        "shown: %s\n",
        signalsASecond, seconds, flood.sum / seconds * 100,
        source.currentTrackTitle() == QString::number(signalsASecond * seconds) ? "yes" : "NO");
    session.end();
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    measureAlbum(argc > 1 ? std::atoi(argv[1]) : 2000);
    measureModel(argc > 1 ? std::atoi(argv[1]) : 2000);
    return 0;
}
