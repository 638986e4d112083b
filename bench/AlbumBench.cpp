// A folder of 2,000 tagged files, against TagLib alone; and a player that signals a thousand times a second.
// Usage: album_bench [FILES]

#include "platform/dispatch/SystemDispatcher.h"
#include "platform/images/ImageStore.h"
#include "platform/musicapp/mpris/MprisMusic.h"
#include "platform/musicapp/tags/AlbumFolder.h"
#include "platform/musicapp/tags/TagCache.h"
#include "tests/fakes/FakePlayer.h"
#include "tests/fakes/MusicProbe.h"
#include "tests/fakes/PrivateBus.h"

#include <QDir>
#include <QEventLoop>
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
        musicapp::TagCache cache;
        const auto facts = cache.read(first);
        auto begin = Clock::now();
        const auto tracks = musicapp::readAlbum(*facts, *facts, cache, [] { return false; });
        ours[run] = milliseconds(begin);
        const int read = cache.readCount();
        begin = Clock::now();
        musicapp::readAlbum(*facts, *facts, cache, [] { return false; });
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

void measureFlood() {
    constexpr int signalsASecond = 1000;
    constexpr int seconds = 10;
    const PrivateBus bus;
    dispatch::SystemDispatcher dispatcher;
    images::ImageStore images(dispatcher);
    FakePlayer player(bus.address(), "fake");
    player.put(playing(metadata("0", "Nevia", "Lontano")));
    player.appear();
    musicapp::MprisMusic music({.busAddress = bus.address()}, dispatcher, images);
    MusicProbe probe(music);
    music.waitUntilReady(5s);
    const double process = cpuSeconds(CLOCK_PROCESS_CPUTIME_ID);
    std::thread sender([&] {
        const auto begin = Clock::now();
        for (int i = 1; i <= signalsASecond * seconds; ++i) {
            std::this_thread::sleep_until(begin + i * 1ms);
            player.signal({{"Metadata", metadata(QString::number(i), "Nevia", "Lontano")}});
        }
    });
    const double main = cpuSeconds(CLOCK_THREAD_CPUTIME_ID);
    QEventLoop loop;
    QTimer::singleShot(seconds * 1000, &loop, &QEventLoop::quit);
    loop.exec();
    const double mainUsed = cpuSeconds(CLOCK_THREAD_CPUTIME_ID) - main;
    sender.join();
    const bool isLast =
        probe.eventually([&] { return probe.title() == QString::number(signalsASecond * seconds); });
    std::printf(
        "%d signals a second for %d s: main thread %.1f %% of a core, the whole process with the sender "
        "%.1f %%; %d announcements; last state shown: %s\n",
        signalsASecond, seconds, mainUsed / seconds * 100,
        (cpuSeconds(CLOCK_PROCESS_CPUTIME_ID) - process) / seconds * 100, probe.announcements(),
        isLast ? "yes" : "NO");
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    measureAlbum(argc > 1 ? std::atoi(argv[1]) : 2000);
    measureFlood();
    return 0;
}
