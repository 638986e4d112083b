#include "app/program/MusicSession.h"

#include "app/desktop/Identity.h"
#include "assets/Catalogue.h"
#include "players/demo/DemoMusic.h"
#include "players/mpris/MprisMusic.h"

#include <QEventLoop>
#include <QStandardPaths>

namespace tarnwick {

class MusicSession::ScriptHost : public script::Host {
public:
    ScriptHost(dispatch::Dispatcher& dispatcher, Options options)
        : m_dispatcher(dispatcher), m_options(std::move(options)) {}

    void log(const QString& text) override { m_options.log(text); }
    void displayDialog(const QString& text) override { m_options.showDialog(text); }
    void delay(std::chrono::nanoseconds duration) override { m_dispatcher.sleepFor(duration); }

private:
    dispatch::Dispatcher& m_dispatcher;
    Options m_options;
};

namespace {

players::MprisMusic::Options mprisOptions(const Invocation& invocation, bool isCommand) {
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    const QString cache = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    return {.busAddress = {},
            .player = invocation.option(QStringLiteral("player")).value_or(QString()),
            .cacheFolder = cache + QStringLiteral("/tarnwick"),
            .stateFile = data + QStringLiteral("/tarnwick/last-player"),
            .remembers = !isCommand,
            .display = isCommand ? bundleIdentifier() : QString()};
}

} // namespace

bool wantsDemo(const Invocation& invocation) {
    const QString source = invocation.option(QStringLiteral("source")).value_or(QStringLiteral("auto"));
    if (source == QLatin1String("auto"))
        return !players::MprisMusic::hasSessionBus() && !invocation.has(QStringLiteral("player"));
    return source == QLatin1String("demo");
}

QString sourceRemark(const Invocation& invocation) {
    const bool isAskedFor = invocation.option(QStringLiteral("source")) == QLatin1String("demo");
    return wantsDemo(invocation) && !isAskedFor
               ? QStringLiteral("there is no session bus, so this is the demo library")
               : QString();
}

QString missingPlayer(const Invocation& invocation, const players::MusicApplication& music) {
    const auto wanted = invocation.option(QStringLiteral("player"));
    if (!wanted || !music.playerName().isEmpty())
        return {};
    if (!players::MprisMusic::hasSessionBus())
        return QStringLiteral("there is no session bus, so no player called '%1' can be found").arg(*wanted);
    const QStringList names = music.playerNames();
    return names.isEmpty() ? QStringLiteral("no player is called '%1'; there is none").arg(*wanted)
                           : QStringLiteral("no player is called '%1'; there are %2")
                                 .arg(*wanted, names.join(QStringLiteral(", ")));
}

MusicSession::MusicSession(const Invocation& invocation, Options options)
    : m_images(std::make_shared<images::ImageStore>(m_dispatcher)),
      m_host(std::make_unique<ScriptHost>(m_dispatcher, options)) {
    if (wantsDemo(invocation))
        m_music = std::make_unique<players::DemoMusic>(
            players::DemoMusic::Options{.scene = options.demoScene,
                                        .startsStopped = options.demoStartsStopped},
            m_dispatcher, *m_images);
    else
        m_music = std::make_unique<players::MprisMusic>(mprisOptions(invocation, options.isCommand),
                                                        m_dispatcher, *m_images);
    m_interpreter = std::make_unique<script::Interpreter>(m_music->scripting());
    auto runner = std::make_shared<ScriptRunner>(
        m_dispatcher, [this](const QString& text) { return execute(text); }, options.log, options.unsaid);
    m_source = std::make_unique<MusicSource>(MusicSource::Parts{
        m_dispatcher, runner, m_images, Catalogue::shared().image(QStringLiteral("nocover")), options.log});
    MusicSource::setShared(m_source.get());
}

MusicSession::~MusicSession() {
    m_ending = true; // scripts that run end at their next step
    m_source.reset();
    m_dispatcher.shutDown();
}

void MusicSession::end() {
    m_ending = true;
    m_dispatcher.shutDown();
}

script::Outcome MusicSession::execute(const QString& text, const script::Limits& limits) {
    script::Limits own = limits;
    own.cancelled = &m_ending;
    return m_interpreter->run(text, *m_host, own);
}

void MusicSession::runInBackground(const std::function<void()>& work) {
    await({[&](const dispatch::Task& done) {
        m_dispatcher.globalQueue(dispatch::QualityOfService::Default).async([this, &work, done] {
            work();
            m_dispatcher.mainQueue().async(done);
        });
    }});
}

void MusicSession::await(const std::vector<std::function<void(dispatch::Task)>>& requests) {
    QEventLoop loop;
    std::size_t missing = requests.size();
    for (const auto& request : requests)
        request([&] {
            if (--missing == 0)
                loop.quit();
        });
    if (missing > 0)
        loop.exec();
}

void followPlayer(MusicSource& source, players::MusicApplication& music, TrackControls& controls) {
    const auto dim = [&music, &controls] {
        auto can = music.capabilities();
        can.canPlay = can.canPlay || music.playerName().isEmpty(); // it starts a player
        controls.setCapabilities(can);
    };
    QObject::connect(&source, &MusicSource::playerChanged, &controls, dim);
    source.follow(music);
    dim();
}

} // namespace tarnwick
