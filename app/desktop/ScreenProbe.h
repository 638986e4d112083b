#pragma once

#include <QString>

namespace tarnwick {

/// Why no window can be opened here, in one line; empty when one can. Qt would end the program instead.
QString screenFault();

} // namespace tarnwick
