#pragma once

#include <QString>

namespace tarnwick {

/// What the program is called wherever names are global: its bus name, desktop file, icon, login agent.
inline const QString& bundleIdentifier() {
    static const auto identifier = QStringLiteral("org.tarnwick.Tarnwick");
    return identifier;
}

} // namespace tarnwick
