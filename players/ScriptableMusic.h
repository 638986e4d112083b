#pragma once

#include "players/Player.h"
#include "script/values/Application.h"

namespace tarnwick::players {

/// The application "Music" as scripts see it, over any `Player`.
///
/// Every run of a script gets an application object of its own, which looks at one snapshot, so that no
/// reply mixes two tracks. It takes a newer one after each command and each property it sets, whenever it
/// is asked for the player state, and when the one it has is older than a second.
class ScriptableMusic final : public script::ApplicationProvider {
public:
    /// `player` must outlive this object and every run.
    explicit ScriptableMusic(Player& player) : m_player(player) {}

    const script::Terminology* terminology(const QString& name) const override;
    std::shared_ptr<script::Application> application(const QString& name) override;

private:
    Player& m_player;
};

} // namespace tarnwick::players
