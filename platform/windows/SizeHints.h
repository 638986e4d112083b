#pragma once

#include <QSize>
#include <QWindow>

namespace tarnwick::windows {

/// Tells an X11 window manager the proportion that it shall keep `window` in. Qt rewrites the hints
/// whenever it places the window, and knows of no proportion; so it is told again each time. Does nothing
/// elsewhere.
void hintAtAspectRatio(const QWindow& window, QSize ratio);

} // namespace tarnwick::windows
