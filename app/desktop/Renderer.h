#pragma once

#include "platform/animation/PacedAnimationDriver.h"

#include <QQuickWindow>

#include <memory>

namespace tarnwick {

/// Decides what draws the windows. Without a graphics card that is Qt Quick's own software renderer, which
/// costs the processor less than an emulated card; what the environment asks for is left alone. Where the
/// processor draws, animations are held to a rate that it can afford.
class Renderer {
public:
    /// Whether this machine has something that draws besides the processor.
    static bool hasGraphicsCard();

    /// To be made before the first window.
    Renderer();

    /// Starts the program anew with the software renderer should the one that was chosen fail for `window`.
    void guard(const QQuickWindow& window) const;

private:
    std::unique_ptr<animation::PacedAnimationDriver> m_animations; ///< where the processor draws
};

} // namespace tarnwick
