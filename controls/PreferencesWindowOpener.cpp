#include "controls/PreferencesWindowOpener.h"

#include <QQmlComponent>

namespace tarnwick {

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
            window->deleteLater();
        });
        if (m_opened)
            m_opened(*m_window);
    }
    m_window->show();
    m_window->raise();
    m_window->requestActivate();
}

} // namespace tarnwick
