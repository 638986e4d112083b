#pragma once

#include "players/MusicApplication.h"
#include "players/demo/DemoScene.h"

#include <memory>

namespace tarnwick::images {
class ImageStore;
}

namespace tarnwick::players {

class DemoTransport;
class ScriptableMusic;

/// The built-in library on a simulated transport: what a machine without a player shows.
///
/// The same options and the same calls at the same times give the same answers. Covers are painted off
/// the main thread when they are first needed; a command that is given on the main thread then shows
/// a little later.
class DemoMusic final : public MusicApplication {
public:
    struct Options {
        DemoScene scene = DemoScene::Playing;
        bool startsStopped = false; ///< begins stopped at the scene's track, whatever the scene says
        int additionalTracks = 0;   ///< so many generated tracks more; for measurements
    };

    /// `dispatcher` and `images` must outlive this object.
    DemoMusic(const Options& options, dispatch::Dispatcher& dispatcher, images::ImageStore& images);
    ~DemoMusic() override;

    script::ApplicationProvider& scripting() override;
    Capabilities capabilities() const override;
    QString playerName() const override;
    void setChangeHandler(ChangeHandler handler) override;
    bool waitUntilReady(dispatch::Duration timeout) override;
    bool waitUntilComplete(dispatch::Duration timeout) override;
    std::optional<QString> finishCommands(dispatch::Duration timeout) override;

private:
    std::shared_ptr<DemoTransport> m_transport;
    std::unique_ptr<ScriptableMusic> m_scripting;
};

} // namespace tarnwick::players
