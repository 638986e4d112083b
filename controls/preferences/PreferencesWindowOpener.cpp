#include "controls/preferences/PreferencesWindowOpener.h"

#include <QQmlComponent>
#include <QScreen>

namespace tarnwick {

namespace {

/// What is left free for the title bar; how high it is, is known only when the window is shown.
constexpr int titleBarHeight = 32;

/// Grows the window to its content, in the middle of its screen and no larger than that.
void grow(QQuickWindow& window) {
    const QRect free = window.screen()->availableGeometry().adjusted(0, titleBarHeight, 0, 0);
    QRect place({}, window.property("contentSize").toSize().boundedTo(free.size()));
    place.moveCenter(free.center());
    window.setGeometry(place);
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
        grow(*m_window);
    }
    m_window->show();
    m_window->raise();
    m_window->requestActivate();
}

} // namespace tarnwick
