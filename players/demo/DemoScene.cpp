#include "players/demo/DemoScene.h"

#include <array>
#include <utility>

namespace tarnwick::players {

namespace {

constexpr std::array<std::pair<const char*, DemoScene>, 9> scenes{{
    {"playing", DemoScene::Playing},
    {"paused", DemoScene::Paused},
    {"stopped", DemoScene::Stopped},
    {"two-discs", DemoScene::TwoDiscs},
    {"cassette", DemoScene::Cassette},
    {"no-cover", DemoScene::NoCover},
    {"long-texts", DemoScene::LongTexts},
    {"no-playlists", DemoScene::NoPlaylists},
    {"many-playlists", DemoScene::ManyPlaylists},
}};

} // namespace

std::optional<DemoScene> demoSceneNamed(const QString& name) {
    for (const auto& [known, scene] : scenes) {
        if (name == QLatin1String(known))
            return scene;
    }
    return std::nullopt;
}

QStringList demoSceneNames() {
    QStringList names;
    for (const auto& scene : scenes)
        names.append(QLatin1String(scene.first));
    return names;
}

} // namespace tarnwick::players
