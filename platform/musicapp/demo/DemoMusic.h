#pragma once

#include "platform/musicapp/MusicApplication.h"
#include "platform/musicapp/demo/DemoScene.h"

#include <memory>

namespace tarnwick::images {
class ImageStore;
}

namespace tarnwick::musicapp {

/// The built-in library on a simulated transport: what a machine without a player shows.
///
/// The same options and the same calls at the same times give the same answers. Covers are painted
/// on the background queue when they are first needed.
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
    class Transport;
    std::shared_ptr<Transport> m_transport;
};

} // namespace tarnwick::musicapp
