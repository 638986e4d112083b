#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <condition_variable>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <thread>

namespace tarnwick {

/// An MPRIS player that says whatever a test wants, on a thread and a connection of its own, and keeps
/// a record of what it was asked. Begins without any property.
class FakePlayer {
public:
    /// What a method call is answered with: a reply, an error, or, when empty, nothing at all.
    using Answer = std::function<std::optional<QDBusMessage>(const QDBusMessage& call)>;

    /// `name` is what follows "org.mpris.MediaPlayer2.".
    FakePlayer(const QString& busAddress, const QString& name);
    FakePlayer(const FakePlayer&) = delete;
    FakePlayer& operator=(const FakePlayer&) = delete;
    ~FakePlayer();

    /// Takes the bus name. Until then nobody can see the player.
    void appear();
    void disappear();

    /// What GetAll of `interface` (the part behind "org.mpris.MediaPlayer2", "" for the root) says from now
    /// on; an invalid value takes the property away.
    void put(const QVariantMap& properties, const QString& interface = ".Player");
    /// The same, and a PropertiesChanged about them.
    void signal(const QVariantMap& properties, const QString& interface = ".Player");
    /// A PropertiesChanged about something else than GetAll says; `changed` may be any value.
    void signalRaw(const QVariant& changed, const QStringList& invalidated = {},
                   const QString& interface = "org.mpris.MediaPlayer2.Player");
    void emitSignal(const QString& interface, const QString& name, const QVariantList& arguments);
    void seeked(qlonglong microseconds);

    /// How calls of `method` are answered, instead of well.
    void answer(const QString& method, Answer answer);
    /// Answers nothing any more, until it is set to false; what came meanwhile stays unanswered.
    void hang(bool hangs);
    /// Answers everything this much later.
    void setDelay(std::chrono::milliseconds delay);

    /// Every call since the last `forget`: "Play", "GetAll .Player", "Set Volume 0.5", "OpenUri file:///x".
    QStringList calls() const;
    /// Those whose record begins with `prefix`.
    QStringList calls(const QString& prefix) const;
    void forget();

private:
    class Object;

    void onThread(const std::function<void()>& task);
    std::optional<QDBusMessage> reply(const QDBusMessage& call);

    mutable std::mutex m_mutex;
    std::map<QString, QVariantMap> m_properties;
    std::map<QString, Answer> m_answers;
    QStringList m_calls;
    bool m_hangs = false;
    std::chrono::milliseconds m_delay{0};

    const QString m_busName;
    const QString m_connectionName;
    std::unique_ptr<QDBusConnection> m_bus;
    std::unique_ptr<Object> m_object;
    QObject* m_context = nullptr;
    std::thread m_thread;
};

/// `map` with what `more` says instead, or besides.
QVariantMap with(QVariantMap map, const QVariantMap& more);

/// Metadata as a well-behaved player gives them.
QVariantMap metadata(const QString& title, const QString& artist, const QString& album,
                     const QVariantMap& more = {});

/// All properties of a well-behaved player that plays `metadata`.
QVariantMap playing(const QVariantMap& metadata, double position = 0);

} // namespace tarnwick
