#include "controls/preferences/PreferencesWindowOpener.h"

#include <QQmlComponent>
#include <QScreen>

namespace tarnwick {

namespace {

/// What is left free for the desktop's own title and border until they are known.
constexpr QMargins usualFrame(6, 32, 6, 6);

/// Grows the window to its content, in the middle of its screen and, with `frame` round it, no larger than
/// that.
void grow(QQuickWindow& window, const QMargins& frame) {
    const QRect free = window.screen()->availableGeometry().marginsRemoved(frame);
    QRect place({}, window.property("contentSize").toSize().boundedTo(free.size()));
    place.moveCenter(free.center());
    window.setGeometry(place);
}

/// Puts the window wholly onto its screen, should its frame be wider than usual.
void keepOnScreen(QQuickWindow& window) {
    if (!window.screen()->availableGeometry().contains(window.frameGeometry()))
        grow(window, window.frameMargins());
}

} // namespace

PreferencesWindowOpener::PreferencesWindowOpener(QQmlEngine& engine, Settings& settings,
                                                 PreferencesModel& model,
                                                 std::function<void(QQuickWindow&)> opened)
    : m_engine(engine), m_settings(settings), m_model(model), m_opened(std::move(opened)) {}

PreferencesWindowOpener::~PreferencesWindowOpener() { delete m_window; }

void PreferencesWindowOpener::open() {
    if (!m_window) {
        QQmlComponent component(&m_engine,
                                QUrl(QStringLiteral("qrc:/qt/qml/Tarnwick/Controls/PreferencesWindow.qml")));
        auto* made = component.createWithInitialProperties(
            {{QStringLiteral("settings"), QVariant::fromValue(&m_settings)},
             {QStringLiteral("model"), QVariant::fromValue(&m_model)}});
        m_window = qobject_cast<QQuickWindow*>(made);
        if (!m_window) {
            qWarning("%s", qPrintable(component.errorString()));
            delete made;
            return;
        }
        QQuickWindow* window = m_window;
        QObject::connect(window, &QWindow::visibleChanged, window, [this, window](bool isVisible) {
            if (isVisible)
                return;
            m_window = nullptr; // closed: the next press opens another one
            m_model.cancelRemoval();
            window->deleteLater();
        });
        if (m_opened)
            m_opened(*m_window);
        grow(*m_window, usualFrame);
        QObject::connect(
            window, &QQuickWindow::frameSwapped, window, [window] { keepOnScreen(*window); },
            Qt::ConnectionType(Qt::QueuedConnection | Qt::SingleShotConnection));
    }
    m_window->show();
    m_window->raise();
    m_window->requestActivate();
}

} // namespace tarnwick
