#pragma once

#include "visuals/FontManagers.h"

#include <QQmlEngine>
#include <QQuickWindow>

namespace tarnwick {

/// The desktop's file chooser, for font files, over the window that `parent` names when it opens. `engine`
/// must outlive what it returns. While a choice is under way another one is answered at once with nothing,
/// and so is one for which no chooser can be opened; a choice whose window goes is never answered.
FontChooser fontFileChooser(QQmlEngine& engine, std::function<QQuickWindow*()> parent);

} // namespace tarnwick
