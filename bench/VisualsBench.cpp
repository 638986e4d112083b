// Colours, records, flags and catalogue pictures beside what the same bytes cost anybody. Each ratio is the
// median of five runs that take turns, in CPU time of the process: Qt scales pictures on several threads.

#include "assets/Catalogue.h"
#include "visuals/CDImageOption.h"
#include "visuals/CoverAnalysis.h"
#include "visuals/FlagsManager.h"
#include "visuals/GeneratedRecord.h"

#include <QFile>
#include <QGuiApplication>
#include <QResource>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <ctime>
#include <functional>
#include <random>

namespace tarnwick {
namespace {

constexpr int Rounds = 5;

double processSeconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

double secondsOf(const std::function<void()>& work) {
    const double begin = processSeconds();
    work();
    return processSeconds() - begin;
}

double median(std::array<double, Rounds> values) {
    std::sort(values.begin(), values.end());
    return values[Rounds / 2];
}

/// Runs both in turns and reports their times and how many times as long `ours` takes.
void compare(benchmark::State& state, const std::function<void()>& ours,
             const std::function<void()>& yardstick) {
    for (auto _ : state) {
        std::array<double, Rounds> times{};
        std::array<double, Rounds> yardsticks{};
        std::array<double, Rounds> ratios{};
        for (std::size_t i = 0; i < Rounds; ++i) {
            yardsticks[i] = secondsOf(yardstick);
            times[i] = secondsOf(ours);
            ratios[i] = times[i] / yardsticks[i];
        }
        state.counters["ours_ms"] = 1e3 * median(times);
        state.counters["yardstick_ms"] = 1e3 * median(yardsticks);
        state.counters["ratio"] = median(ratios);
    }
}

const QImage& cover() {
    static const QImage image = [] {
        QImage result(3000, 3000, QImage::Format_RGBA8888);
        std::mt19937 random(1); // NOLINT: the same each time
        for (int y = 0; y < result.height(); ++y) {
            auto* row = reinterpret_cast<quint32*>(result.scanLine(y));
            for (int x = 0; x < result.width(); ++x)
                row[x] = static_cast<quint32>(random()) | 0xFF000000U;
        }
        return result;
    }();
    return image;
}

/// One pass over the same bytes: four sums in a plain loop.
void sumPass() {
    const QImage& image = cover();
    std::array<quint64, 4> sums{};
    for (int y = 0; y < image.height(); ++y) {
        const uchar* row = image.constScanLine(y);
        for (int x = 0; x < image.width(); ++x) {
            sums[0] += row[4 * x];
            sums[1] += row[4 * x + 1];
            sums[2] += row[4 * x + 2];
            sums[3] += row[4 * x + 3];
        }
    }
    benchmark::DoNotOptimize(sums);
}

void gradient(benchmark::State& state) {
    compare(
        state, [] { benchmark::DoNotOptimize(analyse(BackgroundOption::Gradient, cover())); }, sumPass);
    state.counters["yardstick_GB_per_s"] =
        static_cast<double>(cover().sizeInBytes()) / 1e6 / state.counters["yardstick_ms"];
}
BENCHMARK(gradient)->Iterations(1);

void everyStyle(benchmark::State& state) {
    compare(
        state,
        [] {
            for (const auto& entry : optionTable<BackgroundOption>)
                benchmark::DoNotOptimize(analyse(entry.option, cover()));
        },
        sumPass);
}
BENCHMARK(everyStyle)->Iterations(1);

void generatedRecord(benchmark::State& state) {
    const QSize size(1600, 1600);
    const images::Image picture = images::Image::fromPixels(cover());
    const DiscImage record = makeGeneratedRecord(Catalogue::shared(), picture, QStringLiteral("cddefault"),
                                                 standardPrint, [](auto&&) {});
    const auto base = Catalogue::shared().picture(QStringLiteral("cdblank"), size);
    const auto scaled = [&](const QImage& image) {
        benchmark::DoNotOptimize(
            image.convertToFormat(QImage::Format_ARGB32_Premultiplied)
                .scaled(size - QSize(1, 1), Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    };
    compare(
        state, [&] { benchmark::DoNotOptimize(record.render(size.width())); },
        [&] {
            scaled(cover());
            scaled(*base);
        });
}
BENCHMARK(generatedRecord)->Iterations(1);

void firstDisc(benchmark::State& state) {
    const QSize size(600, 600);
    const Catalogue& catalogue = Catalogue::shared();
    QFile file(QStringLiteral(":/tarnwick/discs/33Vinyl.webp"));
    if (!file.open(QIODevice::ReadOnly)) {
        state.SkipWithError("the disc is not there");
        return;
    }
    const QByteArray bytes = file.readAll();
    compare(
        state, [&] { benchmark::DoNotOptimize(catalogue.picture(QStringLiteral("33Vinyl"), size)); },
        [&] {
            benchmark::DoNotOptimize(
                QImage::fromData(bytes).scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
        });
}
BENCHMARK(firstDisc)->Iterations(1);

/// The slowest first picture of a kind at 64 pixels, in a program that has decoded some picture before: the
/// first decoding of all makes Qt load its formats, which is a cover's in the display.
void firstSmallPicture(benchmark::State& state) {
    const Catalogue catalogue(QStringLiteral(":/tarnwick"));
    constexpr std::array kinds{Catalogue::Kind::Flag, Catalogue::Kind::Logo, Catalogue::Kind::Symbol};
    constexpr std::array labels{"slowest_flag_ms", "slowest_logo_ms", "slowest_symbol_ms"};
    benchmark::DoNotOptimize(catalogue.picture(QStringLiteral("Spain"), QSize(8, 6)));
    for (auto _ : state) {
        for (std::size_t i = 0; i < kinds.size(); ++i) {
            double slowest = 0;
            for (const QString& name : catalogue.names(kinds[i]))
                slowest =
                    std::max(slowest, secondsOf([&] {
                                 benchmark::DoNotOptimize(catalogue.picture(name, QSize(64, 48), Qt::white));
                             }));
            state.counters[labels[i]] = 1e3 * slowest;
        }
    }
}
BENCHMARK(firstSmallPicture)->Iterations(1);

void flagImageNames(benchmark::State& state) {
    const QString line =
        QStringLiteral("Recorded live in Trieste, mixed in the United Kingdom and mastered in South "
                       "Korea; strings from the Dominican Republic, Nigeria and Romania, voices "
                       "from Abkhazia, brass from Ukraine and Montenegro, 2019")
            .left(200);
    for (auto _ : state)
        benchmark::DoNotOptimize(FlagsManager::flagImageNames(line));
    state.counters["letters"] = static_cast<double>(line.size());
}
BENCHMARK(flagImageNames);

} // namespace
} // namespace tarnwick

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
