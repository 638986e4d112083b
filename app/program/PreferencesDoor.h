#pragma once

#include "controls/preferences/PreferencesModel.h"
#include "controls/preferences/PreferencesWindowOpener.h"
#include "platform/windows/QtWindowSystem.h"
#include "visuals/FontManagers.h"

namespace tarnwick {

/// One of the ways to the preferences, with the window that it has opened. Main thread only.
class PreferencesDoor {
public:
    /// What the window shows and acts on; everything must outlive the door.
    struct Parts {
        QQmlEngine& engine;
        Settings& settings;
        windows::QtWindowSystem& windows; ///< gets the window
        QQuickWindow& mainWindow;         ///< on whose screen it opens, and above which
        ClockFontManager& clockFonts;
        TrackInfoFontManager& trackInfoFonts;
        FontChooser chooseFonts;
    };

    explicit PreferencesDoor(Parts parts);

    /// Brings the window that is open to the front, or opens one. Null when it cannot be made, which is a
    /// fault of the build.
    windows::Window* open();

private:
    const Parts m_parts;
    PreferencesModel m_model;
    windows::Window* m_window = nullptr; ///< the last one, which may have gone
    PreferencesWindowOpener m_opener;
};

} // namespace tarnwick
