// Loading all preferences, and one assignment against a bare write, fsync and rename of the same bytes.

#include "platform/defaults/FileDefaults.h"
#include "platform/dispatch/VirtualDispatcher.h"
#include "settings/Settings.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>

namespace tarnwick {
namespace {

class NoWindows : public windows::WindowSystem {
public:
    void setApplicationIcon(const QImage&) override {}
    QList<windows::Window*> windows() const override { return {}; }
    windows::Window* mainWindow() const override { return nullptr; }
};

/// A file with every preference in it.
struct Store {
    Store() {
        defaults::FileDefaults defaults(path, dispatcher, [](const QString&) {});
        for (const Preference& preference : preferences())
            defaults.set(preference.key, preference.defaultValue);
    }

    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("defaults.json"));
    dispatch::VirtualDispatcher dispatcher;
    NoWindows windows;
};

void loadAllPreferences(benchmark::State& state) {
    Store store;
    for (auto _ : state) {
        defaults::FileDefaults defaults(store.path, store.dispatcher, [](const QString&) {});
        Settings settings({store.dispatcher, defaults, store.windows});
        benchmark::DoNotOptimize(settings.enableFlip());
    }
}
BENCHMARK(loadAllPreferences)->Unit(benchmark::kMicrosecond);

template <typename Work>
double secondsPer(int count, Work work) {
    const auto begin = std::chrono::steady_clock::now();
    for (int i = 0; i < count; ++i)
        work(i);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count() / count;
}

void bareWrite(const QByteArray& bytes, const QByteArray& path) {
    const QByteArray temporary = path + ".new";
    const int file = ::open(temporary.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (::write(file, bytes.constData(), std::size_t(bytes.size())) != bytes.size() || ::fsync(file) != 0)
        std::abort();
    ::close(file);
    ::rename(temporary.constData(), path.constData());
}

void assignment(benchmark::State& state) {
    constexpr int runs = 5, writes = 200;
    Store store;
    defaults::FileDefaults defaults(store.path, store.dispatcher, [](const QString&) {});
    Settings settings({store.dispatcher, defaults, store.windows});
    QFile file(store.path);
    if (!file.open(QIODevice::ReadOnly))
        return state.SkipWithError("no file");
    const QByteArray bytes = file.readAll();
    const QByteArray bare = QFile::encodeName(store.folder.filePath(QStringLiteral("bare")));
    std::array<double, runs> ratios{}, times{};
    for (auto _ : state) {
        for (int run = 0; run < runs; ++run) {
            const double yardstick = secondsPer(writes, [&](int) { bareWrite(bytes, bare); });
            times[run] = secondsPer(writes, [&](int i) { settings.setEnableFlip(i % 2 != 0); });
            ratios[run] = times[run] / yardstick;
        }
    }
    std::sort(ratios.begin(), ratios.end());
    std::sort(times.begin(), times.end());
    state.counters["ms"] = times[runs / 2] * 1000;
    state.counters["ratio_to_bare_write"] = ratios[runs / 2];
}
BENCHMARK(assignment)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace tarnwick

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
