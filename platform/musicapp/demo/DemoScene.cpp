#include "platform/musicapp/demo/DemoScene.h"

#include <array>
#include <utility>

namespace tarnwick::musicapp {

std::optional<DemoScene> demoSceneNamed(const QString& name) {
    static constexpr std::array<std::pair<const char*, DemoScene>, 9> names{{
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
    for (const auto& [known, scene] : names) {
        if (name == QLatin1String(known))
            return scene;
    }
    return std::nullopt;
}

} // namespace tarnwick::musicapp
