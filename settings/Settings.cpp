#include "settings/Settings.h"

#include <QPointer>

namespace tarnwick {

Settings::Settings(Parts parts) : m_parts(std::move(parts)), m_screenSaverManager(m_parts.power) {
#define TARNWICK_ROW(Type, name, setter, initial, effect)                                                    \
    m_##name = fromStored<Type>(m_parts.defaults.value(QStringLiteral(#name))).value_or(m_##name);
    TARNWICK_PREFERENCES(TARNWICK_ROW)
#undef TARNWICK_ROW
    connect(&m_parts.defaults, &defaults::Defaults::changedElsewhere, this, &Settings::follow);
    m_parts.dispatcher.mainQueue().async([self = QPointer(this)] {
        if (self)
            self->startUp();
    });
}

#define TARNWICK_ROW(Type, name, setter, initial, effect)                                                    \
    void Settings::setter(const Type& value) {                                                               \
        if (m_##name == value)                                                                               \
            return;                                                                                          \
        m_##name = value;                                                                                    \
        Q_EMIT name##Changed();                                                                              \
        m_parts.defaults.set(QStringLiteral(#name), toStored(m_##name));                                     \
        effect();                                                                                            \
    }
TARNWICK_PREFERENCES(TARNWICK_ROW)
#undef TARNWICK_ROW

/// A value that was taken away, or is none for this key, means the default.
void Settings::follow(const QString& key) {
    const auto stored = m_parts.defaults.value(key);
#define TARNWICK_ROW(Type, name, setter, initial, effect)                                                    \
    if (const Type value = fromStored<Type>(stored).value_or(initial);                                       \
        key == QStringLiteral(#name) && value != m_##name) {                                                 \
        m_##name = value;                                                                                    \
        Q_EMIT name##Changed();                                                                              \
        effect();                                                                                            \
    }
    TARNWICK_PREFERENCES(TARNWICK_ROW)
#undef TARNWICK_ROW
}

void Settings::startUp() {
    if (m_preventSleep)
        m_screenSaverManager.preventSleep();
    applyWindowLevel();
    const QString key = QStringLiteral("hasLaunchedBefore");
    if (m_parts.defaults.get<bool>(key).value_or(false))
        return;
    m_parts.defaults.set(key, true);
    if (!m_launchInFullscreen)
        return;
    m_parts.dispatcher.mainQueue().async([&windows = m_parts.windows] {
        if (auto* window = windows.mainWindow(); window && !window->isFullScreen())
            window->toggleFullScreen();
    });
}

void Settings::applyPreventSleep() {
    if (m_preventSleep)
        m_screenSaverManager.preventSleep();
    else
        m_screenSaverManager.allowSleep();
}

void Settings::applyLaunchAtLogin() {
    if (!m_parts.launchAgent)
        return;
    if (m_launchAtLogin)
        m_parts.launchAgent->installLaunchAgent();
    else
        m_parts.launchAgent->removeLaunchAgent();
}

void Settings::applyRandomBackground() {
    if (m_randomBackgroundEnabled)
        setBackgroundOption(BackgroundOption::Random);
}

void Settings::applyAppIcon() {
    if (m_autoUpdateAppIcon) {
        Q_EMIT m_parts.windows.updateAppIcon();
    } else if (const QImage icon = m_parts.applicationImage ? m_parts.applicationImage() : QImage();
               !icon.isNull()) {
        m_parts.windows.setApplicationIcon(icon);
    }
}

void Settings::applyWindowLevel() {
    m_parts.dispatcher.mainQueue().async([self = QPointer(this)] {
        if (!self)
            return;
        if (auto* window = self->m_parts.windows.firstWindow())
            window->setLevel(self->m_isAlwaysOnTop ? windows::Level::Floating : windows::Level::Normal);
    });
}

} // namespace tarnwick
