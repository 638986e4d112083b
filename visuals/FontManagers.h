#pragma once

#include "platform/defaults/Defaults.h"
#include "platform/fonts/FontRegistry.h"
#include "visuals/RandomIndex.h"

#include <QObject>
#include <QStringList>

#include <functional>
#include <optional>

namespace tarnwick {

/// Stands for the platform's own font wherever a font's name is stored.
inline const QString systemFontName = QStringLiteral("System Font");

/// The fonts that the user has imported for one purpose: copied to a private folder, registered for this
/// process, remembered by their paths. Every failure is silent. Main thread only.
class BaseFontManager : public QObject {
    Q_OBJECT
    /// PostScript names of what is registered, in that order, without repeats.
    Q_PROPERTY(QStringList fonts READ fonts NOTIFY fontsChanged)

public:
    /// What a manager works with; all of it must outlive it.
    struct Environment {
        defaults::Defaults& defaults;
        fonts::FontRegistry& registry;
        QString applicationSupport; ///< the folder of the program's data; empty when there is none
        RandomIndex randomIndex;
    };

    /// Copies a file to the private folder, over one of the same name. Where the copy lies; none when it
    /// could not be made.
    std::optional<QString> copyFontToAppSupport(const QString& path) const;

    /// Registers, lists and remembers the font in a file.
    void registerFont(const QString& path);

    /// Copies and registers each of `paths`, in their order.
    void importFiles(const QStringList& paths);

    /// Takes a font back and deletes its file. The file is found by its path containing `name`; when none
    /// does, nothing changes.
    void removeFont(const QString& name);

    /// One of `fonts` or `systemFontName`, each as likely as the other.
    QString randomFontName() const;

    const QStringList& fonts() const { return m_fonts; }

    /// Where the paths are remembered.
    const QString& importedFontsKey() const { return m_importedFontsKey; }

Q_SIGNALS:
    void fontsChanged();

protected:
    /// Registers what is remembered under `importedFontsKey`.
    BaseFontManager(const Environment& environment, const QString& importedFontsKey, QObject* parent);

private:
    void loadImportedFonts();
    void addFontName(const QString& name);
    void rememberFontPath(const QString& path);
    QStringList rememberedPaths() const;

    Environment m_environment;
    QString m_importedFontsKey;
    QStringList m_fonts;
};

/// The fonts of the clock and the date.
class ClockFontManager : public BaseFontManager {
    Q_OBJECT

public:
    explicit ClockFontManager(const Environment& environment, QObject* parent = nullptr)
        : BaseFontManager(environment, QStringLiteral("ImportedClockFonts"), parent) {}
};

/// The fonts of the track information.
class TrackInfoFontManager : public BaseFontManager {
    Q_OBJECT

public:
    explicit TrackInfoFontManager(const Environment& environment, QObject* parent = nullptr)
        : BaseFontManager(environment, QStringLiteral("ImportedTrackInfoFonts"), parent) {}
};

/// Lets the user choose font files and calls back, once and on the main thread, with what was chosen, in the
/// order of the choice; with nothing when there was no choice.
using FontChooser = std::function<void(const std::function<void(const QStringList& paths)>& chosen)>;

/// Imports what the user chooses, for the clock or for the track information. The managers must be there
/// when `choose` calls back.
void importFonts(bool clockFonts, const FontChooser& choose, ClockFontManager& clock,
                 TrackInfoFontManager& trackInfo);

} // namespace tarnwick
