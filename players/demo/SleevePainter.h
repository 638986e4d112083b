#pragma once

#include "players/demo/DemoCovers.h"

#include <QByteArray>

#include <condition_variable>
#include <map>
#include <mutex>
#include <optional>

namespace tarnwick::players {

/// The sleeves as encoded pictures, each painted once, by the thread that asks for it first. Every member
/// may be called on any thread.
class SleevePainter {
public:
    /// As `paintCover` gives it: paints it, or waits for the thread that does, which takes up to half a
    /// second; at once when it is there.
    QByteArray sleeve(DemoCover cover);

    /// Whether it is painted, or somebody is at it.
    bool isBegun(DemoCover cover) const;

private:
    mutable std::mutex m_mutex;
    std::condition_variable m_isPainted;
    std::map<DemoCover, std::optional<QByteArray>> m_sleeves; ///< none while one is being painted
};

} // namespace tarnwick::players
