#include "app/commandline/Answer.h"
#include "app/commands/Commands.h"
#include "app/commands/StatusReport.h"
#include "app/desktop/StopSignals.h"
#include "app/program/MusicSession.h"
#include "script/values/Error.h"

#include <QEventLoop>
#include <QTimer>
#include <unistd.h>

#include <csignal>

namespace tarnwick {

using namespace std::chrono_literals;

namespace {

/// What a player may lack, and still be healthy.
const std::vector<int> unsaidErrors{script::errors::NoSuchObject, script::errors::NotRunning};

/// How often the player is looked at that announces nothing.
constexpr auto lookInterval = 5s;

/// Waits for a reason to look at the player again, or to stop.
class News {
public:
    explicit News(MusicSession& session)
        : m_session(session), m_signals([this] { stop(); }),
          m_reader(STDOUT_FILENO, QSocketNotifier::Exception) {
        std::signal(SIGPIPE, SIG_IGN); // a reader that has gone is a reason to end, and no failure
        // Of a pipe or a socket: nobody reads it any more.
        QObject::connect(&m_reader, &QSocketNotifier::activated, &m_loop, [this] { stop(); });
        m_look.setTimerType(Qt::CoarseTimer);
        QObject::connect(&m_look, &QTimer::timeout, &m_loop, [this] { come(); });
        m_look.start(lookInterval);
        session.music().setChangeHandler([this, weak = std::weak_ptr(m_alive)](players::Changes) {
            m_session.dispatcher().mainQueue().async([this, weak] {
                if (!weak.expired())
                    come();
            });
        });
    }
    News(const News&) = delete;
    News& operator=(const News&) = delete;
    ~News() { m_session.music().setChangeHandler({}); }

    void stop() {
        m_isOver = true;
        m_loop.quit();
    }

    /// Whether it goes on.
    bool wait() {
        if (!m_isThere && !m_isOver)
            m_loop.exec();
        m_isThere = false;
        return !m_isOver;
    }

private:
    void come() {
        m_isThere = true;
        m_loop.quit();
    }

    MusicSession& m_session;
    const std::shared_ptr<bool> m_alive = std::make_shared<bool>(true);
    QEventLoop m_loop;
    StopSignals m_signals;
    QSocketNotifier m_reader;
    QTimer m_look;
    bool m_isThere = false;
    bool m_isOver = false;
};

bool show(const StatusReport& report, bool asJson, bool isOneOfMany) {
    if (asJson)
        return print(report.json(isOneOfMany ? QJsonDocument::Compact : QJsonDocument::Indented));
    return print(report.lines() + (isOneOfMany ? QStringLiteral("\n") : QString()));
}

int follow(MusicSession& session, StatusReport report, bool asJson) {
    News news(session);
    bool isRead = show(report, asJson, true);
    while (isRead && news.wait()) {
        StatusReport now = StatusReport::of(session);
        if (now.saysTheSame(report))
            continue;
        isRead = show(now, asJson, true);
        report = std::move(now);
    }
    return exitDone;
}

} // namespace

int runStatus(const Invocation& invocation) {
    if (const QString remark = sourceRemark(invocation); !remark.isEmpty())
        complain(remark);
    MusicSession session(
        invocation, {.log = complain, .showDialog = complain, .isCommand = true, .unsaid = unsaidErrors});
    const StatusReport report = StatusReport::of(session);
    const bool follows = invocation.has(QStringLiteral("follow"));
    if (const QString missing = missingPlayer(invocation, session.music()); !missing.isEmpty() && !follows) {
        complain(missing);
        return exitFailed;
    }
    const bool asJson = invocation.has(QStringLiteral("json"));
    if (follows)
        return follow(session, report, asJson);
    if (session.music().playerName().isEmpty())
        complain(QStringLiteral("no player is running"));
    show(report, asJson, false);
    return exitDone;
}

} // namespace tarnwick
