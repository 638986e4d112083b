#pragma once

#include "visuals/FontManagers.h"

#include <QQmlEngine>
#include <QQuickWindow>

namespace tarnwick {

/// The desktop's file chooser over `window`, for font files. Both must outlive what it returns. While a
/// choice is under way another one is answered at once with nothing.
FontChooser fontFileChooser(QQmlEngine& engine, QQuickWindow& window);

} // namespace tarnwick
