#pragma once

#include "controls/preferences/PreferencesModel.h"
#include "settings/Settings.h"

#include <QPointer>
#include <QQmlEngine>
#include <QQuickWindow>

namespace tarnwick {

/// Opens the preferences window, one at a time. Main thread only.
class PreferencesWindowOpener {
public:
    /// All must outlive it. `opened` is told of each window that is made, before it is
    /// shown, and may give it another screen.
    PreferencesWindowOpener(QQmlEngine& engine, Settings& settings, PreferencesModel& model,
                            std::function<void(QQuickWindow&)> opened = {});
    PreferencesWindowOpener(const PreferencesWindowOpener&) = delete;
    PreferencesWindowOpener& operator=(const PreferencesWindowOpener&) = delete;

    /// Closes the window.
    ~PreferencesWindowOpener();

    /// Brings the window that is open to the front, or opens one.
    void open();

    /// The window that is open; null when none is.
    QQuickWindow* window() const { return m_window; }

private:
    QQmlEngine& m_engine;
    Settings& m_settings;
    PreferencesModel& m_model;
    const std::function<void(QQuickWindow&)> m_opened;
    QPointer<QQuickWindow> m_window;
};

} // namespace tarnwick
