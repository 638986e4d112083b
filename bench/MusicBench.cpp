// The now-playing request: the script against libraries of two sizes, and a poll that changes nothing.

#include "music/MusicSource.h"
#include "music/Scripts.h"
#include "platform/dispatch/SystemDispatcher.h"
#include "players/demo/DemoMusic.h"
#include "script/run/Host.h"
#include "script/run/Interpreter.h"

#include <QEventLoop>
#include <QGuiApplication>
#include <benchmark/benchmark.h>

#include <ctime>

namespace tarnwick {
namespace {

using namespace std::chrono_literals;

class SilentHost : public script::Host {
public:
    void log(const QString&) override {}
    void displayDialog(const QString&) override {}
    void delay(std::chrono::nanoseconds) override {}
};

/// The demo with a library of `tracks`, and an interpreter on it.
struct Demo {
    explicit Demo(int tracks)
        : images(std::make_shared<images::ImageStore>(dispatcher)),
          music({.additionalTracks = tracks}, dispatcher, *images), interpreter(music.scripting()) {
        dispatcher.runAndWait(dispatch::QualityOfService::Background, [&] { music.waitUntilComplete(60s); });
    }
    ~Demo() { dispatcher.shutDown(); }

    dispatch::SystemDispatcher dispatcher;
    std::shared_ptr<images::ImageStore> images;
    players::DemoMusic music;
    script::Interpreter interpreter;
    SilentHost host;
};

void nowPlayingScript(benchmark::State& state) {
    Demo demo(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        const script::Outcome outcome = demo.interpreter.run(scripts::nowPlaying(), demo.host);
        if (!outcome.reply || outcome.reply->numberOfItems() != 20)
            state.SkipWithError("no reply");
    }
}
BENCHMARK(nowPlayingScript)->Arg(1'000)->Arg(100'000)->Unit(benchmark::kMicrosecond);

double threadSeconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

/// The main thread's own CPU time from the queued reply to the fields assigned and the watchers asked.
void unchangedPoll(benchmark::State& state) {
    Demo demo(1'000);
    auto runner = std::make_shared<ScriptRunner>(
        demo.dispatcher, [&](const QString& text) { return demo.interpreter.run(text, demo.host); },
        [](const QString&) {});
    MusicSource source({demo.dispatcher, runner, demo.images, std::nullopt, [](const QString&) {}});
    int woken = 0;
    source.changes().watch([&] { return source.currentAlbumArtwork(); }, [&](auto&, auto&) { ++woken; });
    source.changes().watch([&] { return source.currentTrackTitle(); }, [&](auto&, auto&) { ++woken; });
    const auto poll = [&] {
        QEventLoop loop;
        demo.dispatcher.globalQueue(dispatch::QualityOfService::Default).async([&] {
            source.fetchNowPlaying([&] { loop.quit(); });
        });
        const double before = threadSeconds();
        loop.exec();
        return threadSeconds() - before;
    };
    poll();
    const int decoded = demo.images->decodeCount(), wokenBefore = woken;
    for (auto _ : state)
        state.SetIterationTime(poll());
    state.counters["decoded"] = demo.images->decodeCount() - decoded;
    state.counters["woken"] = woken - wokenBefore;
}
BENCHMARK(unchangedPoll)->UseManualTime()->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace tarnwick

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
