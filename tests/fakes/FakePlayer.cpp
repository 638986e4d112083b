#include "tests/fakes/FakePlayer.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QEventLoop>
#include <QTimer>

#include <atomic>
#include <future>

namespace tarnwick {

namespace {

const QString objectPath = "/org/mpris/MediaPlayer2";
const QString rootInterface = "org.mpris.MediaPlayer2";
const QString propertiesInterface = "org.freedesktop.DBus.Properties";

QString connectionName() {
    static std::atomic<int> last = 0;
    return QStringLiteral("fake-player-%1").arg(++last);
}

QString written(const QVariant& value) {
    if (value.metaType() == QMetaType::fromType<QDBusVariant>())
        return written(value.value<QDBusVariant>().variant());
    if (value.metaType() == QMetaType::fromType<QDBusObjectPath>())
        return value.value<QDBusObjectPath>().path();
    return value.toString();
}

QString shortInterface(const QString& interface) {
    return interface.startsWith(rootInterface) ? interface.mid(rootInterface.size()) : interface;
}

} // namespace

class FakePlayer::Object : public QDBusVirtualObject {
public:
    explicit Object(FakePlayer& player) : m_player(player) {}

    QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        const auto answer = m_player.reply(message);
        std::chrono::milliseconds delay{0};
        {
            const std::lock_guard lock(m_player.m_mutex);
            delay = m_player.m_delay;
        }
        message.setDelayedReply(true);
        if (!answer)
            return true;
        QTimer::singleShot(delay, this, [connection, reply = *answer] { connection.send(reply); });
        return true;
    }

private:
    FakePlayer& m_player;
};

FakePlayer::FakePlayer(const QString& busAddress, const QString& name)
    : m_busName(rootInterface + u'.' + name), m_connectionName(connectionName()) {
    qDBusRegisterMetaType<QList<QVariantMap>>();
    std::promise<void> ready;
    m_thread = std::thread([this, busAddress, &ready] {
        QObject context;
        m_context = &context;
        m_bus =
            std::make_unique<QDBusConnection>(QDBusConnection::connectToBus(busAddress, m_connectionName));
        m_object = std::make_unique<Object>(*this);
        m_bus->registerVirtualObject(objectPath, m_object.get());
        QEventLoop loop;
        QObject::connect(&context, &QObject::objectNameChanged, &loop, &QEventLoop::quit);
        ready.set_value();
        loop.exec();
        m_object.reset();
        QDBusConnection::disconnectFromBus(m_connectionName);
        m_bus.reset();
    });
    ready.get_future().wait();
    put({{"Identity", name}, {"SupportedUriSchemes", QStringList{"file"}}}, QString());
}

FakePlayer::~FakePlayer() {
    onThread([this] { m_context->setObjectName("ended"); });
    m_thread.join();
}

void FakePlayer::appear() {
    onThread([this] { m_bus->registerService(m_busName); });
}

void FakePlayer::disappear() {
    onThread([this] { m_bus->unregisterService(m_busName); });
}

void FakePlayer::put(const QVariantMap& properties, const QString& interface) {
    const std::lock_guard lock(m_mutex);
    QVariantMap& known = m_properties[interface];
    for (auto entry = properties.begin(); entry != properties.end(); ++entry) {
        if (entry.value().isValid())
            known.insert(entry.key(), entry.value());
        else
            known.remove(entry.key());
    }
}

void FakePlayer::signal(const QVariantMap& properties, const QString& interface) {
    put(properties, interface);
    signalRaw(properties, {}, rootInterface + interface);
}

void FakePlayer::signalRaw(const QVariant& changed, const QStringList& invalidated,
                           const QString& interface) {
    emitSignal(propertiesInterface, "PropertiesChanged", {interface, changed, invalidated});
}

void FakePlayer::emitSignal(const QString& interface, const QString& name, const QVariantList& arguments) {
    onThread([&] {
        QDBusMessage message = QDBusMessage::createSignal(objectPath, interface, name);
        message.setArguments(arguments);
        m_bus->send(message);
    });
}

void FakePlayer::seeked(qlonglong microseconds) {
    emitSignal(rootInterface + ".Player", "Seeked", {microseconds});
}

void FakePlayer::answer(const QString& method, Answer answer) {
    const std::lock_guard lock(m_mutex);
    m_answers[method] = std::move(answer);
}

void FakePlayer::hang(bool hangs) {
    const std::lock_guard lock(m_mutex);
    m_hangs = hangs;
}

void FakePlayer::setDelay(std::chrono::milliseconds delay) {
    const std::lock_guard lock(m_mutex);
    m_delay = delay;
}

QStringList FakePlayer::calls() const { return calls(QString()); }

QStringList FakePlayer::calls(const QString& prefix) const {
    const std::lock_guard lock(m_mutex);
    QStringList found;
    for (const QString& call : m_calls) {
        if (call.startsWith(prefix))
            found.append(call);
    }
    return found;
}

void FakePlayer::forget() {
    const std::lock_guard lock(m_mutex);
    m_calls.clear();
}

void FakePlayer::onThread(const std::function<void()>& task) {
    std::promise<void> done;
    QMetaObject::invokeMethod(
        m_context,
        [&] {
            task();
            done.set_value();
        },
        Qt::QueuedConnection);
    done.get_future().wait();
}

std::optional<QDBusMessage> FakePlayer::reply(const QDBusMessage& call) {
    const std::lock_guard lock(m_mutex);
    const QVariantList arguments = call.arguments();
    QStringList record{call.member()};
    for (const QVariant& argument : arguments)
        record.append(shortInterface(written(argument)));
    record.removeAll(".Player");
    if (call.member() == "GetAll")
        record.append(shortInterface(arguments.value(0).toString()));
    m_calls.append(record.join(u' ').trimmed());
    if (m_hangs)
        return std::nullopt;
    if (const auto special = m_answers.find(call.member()); special != m_answers.end())
        return special->second(call);
    if (call.member() == "GetAll")
        return call.createReply(m_properties[shortInterface(arguments.value(0).toString())]);
    if (call.member() == "Set" && arguments.size() == 3) {
        m_properties[shortInterface(arguments[0].toString())].insert(
            arguments[1].toString(), arguments[2].value<QDBusVariant>().variant());
        return call.createReply();
    }
    if (call.interface() == propertiesInterface)
        return call.createErrorReply(QDBusError::UnknownProperty, "no such property");
    return call.createReply();
}

QVariantMap with(QVariantMap map, const QVariantMap& more) {
    map.insert(more);
    return map;
}

QVariantMap metadata(const QString& title, const QString& artist, const QString& album,
                     const QVariantMap& more) {
    return with({{"mpris:trackid", QVariant::fromValue(QDBusObjectPath("/org/tarnwick/track/1"))},
                 {"mpris:length", qlonglong{180000000}},
                 {"xesam:title", title},
                 {"xesam:artist", QStringList{artist}},
                 {"xesam:album", album}},
                more);
}

QVariantMap playing(const QVariantMap& metadata, double position) {
    return {{"PlaybackStatus", "Playing"},
            {"Metadata", metadata},
            {"Position", static_cast<qlonglong>(position * 1e6)},
            {"Rate", 1.0},
            {"Volume", 0.5},
            {"Shuffle", false},
            {"CanControl", true},
            {"CanPlay", true},
            {"CanPause", true},
            {"CanGoNext", true},
            {"CanGoPrevious", true}};
}

} // namespace tarnwick
