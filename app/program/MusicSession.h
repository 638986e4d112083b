#pragma once

#include "app/commandline/CommandLine.h"
#include "controls/bar/TrackControls.h"
#include "music/MusicSource.h"
#include "platform/dispatch/SystemDispatcher.h"
#include "players/demo/DemoScene.h"
#include "script/run/Host.h"
#include "script/run/Interpreter.h"

#include <atomic>
#include <functional>

namespace tarnwick {

/// What a command waits for the tags, the cover and the album of the current track; what takes longer is
/// left out.
inline constexpr std::chrono::seconds completionTime(3);

/// Whether the command line asks for the demo library, if only by leaving the choice where there is no bus.
bool wantsDemo(const Invocation& invocation);

/// What is to be told of a source that was not asked for: that the demo is shown because there is no bus;
/// empty when nothing is.
QString sourceRemark(const Invocation& invocation);

/// Why nobody is followed although the command line names a player; empty when one is followed, or none is
/// named.
QString missingPlayer(const Invocation& invocation, const players::MusicApplication& music);

/// Everything between a player and the model, put together as the command line asks.
class MusicSession {
public:
    struct Options {
        LogLine log;
        std::function<void(const QString&)> showDialog; ///< any thread
        bool demoStartsStopped = false;
        bool isCommand = false; ///< it follows whom the display follows, and leaves no trace of its choice
        std::vector<int> unsaid = {}; ///< numbers of script errors that are not logged
        players::DemoScene demoScene = players::DemoScene::Playing;
    };

    MusicSession(const Invocation& invocation, Options options);
    ~MusicSession();

    /// Ends what is under way, so that what the tasks use can be destroyed. The source stays, without tasks.
    void end();

    dispatch::SystemDispatcher& dispatcher() { return m_dispatcher; }
    images::ImageStore& images() { return *m_images; }
    players::MusicApplication& music() { return *m_music; }
    MusicSource& source() { return *m_source; }

    /// Compiles and runs a text on the calling thread.
    script::Outcome execute(const QString& text, const script::Limits& limits = {});

    /// Runs `work` on a background thread while the event loop of the main thread goes on, and returns
    /// when it has ended. For commands without a window.
    void runInBackground(const std::function<void()>& work);

    /// Starts each request with a task that it must call when it is done, and returns when all have.
    void await(const std::vector<std::function<void(dispatch::Task)>>& requests);

private:
    class ScriptHost;

    dispatch::SystemDispatcher m_dispatcher;
    std::shared_ptr<images::ImageStore> m_images;
    std::unique_ptr<ScriptHost> m_host;
    std::unique_ptr<players::MusicApplication> m_music;
    std::unique_ptr<script::Interpreter> m_interpreter;
    std::unique_ptr<MusicSource> m_source;
    std::atomic<bool> m_ending = false;
};

/// Refreshes `source` whenever `music` announces a change, and dims what its player cannot do in
/// `controls`, which may go before the others.
void followPlayer(MusicSource& source, players::MusicApplication& music, TrackControls& controls);

} // namespace tarnwick
