// What the turning disc costs beside a window that does nothing but turn a picture of the same size at the
// same rate, and whether anything is drawn while the disc stands still. Each run is a process of its own:
// spin_bench runs itself as `spin_bench disc|bare|still SECONDS` under the renderer of its environment.

#include "visuals/RotatingCDLayerView.h"

#include <QGuiApplication>
#include <QPainter>
#include <QProcess>
#include <QQuickWindow>
#include <QSGImageNode>
#include <QTimer>
#include <sys/resource.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>

using namespace tarnwick;

namespace {

constexpr int Side = 600;
constexpr int Rounds = 5;
constexpr int Warmup = 500; // milliseconds, for the first frames and the picture

double processSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& t) {
        return static_cast<double>(t.tv_sec) + 1e-6 * static_cast<double>(t.tv_usec);
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// The least that can turn a picture: one node, one timer.
class BarePicture : public QQuickItem {
public:
    explicit BarePicture(QQuickItem* parent)
        : QQuickItem(parent), m_image(Side, Side, QImage::Format_ARGB32_Premultiplied) {
        setFlag(ItemHasContents);
        setTransformOrigin(Center);
        setSize({Side, Side});
        m_image.fill(Qt::transparent);
        QPainter painter(&m_image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setBrush(QGradient(QGradient::NightFade));
        painter.drawEllipse(1, 1, Side - 2, Side - 2);
    }

protected:
    QSGNode* updatePaintNode(QSGNode* old, UpdatePaintNodeData* /*data*/) override {
        auto* node = static_cast<QSGImageNode*>(old);
        if (!node) {
            node = window()->createImageNode();
            node->setOwnsTexture(true);
            node->setFiltering(QSGTexture::Linear);
            node->setTexture(window()->createTextureFromImage(m_image, QQuickWindow::TextureHasAlphaChannel));
            node->setRect(boundingRect());
        }
        return node;
    }

private:
    QImage m_image;
};

/// Prints the frames and the CPU seconds of one run.
int run(const QString& what, int milliseconds) {
    QQuickWindow window;
    window.resize(1200, Side);
    QTimer tick;
    if (what == QLatin1String("bare")) {
        auto* picture = new BarePicture(window.contentItem());
        tick.setTimerType(Qt::PreciseTimer);
        QObject::connect(&tick, &QTimer::timeout, picture,
                         [picture] { picture->setRotation(picture->rotation() + 9.14); });
        tick.start(33);
    } else {
        auto* disc = new RotatingCDLayerView(window.contentItem());
        disc->setNsImage(DiscImage::named(Catalogue::shared(), QStringLiteral("33Vinyl")));
        disc->setSide(Side);
        disc->setRotateCDDuringPlayback(true);
        disc->setIsPlaying(what == QLatin1String("disc"));
    }
    std::atomic<int> frames = 0;
    QObject::connect(
        &window, &QQuickWindow::frameSwapped, &window, [&] { ++frames; }, Qt::DirectConnection);
    window.show();
    double begin = 0;
    QTimer::singleShot(Warmup, [&] {
        frames = 0;
        begin = processSeconds();
    });
    QTimer::singleShot(Warmup + milliseconds, [&] {
        std::printf("%d %.6f\n", frames.load(), processSeconds() - begin);
        QGuiApplication::quit();
    });
    return QGuiApplication::exec();
}

struct Result {
    int frames = 0;
    double seconds = 0;
};

Result measured(const QString& what, const QString& milliseconds) {
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationFilePath(), {what, milliseconds});
    process.waitForFinished(-1);
    const QList<QByteArray> words = process.readAllStandardOutput().simplified().split(' ');
    return words.size() == 2 ? Result{words[0].toInt(), words[1].toDouble()} : Result{};
}

} // namespace

int main(int argc, char** argv) {
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 3)
        return run(arguments[1], arguments[2].toInt());

    std::array<double, Rounds> ratios{};
    for (double& ratio : ratios) {
        const Result bare = measured(QStringLiteral("bare"), QStringLiteral("4000"));
        const Result disc = measured(QStringLiteral("disc"), QStringLiteral("4000"));
        if (bare.frames == 0 || disc.frames == 0)
            return 1;
        const double bareFrame = 1e3 * bare.seconds / bare.frames;
        const double discFrame = 1e3 * disc.seconds / disc.frames;
        ratio = discFrame / bareFrame;
        std::printf("bare %d frames, %.2f ms each; disc %d frames, %.2f ms each; ratio %.2f\n", bare.frames,
                    bareFrame, disc.frames, discFrame, ratio);
        std::fflush(stdout);
    }
    std::sort(ratios.begin(), ratios.end());
    const Result still = measured(QStringLiteral("still"), QStringLiteral("10000"));
    std::printf("median ratio %.2f; frames of a still disc in 10 s: %d\n", ratios[Rounds / 2], still.frames);
    return 0;
}
