// What the display costs beside a bare window: until its first frame, while its disc turns at 1920 x 1080,
// and on the main thread when a track changes; and what an hour of tracks leaves in memory. All but the
// third run as processes of their own, the first two under the renderer of the environment:
// display_bench bare|display frame|turn, display_bench display hour.

#include "canvas/RenderQueue.h"
#include "display/DisplayScene.h"
#include "display/SceneRenderer.h"
#include "display/state/TarnwickView.h"
#include "music/Scripts.h"
#include "platform/animation/PacedAnimationDriver.h"
#include "platform/animation/VirtualAnimationDriver.h"
#include "platform/defaults/MemoryDefaults.h"
#include "platform/dispatch/SystemDispatcher.h"
#include "platform/dispatch/VirtualDispatcher.h"
#include "tests/fakes/FakeWindows.h"

#include <QBuffer>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QPainter>
#include <QProcess>
#include <QQmlEngine>
#include <QQuickImageProvider>
#include <QQuickWindow>
#include <QTimer>
#include <QtQml/qqmlextensionplugin.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>
#include <mutex>

Q_IMPORT_QML_PLUGIN(BarePlugin)

using namespace tarnwick;

namespace {

constexpr int rounds = 5;
constexpr int changes = 20;
constexpr int warmup = 2500; // milliseconds, until the first album has come to rest
constexpr int measured = 4000;
constexpr QSize large(1920, 1080);
constexpr QSize small(1200, 600);

QImage disc(int side) {
    QImage picture(side, side, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(QGradient(QGradient::NightFade));
    painter.drawEllipse(1, 1, side - 2, side - 2);
    return picture;
}

class BareImages : public QQuickImageProvider {
public:
    BareImages() : QQuickImageProvider(Image) {}
    QImage requestImage(const QString&, QSize*, const QSize& size) override { return disc(size.width()); }
};

QByteArray cover(int number) {
    QImage picture(1000, 1000, QImage::Format_RGB32);
    picture.fill(QColor::fromHsv((number * 47) % 360, 160, 150));
    QPainter(&picture).fillRect(100, 100, 300 + number, 300, Qt::white);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, "JPEG");
    return bytes;
}

/// The display over a player that plays one track of an album after the other.
class Display {
public:
    /// `dispatcher` must have been shut down when the display goes.
    explicit Display(dispatch::Dispatcher& dispatcher) : m_dispatcher(dispatcher) {
        renderqueue::setDispatcher(&m_dispatcher);
        m_settings.setRotateCDDuringPlayback(true);
        m_settings.setBackgroundOption(BackgroundOption::Gradient);
    }
    Display(const Display&) = delete;
    Display& operator=(const Display&) = delete;
    ~Display() { renderqueue::setDispatcher(nullptr); }

    std::unique_ptr<QQuickItem> makeRoot() { return DisplayScene::create(m_engine, m_view); }

    void open(QQuickItem* parent) {
        m_root = makeRoot();
        m_root->setParentItem(parent);
        m_view.appear();
    }

    void appear() { m_view.appear(); }

    void next() {
        ++m_number;
        m_source.fetchNowPlaying();
    }

private:
    using D = script::Descriptor;

    script::Outcome answer(const QString& script) {
        if (script != scripts::nowPlaying())
            return {D(), std::nullopt};
        const int number = m_number;
        const auto text = [number](const char* what) {
            return D::text(QLatin1String(what) + QString::number(number));
        };
        return {D::list({text("Title "),
                         text("Artist "),
                         text("Album "),
                         D::integer(2019),
                         D::integer(4),
                         D::integer(2),
                         D::integer(2),
                         text("Group "),
                         D::text(QStringLiteral("FLAC audio file")),
                         D::text(QStringLiteral("Italy, Japan")),
                         D::data(coverOf(number)),
                         D::text(QStringLiteral("playing")),
                         D::real(300),
                         D::real(10),
                         D::list({}),
                         D::list({}),
                         D::text(QStringLiteral("Jazz")),
                         D::integer(1000),
                         D::integer(38640000),
                         D::integer(96000)}),
                std::nullopt};
    }

    /// The same bytes for each question about one track.
    QByteArray coverOf(int number) {
        const std::lock_guard lock(m_mutex);
        if (std::exchange(m_coverNumber, number) != number)
            m_cover = cover(number);
        return m_cover;
    }

    dispatch::Dispatcher& m_dispatcher;
    std::mutex m_mutex;
    int m_coverNumber = -1;
    QByteArray m_cover;
    std::atomic<int> m_number = 0;
    std::shared_ptr<images::ImageStore> m_images = std::make_shared<images::ImageStore>(m_dispatcher);
    MusicSource m_source{
        {m_dispatcher,
         std::make_shared<ScriptRunner>(
             m_dispatcher, [this](const QString& script) { return answer(script); }, [](const QString&) {}),
         m_images, std::nullopt, [](const QString&) {}}};
    defaults::MemoryDefaults m_defaults;
    windows::FakeWindows m_windows;
    Settings m_settings{{m_dispatcher, m_defaults, m_windows}};
    BackgroundManager m_background{m_dispatcher};
    TarnwickView m_view{{.dispatcher = m_dispatcher,
                         .musicSource = m_source,
                         .settings = m_settings,
                         .backgroundManager = m_background,
                         .windows = m_windows,
                         .images = *m_images}};
    QQmlEngine m_engine;
    std::unique_ptr<QQuickItem> m_root;
};

double seconds(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

/// Prints "frame", or the CPU seconds of a turning disc and its frames.
int run(const QString& what, bool isTurning) {
    QQuickWindow window;
    window.setColor(Qt::black);
    window.resize(isTurning ? large : small);
    dispatch::SystemDispatcher dispatcher;
    std::unique_ptr<Display> display;
    QQmlEngine engine;
    std::unique_ptr<QQuickItem> bare;
    if (what == QLatin1String("bare")) {
        engine.addImageProvider(QStringLiteral("bare"), new BareImages);
        bare = DisplayScene::createItem(
            engine, QUrl(QStringLiteral("qrc:/qt/qml/Bare/BareView.qml")),
            {{QStringLiteral("isTurning"), isTurning}, {QStringLiteral("side"), isTurning ? 960 : 600}});
        bare->setParentItem(window.contentItem());
        bare->setSize(window.size());
    } else {
        display = std::make_unique<Display>(dispatcher);
        display->open(window.contentItem());
    }
    int frames = 0;
    QObject::connect(&window, &QQuickWindow::frameSwapped, &window, [&] {
        ++frames;
        if (!isTurning) {
            std::puts("frame");
            std::fflush(stdout);
            QGuiApplication::quit();
        }
    });
    window.show();
    double begin = 0;
    if (isTurning) {
        QTimer::singleShot(warmup, [&] {
            frames = 0;
            begin = seconds(CLOCK_PROCESS_CPUTIME_ID);
        });
        QTimer::singleShot(warmup + measured, [&] {
            std::printf("%.6f %d\n", seconds(CLOCK_PROCESS_CPUTIME_ID) - begin, frames);
            QGuiApplication::quit();
        });
    }
    const int result = QGuiApplication::exec();
    dispatcher.shutDown();
    return result;
}

double residentMebibytes() {
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readAll().split(' ').at(1).toDouble() * static_cast<double>(sysconf(_SC_PAGESIZE)) / 0x100000;
}

/// An hour of a new album every 5 s, on a time of its own: prints the memory after ten minutes and at the
/// end.
int runHour() {
    using namespace std::chrono_literals;
    constexpr auto step = 100ms;
    constexpr int stepsOfTrack = 50;
    constexpr int stepsOfFrame = 5;
    animation::VirtualAnimationDriver animations;
    dispatch::VirtualDispatcher dispatcher;
    Display display(dispatcher);
    SceneRenderer renderer(display.makeRoot(), large);
    display.appear();
    for (int track = 1; track <= 720; ++track) {
        display.next();
        for (int i = 0; i < stepsOfTrack; ++i) {
            dispatcher.advance(step);
            animations.step(step.count());
            if (i % stepsOfFrame == 0)
                renderer.render();
        }
        if (track == 120 || track == 720)
            std::printf("%.1f\n", residentMebibytes());
    }
    return 0;
}

QList<QByteArray> child(const char* what, const char* how) {
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationFilePath(), {QLatin1String(what), QLatin1String(how)});
    process.waitForFinished(-1);
    return process.readAllStandardOutput().simplified().split(' ');
}

double firstFrame(const char* what) {
    QElapsedTimer timer;
    timer.start();
    child(what, "frame");
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

double perFrame(const char* what) {
    const auto words = child(what, "turn");
    return words.size() == 2 ? 1e3 * words[0].toDouble() / std::max(1, words[1].toInt()) : 0;
}

double median(std::array<double, rounds> values) {
    std::sort(values.begin(), values.end());
    return values[rounds / 2];
}

void compare(const char* name, const char* unit, double (*measure)(const char*), const char* remark) {
    std::array<double, rounds> ratios{};
    for (double& ratio : ratios) {
        const double bare = measure("bare"), display = measure("display");
        ratio = display / bare;
        std::printf("%s: bare %.2f %s, display %.2f %s\n", name, bare, unit, display, unit);
        std::fflush(stdout);
    }
    std::printf("%s: median ratio %.2f, %s\n", name, median(ratios), remark);
}

/// The longest time that the main thread computes at once while tracks change; painting apart, because
/// nothing is drawn.
void measureChanges() {
    dispatch::SystemDispatcher dispatcher;
    Display display(dispatcher);
    SceneRenderer renderer(display.makeRoot(), large); // which never draws
    display.appear();
    double longest = 0;
    for (int change = 0; change < changes; ++change) {
        display.next();
        QElapsedTimer time;
        time.start();
        while (time.elapsed() < 1600) {
            QTimer wake; // so that waiting ends
            wake.start(10);
            const double begin = seconds(CLOCK_THREAD_CPUTIME_ID);
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            renderer.layOut();
            if (change > 1) // the first ones load what all others use
                longest = std::max(longest, seconds(CLOCK_THREAD_CPUTIME_ID) - begin);
        }
    }
    std::printf("track change: longest stretch on the main thread %.2f ms, at most 8 is wanted\n",
                1e3 * longest);
    dispatcher.shutDown();
}

void measureHour() {
    const auto words = child("display", "hour");
    if (words.size() == 2)
        std::printf("an hour of tracks: %s MiB after ten minutes, %s at the end, %.3f of it; at most 1.05 is "
                    "wanted\n",
                    words[0].constData(), words[1].constData(), words[1].toDouble() / words[0].toDouble());
}

} // namespace

int main(int argc, char** argv) {
    const bool isHour = argc == 3 && argv[2] == QByteArrayView("hour");
    if (isHour)
        SceneRenderer::useSoftware();
    const QGuiApplication application(argc, argv);
    if (isHour)
        return runHour();
    std::unique_ptr<animation::PacedAnimationDriver> paced;
    if (QQuickWindow::sceneGraphBackend() == QLatin1String("software")) {
        paced = std::make_unique<animation::PacedAnimationDriver>();
        paced->install();
    }
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 3)
        return run(arguments[1], arguments[2] == QLatin1String("turn"));
    measureChanges();
    measureHour();
    compare("first frame", "ms", firstFrame, "which the program's splash hides: see bench/start");
    compare("turning disc", "ms of CPU a frame", perFrame, "at most 1.50 is wanted");
    return 0;
}
