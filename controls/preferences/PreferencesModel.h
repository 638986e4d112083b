#pragma once

#include "settings/Settings.h"
#include "visuals/FontManagers.h"

#include <QObject>
#include <QVariantList>
#include <QtQmlIntegration/qqmlintegration.h>

#include <functional>

namespace tarnwick {

/// What the preferences window needs besides the preferences: the fonts to choose from, the discs, and
/// the question before a font is removed. Main thread only.
class PreferencesModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The window's owner hands it in")
    /// "System Font" and the imported fonts.
    Q_PROPERTY(QStringList clockFonts READ clockFonts NOTIFY clockFontsChanged)
    Q_PROPERTY(QStringList trackInfoFonts READ trackInfoFonts NOTIFY trackInfoFontsChanged)
    /// The discs' tags, and the names that stand for them, in catalogue order.
    Q_PROPERTY(QStringList recordTags READ recordTags CONSTANT)
    Q_PROPERTY(QStringList recordNames READ recordNames CONSTANT)
    /// The names of the options, in their order.
    Q_PROPERTY(QStringList backgroundNames READ backgroundNames CONSTANT)
    Q_PROPERTY(QStringList playlistBackgroundNames READ playlistBackgroundNames CONSTANT)
    Q_PROPERTY(QStringList tracklistStyleNames READ tracklistStyleNames CONSTANT)
    Q_PROPERTY(bool showRemoveAlert READ showRemoveAlert NOTIFY removalChanged)
    Q_PROPERTY(QString fontToRemove READ fontToRemove NOTIFY removalChanged)
    Q_PROPERTY(bool isClockFontToRemove READ isClockFontToRemove NOTIFY removalChanged)

public:
    struct Parts {
        Settings& settings; ///< must outlive the model
        /// Lets the user choose font files and imports them: for the clock, or for the facts.
        std::function<void(bool isClock)> importFonts;
        std::function<void(bool isClock, const QString& name)> removeFont;
    };

    explicit PreferencesModel(Parts parts);

    /// Offers the fonts of `manager`, now and whenever they change.
    void follow(const BaseFontManager& manager, bool isClock);

    /// The imported fonts, whenever they change.
    void setImportedFonts(bool isClock, const QStringList& names);

    Q_INVOKABLE void importFonts(bool isClock);

    /// Asks whether the font that is selected there shall be removed.
    Q_INVOKABLE void askToRemove(bool isClock);

    /// Answers the question.
    Q_INVOKABLE void confirmRemoval();
    Q_INVOKABLE void cancelRemoval();

    const QStringList& clockFonts() const { return m_clockFonts; }
    const QStringList& trackInfoFonts() const { return m_trackInfoFonts; }
    QStringList recordTags() const;
    QStringList recordNames() const;
    QStringList backgroundNames() const { return displayNames<BackgroundOption>(); }
    QStringList playlistBackgroundNames() const { return displayNames<PlaylistBackgroundOption>(); }
    QStringList tracklistStyleNames() const { return displayNames<TracklistStyle>(); }
    bool showRemoveAlert() const { return m_showRemoveAlert; }
    const QString& fontToRemove() const { return m_fontToRemove; }
    bool isClockFontToRemove() const { return m_isClockFontToRemove; }

Q_SIGNALS:
    void clockFontsChanged();
    void trackInfoFontsChanged();
    void removalChanged();

private:
    const Parts m_parts;
    QStringList m_clockFonts;
    QStringList m_trackInfoFonts;
    bool m_showRemoveAlert = false;
    QString m_fontToRemove;
    bool m_isClockFontToRemove = false;
};

} // namespace tarnwick
