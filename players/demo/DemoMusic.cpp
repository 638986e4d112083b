#include "players/demo/DemoMusic.h"

#include "players/ScriptableMusic.h"
#include "players/demo/DemoTransport.h"

namespace tarnwick::players {

DemoMusic::DemoMusic(const Options& options, dispatch::Dispatcher& dispatcher, images::ImageStore& images)
    : m_transport(std::make_shared<DemoTransport>(options, dispatcher, images)),
      m_scripting(std::make_unique<ScriptableMusic>(*m_transport)) {
    m_transport->start();
}

DemoMusic::~DemoMusic() { m_transport->shutDown(); }

script::ApplicationProvider& DemoMusic::scripting() { return *m_scripting; }

Capabilities DemoMusic::capabilities() const { return m_transport->snapshot()->capabilities; }

QString DemoMusic::playerName() const { return m_transport->snapshot()->playerName; }

void DemoMusic::setChangeHandler(ChangeHandler handler) {
    m_transport->announcer().setHandler(std::move(handler));
}

bool DemoMusic::waitUntilReady(dispatch::Duration /*timeout*/) { return m_transport->waitUntilPublished(); }

bool DemoMusic::waitUntilComplete(dispatch::Duration /*timeout*/) {
    return m_transport->waitUntilPublished();
}

// The simulated player refuses nothing; all that can last is the painting of a sleeve.
std::optional<QString> DemoMusic::finishCommands(dispatch::Duration /*timeout*/) {
    m_transport->waitUntilPublished();
    return std::nullopt;
}

} // namespace tarnwick::players
