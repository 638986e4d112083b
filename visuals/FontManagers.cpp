#include "visuals/FontManagers.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPointer>

#include <algorithm>

namespace tarnwick {

namespace {

QStringList listIn(const std::optional<defaults::Value>& value) {
    const auto* list = value ? std::get_if<QStringList>(&*value) : nullptr;
    return list ? *list : QStringList();
}

} // namespace

BaseFontManager::BaseFontManager(const Environment& environment, const QString& importedFontsKey,
                                 QObject* parent)
    : QObject(parent), m_environment(environment), m_importedFontsKey(importedFontsKey) {
    loadImportedFonts();
}

std::optional<QString> BaseFontManager::copyFontToAppSupport(const QString& path) const {
    if (m_environment.applicationSupport.isEmpty())
        return std::nullopt;
    const QDir folder(m_environment.applicationSupport + QStringLiteral("/ImportedFonts"));
    if (!folder.exists() && !folder.mkpath(QStringLiteral(".")))
        return std::nullopt;
    const QString copy = folder.filePath(QFileInfo(path).fileName());
    if (const QFileInfo there(copy); there.exists() || there.isSymLink()) {
        // A copy that is chosen again must not be deleted to make room for itself.
        if (there.canonicalFilePath() == QFileInfo(path).canonicalFilePath())
            return copy;
        if (!QFile::remove(copy))
            return std::nullopt;
    }
    return QFile::copy(path, copy) ? std::optional(copy) : std::nullopt;
}

void BaseFontManager::registerFont(const QString& path) {
    const auto name = m_environment.registry.add(path);
    if (!name)
        return;
    addFontName(*name);
    rememberFontPath(path);
}

void BaseFontManager::importFiles(const QStringList& paths) {
    for (const QString& path : paths) {
        if (const auto copy = copyFontToAppSupport(path))
            registerFont(*copy);
    }
}

void BaseFontManager::removeFont(const QString& name) {
    if (name.isEmpty())
        return; // every path contains it
    const QStringList paths = rememberedPaths();
    const auto found =
        std::find_if(paths.begin(), paths.end(), [&](const QString& path) { return path.contains(name); });
    if (found == paths.end())
        return;
    const QString& path = *found;
    m_environment.defaults.update(m_importedFontsKey, [&](const std::optional<defaults::Value>& now) {
        QStringList rest = listIn(now);
        rest.removeOne(path);
        return rest;
    });
    if (m_fonts.removeOne(name))
        Q_EMIT fontsChanged();
    if (const auto registered = fonts::postScriptName(path))
        m_environment.registry.remove(*registered);
    QFile::remove(path);
}

QString BaseFontManager::randomFontName() const {
    QStringList candidates = m_fonts;
    if (!candidates.contains(systemFontName))
        candidates.prepend(systemFontName);
    return candidates.at(m_environment.randomIndex(static_cast<int>(candidates.size())));
}

void BaseFontManager::loadImportedFonts() {
    for (const QString& path : rememberedPaths())
        registerFont(path);
}

void BaseFontManager::addFontName(const QString& name) {
    if (m_fonts.contains(name))
        return;
    m_fonts.append(name);
    Q_EMIT fontsChanged();
}

void BaseFontManager::rememberFontPath(const QString& path) {
    if (rememberedPaths().contains(path))
        return;
    m_environment.defaults.update(m_importedFontsKey, [&](const std::optional<defaults::Value>& now) {
        QStringList paths = listIn(now);
        if (!paths.contains(path))
            paths.append(path);
        return paths;
    });
}

QStringList BaseFontManager::rememberedPaths() const {
    return listIn(m_environment.defaults.value(m_importedFontsKey));
}

void importFonts(bool clockFonts, const FontChooser& choose, ClockFontManager& clock,
                 TrackInfoFontManager& trackInfo) {
    BaseFontManager* manager = &trackInfo;
    if (clockFonts)
        manager = &clock;
    choose([manager = QPointer(manager)](const QStringList& paths) {
        if (manager)
            manager->importFiles(paths);
    });
}

} // namespace tarnwick
