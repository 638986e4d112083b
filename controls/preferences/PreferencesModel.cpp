#include "controls/preferences/PreferencesModel.h"

#include "visuals/CDImageOption.h"

namespace tarnwick {

PreferencesModel::PreferencesModel(Parts parts)
    : m_parts(std::move(parts)), m_clockFonts(systemFontName), m_trackInfoFonts(systemFontName) {}

void PreferencesModel::follow(const BaseFontManager& manager, bool isClock) {
    setImportedFonts(isClock, manager.fonts());
    connect(&manager, &BaseFontManager::fontsChanged, this,
            [this, &manager, isClock] { setImportedFonts(isClock, manager.fonts()); });
}

void PreferencesModel::setImportedFonts(bool isClock, const QStringList& names) {
    (isClock ? m_clockFonts : m_trackInfoFonts) = QStringList(systemFontName) + names;
    if (isClock)
        Q_EMIT clockFontsChanged();
    else
        Q_EMIT trackInfoFontsChanged();
}

void PreferencesModel::importFonts(bool isClock) { m_parts.importFonts(isClock); }

void PreferencesModel::askToRemove(bool isClock) {
    m_fontToRemove =
        isClock ? m_parts.settings.selectedClockFont() : m_parts.settings.selectedTrackInfoFont();
    m_isClockFontToRemove = isClock;
    m_showRemoveAlert = true;
    Q_EMIT removalChanged();
}

void PreferencesModel::confirmRemoval() {
    if (!m_showRemoveAlert)
        return;
    m_showRemoveAlert = false;
    Q_EMIT removalChanged();
    m_parts.removeFont(m_isClockFontToRemove, m_fontToRemove);
}

void PreferencesModel::cancelRemoval() {
    m_showRemoveAlert = false;
    Q_EMIT removalChanged();
}

QStringList PreferencesModel::recordTags() const {
    QStringList tags;
    for (const CDImageOption& option : imageOptions())
        tags.append(option.tag);
    return tags;
}

QStringList PreferencesModel::recordNames() const {
    QStringList names;
    for (const CDImageOption& option : imageOptions())
        names.append(option.displayName);
    return names;
}

} // namespace tarnwick
