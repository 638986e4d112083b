#include "app/desktop/Renderer.h"

#include "app/commandline/Answer.h"

#include <QDir>
#include <QFile>
#include <unistd.h>

namespace tarnwick {

namespace {

constexpr const char* backendVariable = "QT_QUICK_BACKEND";
const auto software = QStringLiteral("software");

/// Whether somebody has chosen a renderer already.
bool isChosen() {
    return qEnvironmentVariableIsSet(backendVariable) || qEnvironmentVariableIsSet("QSG_RHI_BACKEND") ||
           qEnvironmentVariableIsSet("QMLSCENE_DEVICE");
}

/// Never returns when it works.
void startAnew() {
    QFile file(QStringLiteral("/proc/self/cmdline"));
    if (!file.open(QIODevice::ReadOnly))
        return;
    QList<QByteArray> words = file.readAll().split('\0');
    words.removeLast(); // what follows the last end
    std::vector<char*> arguments;
    for (QByteArray& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    execv("/proc/self/exe", arguments.data());
}

} // namespace

bool Renderer::hasGraphicsCard() {
    if (qEnvironmentVariableIntValue("LIBGL_ALWAYS_SOFTWARE") != 0)
        return false;
    return !QDir(QStringLiteral("/dev/dri"))
                .entryList({QStringLiteral("renderD*")}, QDir::System)
                .isEmpty() ||
           QFile::exists(QStringLiteral("/dev/nvidiactl"));
}

Renderer::Renderer() {
    const bool hasCard = hasGraphicsCard();
    if (!hasCard && !isChosen())
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    if (hasCard && QQuickWindow::sceneGraphBackend() != software)
        return;
    // Else OpenGL on the processor brings a thread with a pace of its own, and the two quarrel.
    if (!qEnvironmentVariableIsSet("QSG_RENDER_LOOP"))
        qputenv("QSG_RENDER_LOOP", "basic");
    m_animations = std::make_unique<animation::PacedAnimationDriver>();
    m_animations->install();
}

void Renderer::guard(const QQuickWindow& window) const {
    QObject::connect(&window, &QQuickWindow::sceneGraphError, &window,
                     [](QQuickWindow::SceneGraphError, const QString& message) {
                         complain(message);
                         if (qEnvironmentVariable(backendVariable) != software) {
                             qputenv(backendVariable, software.toUtf8());
                             startAnew();
                         }
                         _exit(exitFailed); // without a picture there is no program
                     });
}

} // namespace tarnwick
