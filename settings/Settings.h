#pragma once

#include "platform/defaults/Defaults.h"
#include "platform/dispatch/Dispatcher.h"
#include "platform/windows/Windows.h"
#include "settings/LaunchAgentManager.h"
#include "settings/Preferences.h"
#include "settings/ScreenSaverManager.h"

#include <QImage>
#include <QObject>
#include <QtQmlIntegration/qqmlintegration.h>

#include <functional>

/// Declares a preference: a reader, a setter, a signal, and a QML property.
#define TARNWICK_DECLARE_PREFERENCE(Type, name, setter, initial, effect)                                     \
public:                                                                                                      \
    Q_PROPERTY(Type name READ name WRITE setter NOTIFY name##Changed)                                        \
    const Type& name() const { return m_##name; }                                                            \
    void setter(const Type& value);                                                                          \
    Q_SIGNAL void name##Changed();                                                                           \
                                                                                                             \
private:                                                                                                     \
    Type m_##name = initial;

namespace tarnwick {

/// What the user prefers. Assigning a field publishes it, stores it at once, and has its side effect;
/// assigning the value it has does nothing. What another process stores is followed, side effects
/// included. Main thread only.
class Settings : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("There is one, and it is handed in")

    TARNWICK_PREFERENCES(TARNWICK_DECLARE_PREFERENCE)

public:
    /// What the preferences act on; everything must outlive the settings.
    struct Parts {
        dispatch::Dispatcher& dispatcher;
        defaults::Defaults& defaults;
        windows::WindowSystem& windows;
        power::PowerManager* power = nullptr;       ///< null: the display is not kept awake
        LaunchAgentManager* launchAgent = nullptr;  ///< null: nothing starts at login
        std::function<QImage()> applicationImage{}; ///< the application's own icon; null when it is missing
    };

    /// Reads every preference and queues the start-up step: the display is kept awake, the window's level
    /// applied, and the first run's full screen asked for.
    explicit Settings(Parts parts);

private:
    void startUp();
    void follow(const QString& key);

    void nothing() {}
    void applyPreventSleep();
    void applyLaunchAtLogin();
    void applyRandomBackground();
    void applyAppIcon();
    void applyWindowLevel();

    const Parts m_parts;
    ScreenSaverManager m_screenSaverManager;
};

} // namespace tarnwick
