// A player for the session bus: fake_player NAME [PLAYLIST]…
// Plays "Uno" at once, "Due" when it is told to go on, and what bears a playlist's own name when it is told
// to play that list. Whatever it is asked for besides reading is a line on its standard output.

#include "tests/fakes/FakePlayer.h"
#include "tests/fakes/WirePlaylist.h"

#include <QCoreApplication>
#include <QTimer>

#include <cstdio>

using namespace tarnwick;

namespace {

class Program {
public:
    explicit Program(const QStringList& arguments) : m_player(arguments.value(1)) {
        registerWirePlaylists();
        for (const QString& name : arguments.mid(2))
            m_lists.append({QDBusObjectPath(QStringLiteral("/list/%1").arg(m_lists.size())), name, {}});
        m_fake.put({{"DesktopEntry", m_player}, {"Identity", m_player.section('.', -1)}}, {});
        m_fake.put(playing(metadata("Uno", "Prova", "Suoni")));
        m_fake.put(
            {{"Orderings", QStringList{"Alphabetical"}},
             {"PlaylistCount", unsigned(m_lists.size())},
             {"ActivePlaylist", QVariant::fromValue(WireActive{false, {QDBusObjectPath("/"), {}, {}}})}},
            ".Playlists");
        m_fake.answer("GetPlaylists", [this](const QDBusMessage& call) {
            return call.createReply(QVariant::fromValue(m_lists));
        });
        m_fake.appear();
    }

    /// Does what came since the last time.
    void work() {
        const QStringList calls = m_fake.calls();
        for (; m_done < calls.size(); ++m_done)
            if (const QString& call = calls[m_done]; !call.startsWith("Get"))
                perform(call);
    }

private:
    void perform(const QString& call) {
        std::printf("%s\n", qPrintable(call));
        std::fflush(stdout);
        if (call == "Next")
            m_fake.signal({{"Metadata", metadata("Due", "Prova", "Suoni")}});
        else if (call == "Play" || call == "Pause" || call == "PlayPause")
            togglePlaying(call);
        else if (call.startsWith("ActivatePlaylist "))
            play(m_lists.value(call.section('/', -1).toInt()));
    }

    void togglePlaying(const QString& call) {
        m_plays = call == "Play" || (call == "PlayPause" && !m_plays);
        m_fake.signal({{"PlaybackStatus", m_plays ? "Playing" : "Paused"}});
    }

    void play(const WirePlaylist& list) {
        m_fake.signal({{"ActivePlaylist", QVariant::fromValue(WireActive{true, list})}}, ".Playlists");
        m_fake.signal({{"Metadata", metadata(list.name, "Prova", "Suoni")}});
    }

    QString m_player;
    FakePlayer m_fake{qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), m_player};
    QList<WirePlaylist> m_lists;
    bool m_plays = true;
    qsizetype m_done = 0;
};

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    Program program(QCoreApplication::arguments());
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] { program.work(); });
    timer.start(std::chrono::milliseconds(10));
    return QCoreApplication::exec();
}
