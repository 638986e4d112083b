#pragma once

#include <QString>

namespace tarnwick {

/// The folder under which the pictures that are part of the executable can be read. They stay where
/// the executable is mapped until somebody reads them.
QString embeddedCatalogueRoot();

} // namespace tarnwick
