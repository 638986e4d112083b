// A player on a private bus: from its last signal of a track change to the fields assigned, and the
// `status` command from start to exit.

#include "music/MusicSource.h"
#include "platform/dispatch/SystemDispatcher.h"
#include "players/mpris/MprisMusic.h"
#include "script/run/Host.h"
#include "script/run/Interpreter.h"
#include "tests/fakes/FakePlayer.h"
#include "tests/fakes/PrivateBus.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QProcess>
#include <benchmark/benchmark.h>

namespace tarnwick {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

class SilentHost : public script::Host {
public:
    void log(const QString&) override {}
    void displayDialog(const QString&) override {}
    void delay(std::chrono::nanoseconds) override {}
};

/// The 100 ms of quiet that end a burst are part of the figure.
void trackChange(benchmark::State& state) {
    PrivateBus bus;
    FakePlayer player(bus.address(), QStringLiteral("bench"));
    player.put(playing(metadata(QStringLiteral("0"), QStringLiteral("A"), QStringLiteral("B"))));
    player.appear();
    dispatch::SystemDispatcher dispatcher;
    auto images = std::make_shared<images::ImageStore>(dispatcher);
    players::MprisMusic music({.busAddress = bus.address()}, dispatcher, *images);
    dispatcher.runAndWait(dispatch::QualityOfService::Background, [&] { music.waitUntilReady(5s); });
    script::Interpreter interpreter(music.scripting());
    SilentHost host;
    auto runner = std::make_shared<ScriptRunner>(
        dispatcher, [&](const QString& text) { return interpreter.run(text, host); }, [](const QString&) {});
    {
        MusicSource source({dispatcher, runner, images, std::nullopt, [](const QString&) {}});
        source.follow(music);
        QEventLoop loop;
        QString wanted;
        source.changes().watch([&] { return source.currentTrackTitle(); },
                               [&](const QString&, const QString& title) {
                                   if (title == wanted)
                                       loop.quit();
                               });
        int number = 0;
        for (auto _ : state) {
            wanted = QString::number(++number);
            player.signal(playing(metadata(wanted, QStringLiteral("A"), QStringLiteral("B"))));
            const auto start = Clock::now();
            if (source.currentTrackTitle() != wanted)
                loop.exec();
            state.SetIterationTime(secondsSince(start));
        }
        dispatcher.shutDown();
    }
}
BENCHMARK(trackChange)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(20);

void statusCommand(benchmark::State& state) {
    PrivateBus bus;
    FakePlayer player(bus.address(), QStringLiteral("bench"));
    player.put(playing(metadata(QStringLiteral("Title"), QStringLiteral("A"), QStringLiteral("B"))));
    player.appear();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), bus.address());
    for (auto _ : state) {
        QProcess process;
        process.setProcessEnvironment(environment);
        const auto start = Clock::now();
        process.start(QCoreApplication::applicationDirPath() + QStringLiteral("/../tarnwick"),
                      {QStringLiteral("status"), QStringLiteral("--json")});
        process.waitForFinished();
        state.SetIterationTime(secondsSince(start));
        if (process.exitCode() != 0 || !process.readAllStandardOutput().contains("\"Title\""))
            state.SkipWithError("no status");
    }
}
BENCHMARK(statusCommand)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(20);

} // namespace
} // namespace tarnwick

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
