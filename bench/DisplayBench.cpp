// What the display costs beside a bare window: until its first frame, while its disc turns at 1920 x 1080,
// and on the main thread when a track changes. The first two run as processes of their own, under the
// renderer of the environment: display_bench bare|display frame|turn.

#include "assets/RenderQueue.h"
#include "display/DisplayScene.h"
#include "display/TarnwickView.h"
#include "music/Scripts.h"
#include "platform/animation/PacedAnimationDriver.h"
#include "platform/defaults/MemoryDefaults.h"
#include "platform/dispatch/SystemDispatcher.h"
#include "tests/fakes/FakeWindows.h"

#include <QBuffer>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QPainter>
#include <QProcess>
#include <QQmlEngine>
#include <QQuickImageProvider>
#include <QQuickWindow>
#include <QTimer>
#include <QtQml/qqmlextensionplugin.h>
#include <sys/resource.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>

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
    Display() {
        renderqueue::setDispatcher(&m_dispatcher);
        m_settings.setRotateCDDuringPlayback(true);
        m_settings.setBackgroundOption(BackgroundOption::Gradient);
        for (int number = 0; number < changes; ++number)
            m_covers.append(cover(number));
    }
    Display(const Display&) = delete;
    Display& operator=(const Display&) = delete;
    ~Display() {
        m_dispatcher.shutDown();
        renderqueue::setDispatcher(nullptr);
    }

    QQuickItem* open(QQuickItem* parent) {
        m_root = DisplayScene::create(m_engine, m_view);
        m_root->setParentItem(parent);
        m_view.appear();
        return m_root.get();
    }

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
                         D::data(m_covers.at(number % changes)),
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

    dispatch::SystemDispatcher m_dispatcher;
    QList<QByteArray> m_covers;
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
        display = std::make_unique<Display>();
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
    return QGuiApplication::exec();
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

void compare(const char* name, const char* unit, double (*measure)(const char*), double limit) {
    std::array<double, rounds> ratios{};
    for (double& ratio : ratios) {
        const double bare = measure("bare"), display = measure("display");
        ratio = display / bare;
        std::printf("%s: bare %.2f %s, display %.2f %s\n", name, bare, unit, display, unit);
        std::fflush(stdout);
    }
    std::printf("%s: median ratio %.2f, at most %.2f is wanted\n", name, median(ratios), limit);
}

/// The longest time that the main thread computes at once while tracks change; painting apart, because no
/// window is shown.
void measureChanges() {
    Display display;
    QQuickWindow window;
    window.resize(large);
    display.open(window.contentItem());
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
            if (change > 1) // the first ones load what all others use
                longest = std::max(longest, seconds(CLOCK_THREAD_CPUTIME_ID) - begin);
        }
    }
    std::printf("track change: longest stretch on the main thread %.2f ms, at most 8 is wanted\n",
                1e3 * longest);
}

} // namespace

int main(int argc, char** argv) {
    const QGuiApplication application(argc, argv);
    std::unique_ptr<animation::PacedAnimationDriver> paced;
    if (QQuickWindow::sceneGraphBackend() == QLatin1String("software")) {
        paced = std::make_unique<animation::PacedAnimationDriver>();
        paced->install();
    }
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 3)
        return run(arguments[1], arguments[2] == QLatin1String("turn"));
    measureChanges();
    compare("first frame", "ms", firstFrame, 1.3);
    compare("turning disc", "ms of CPU a frame", perFrame, 1.5);
    return 0;
}
