#pragma once

#include <QByteArray>
#include <QWindow>

#include <cstdint>
#include <optional>

namespace tarnwick::windows {

// What an X11 desktop must be told or asked and Qt does not. Elsewhere the functions do nothing.

/// Whether somebody manages the windows: true where the desktop is no X11 one.
bool hasWindowManager();

/// `window`, which is not on the screen, shall not be minimised when it comes. Once minimised by its own
/// program it would be, every time.
void hintAtOrdinaryStart(const QWindow& window);

/// Tells the desktop anew which windows belong to `window`: it forgets them when that one leaves the screen,
/// and would no longer keep them above it.
void restateWhatBelongsTo(const QWindow& window);

/// Brings `window` to the front with the leave that whoever asked for it has got from the desktop, the
/// environment's DESKTOP_STARTUP_ID, and tells the desktop that it is there. Without one nothing happens. The
/// id is used up.
void useStartupId(const QWindow& window);

/// When the user acted, by the X server's clock in ms; none when `startupId` does not tell.
std::optional<std::uint32_t> timeOfStartupId(const QByteArray& startupId);

} // namespace tarnwick::windows
