#include "players/mpris/PlayerLink.h"

#include "players/mpris/BusValue.h"

#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarnwick::players {

namespace {

constexpr int timeout = 1000;         // ms, of every call
constexpr int betweenVolumes = 50;    // ms
constexpr int betweenQuestions = 500; // ms, to a player that takes its name before it can say who it is
constexpr int questions = 20;
constexpr int mostSilences = 3;
const QString objectPath = QStringLiteral("/org/mpris/MediaPlayer2");
const QString rootInterface = QStringLiteral("org.mpris.MediaPlayer2");
const QString playerInterface = QStringLiteral("org.mpris.MediaPlayer2.Player");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

QVariantMap mapOf(const QDBusMessage& reply) { return plainValue(reply.arguments().value(0)).toMap(); }

} // namespace

PlayerLink::PlayerLink(const QDBusConnection& bus, QString busName, QString owner,
                       dispatch::Dispatcher& dispatcher, std::function<void()> changed)
    : m_bus(bus), m_busName(std::move(busName)), m_owner(std::move(owner)), m_dispatcher(dispatcher),
      m_changed(std::move(changed)), m_trackList(*this), m_playlists(*this, m_changed) {
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &PlayerLink::attend);
    m_volumeTimer.setSingleShot(true);
    connect(&m_volumeTimer, &QTimer::timeout, this, &PlayerLink::sendVolume);
}

void PlayerLink::start() {
    introduce();
    read();
}

void PlayerLink::call(const QString& methodName, const QVariantList& arguments, const Done& done,
                      const QString& interface) {
    m_model.readLater(m_dispatcher.now());
    QDBusMessage message = method(rootInterface + u'.' + interface, methodName);
    message.setArguments(arguments);
    send(message, [this, done, methodName](const QDBusMessage& reply) {
        Failure failure;
        if (reply.type() == QDBusMessage::ErrorMessage)
            failure =
                isTimeOut(reply)
                    ? QStringLiteral("%1 does not answer").arg(identity())
                    : QStringLiteral("%1 refused %2: %3").arg(identity(), methodName, reply.errorName());
        done(failure);
    });
    attend();
}

void PlayerLink::setVolume(double volume, const Done& done) {
    m_model.volumeWasSet(volume);
    m_volume = volume;
    m_volumeDone.push_back(done);
    if (!m_volumeTimer.isActive())
        sendVolume();
}

void PlayerLink::setShuffle(bool shuffle, const Done& done) {
    m_model.shuffleWasSet(shuffle);
    setProperty(QStringLiteral("Shuffle"), shuffle, [this, done](const Failure& failure) {
        m_model.shuffleWasAnswered(!failure, m_dispatcher.now());
        done(failure);
        attend();
    });
}

void PlayerLink::setPosition(double seconds, const Done& done) {
    const QString trackId = belief().metadata.track.id;
    const auto microseconds = static_cast<qlonglong>(seconds * 1e6);
    // One that is no path, or no valid one, cannot be said.
    if (const QDBusObjectPath path(trackId.startsWith(u'/') ? trackId : QStringLiteral("/"));
        path.path().size() > 1) {
        call(QStringLiteral("SetPosition"), {QVariant::fromValue(path), microseconds}, done);
        return;
    }
    const double now = belief().position.valueAt(m_dispatcher.now());
    call(QStringLiteral("Seek"), {static_cast<qlonglong>((seconds - now) * 1e6)}, done);
}

void PlayerLink::propertiesChanged(const QVariantMap& changed, const QStringList& invalidated) {
    m_model.change(changed, invalidated, m_dispatcher.now());
    attend();
}

void PlayerLink::seeked() {
    m_model.seeked(m_dispatcher.now());
    attend();
}

void PlayerLink::attend() {
    const auto now = m_dispatcher.now();
    m_model.advance(now);
    if (m_model.wantsReading(now))
        read();
    if (const auto deadline = m_model.deadline()) {
        const auto wait = std::chrono::ceil<std::chrono::milliseconds>(*deadline - now);
        m_timer.start(std::max(std::chrono::milliseconds(1), wait));
    } else {
        m_timer.stop();
    }
    m_changed();
}

QDBusMessage PlayerLink::getAll(const QString& interface) const {
    QDBusMessage message = method(propertiesInterface, QStringLiteral("GetAll"));
    message.setArguments({interface});
    return message;
}

void PlayerLink::readProperties(const QString& interface,
                                const std::function<void(const std::optional<QVariantMap>&)>& ready) {
    send(getAll(interface), [ready](const QDBusMessage& reply) {
        if (isTimeOut(reply))
            ready(std::nullopt);
        else
            ready(reply.type() == QDBusMessage::ErrorMessage ? QVariantMap() : mapOf(reply));
    });
}

void PlayerLink::whenItAnswers(std::function<void()> task) {
    m_whenItAnswers.push_back(std::move(task));
    m_model.positionWasAskedFor(m_dispatcher.now());
    attend();
}

void PlayerLink::send(QDBusMessage message, const Reply& reply) {
    message.setAutoStartService(false);
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(message, timeout), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [reply](QDBusPendingCallWatcher* finished) {
        finished->deleteLater();
        reply(finished->reply());
    });
}

QDBusMessage PlayerLink::method(const QString& interface, const QString& name) const {
    return QDBusMessage::createMethodCall(m_owner, objectPath, interface, name);
}

QString PlayerLink::identity() const {
    return m_identity.isEmpty() ? m_busName.section(u'.', 3, 3) : m_identity;
}

QString PlayerLink::name() const {
    const QString name = m_busName.section(u'.', 3);
    const auto instance = name.indexOf(QLatin1String(".instance"), 0, Qt::CaseInsensitive);
    return instance > 0 ? name.left(instance) : name;
}

bool PlayerLink::isNamed(const QString& wanted) const {
    const QStringList names{m_busName, m_busName.section(u'.', 3), rootInterface + u'.' + name(), name(),
                            identity()};
    return names.contains(wanted, Qt::CaseInsensitive);
}

bool PlayerLink::isTimeOut(const QDBusMessage& reply) {
    return reply.errorName() == QLatin1String("org.freedesktop.DBus.Error.NoReply") ||
           reply.errorName() == QLatin1String("org.freedesktop.DBus.Error.Timeout");
}

/// Asks for what the player is, as opposed to what it does. One that refuses is good enough without a name,
/// but is asked again: it may be starting.
void PlayerLink::introduce() {
    send(getAll(rootInterface), [this](const QDBusMessage& reply) {
        if (isTimeOut(reply)) {
            // Its name on the bus has to do, until it answers.
            if (++m_silences == mostSilences && !m_isIntroduced) {
                m_isIntroduced = true;
                m_changed();
            }
            introduce();
            return;
        }
        if (reply.type() == QDBusMessage::ErrorMessage && ++m_refusals < questions)
            QTimer::singleShot(betweenQuestions, this, &PlayerLink::introduce);
        const QVariantMap properties = mapOf(reply);
        m_identity = textOf(properties.value(QStringLiteral("Identity"))).left(100);
        m_desktopEntry = textOf(properties.value(QStringLiteral("DesktopEntry")));
        // One names neither among what it takes, and takes both.
        const bool takesAll = name() == QLatin1String("mpv");
        const QStringList kinds = textsOf(properties.value(QStringLiteral("SupportedMimeTypes")));
        m_canOpenFiles = takesAll || textsOf(properties.value(QStringLiteral("SupportedUriSchemes")))
                                         .contains(QLatin1String("file"), Qt::CaseInsensitive);
        m_canOpenPlaylists = takesAll || std::any_of(kinds.begin(), kinds.end(), [](const QString& kind) {
                                 return kind.contains(QLatin1String("mpegurl"), Qt::CaseInsensitive);
                             });
        m_isIntroduced = true;
        m_changed();
    });
}

void PlayerLink::read() {
    m_model.readWasSent(m_dispatcher.now());
    send(getAll(playerInterface), [this](const QDBusMessage& reply) {
        if (reply.type() == QDBusMessage::ErrorMessage)
            m_model.readFailed(isTimeOut(reply), m_dispatcher.now());
        else
            m_model.readAll(mapOf(reply), m_dispatcher.now());
        attend();
        if (!isTimeOut(reply))
            for (const auto& task : std::exchange(m_whenItAnswers, {}))
                task();
    });
}

void PlayerLink::setProperty(const QString& name, const QVariant& value, const Done& done) {
    QDBusMessage message = method(propertiesInterface, QStringLiteral("Set"));
    message.setArguments({playerInterface, name, QVariant::fromValue(QDBusVariant(value))});
    send(message, [this, done, name](const QDBusMessage& reply) {
        Failure failure;
        if (reply.type() == QDBusMessage::ErrorMessage)
            failure = isTimeOut(reply)
                          ? QStringLiteral("%1 does not answer").arg(identity())
                          : QStringLiteral("%1 refused %2: %3").arg(identity(), name, reply.errorName());
        done(failure);
    });
}

/// At most one in `betweenVolumes`, and always the last.
void PlayerLink::sendVolume() {
    if (!m_volume)
        return;
    const double volume = *std::exchange(m_volume, std::nullopt);
    m_volumeTimer.start(betweenVolumes);
    setProperty(QStringLiteral("Volume"), volume,
                [this, waiting = std::exchange(m_volumeDone, {})](const Failure& failure) {
                    if (!m_volume)
                        m_model.volumeWasAnswered(!failure, m_dispatcher.now());
                    for (const Done& done : waiting)
                        done(failure);
                    attend();
                });
}

} // namespace tarnwick::players
