#include "app/desktop/DesktopApplication.h"

#include "app/desktop/Identity.h"

#include <QDBusMessage>
#include <QDBusPendingCall>

#include <array>

namespace tarnwick {

namespace {

const auto busName = QStringLiteral("org.freedesktop.DBus");
const auto interface = QStringLiteral("org.freedesktop.Application");
constexpr int answerTime = 2000; // ms

/// By which name the bus and the environment carry what a desktop gives to who may come to the front.
constexpr std::array leaves{std::pair("activation-token", "XDG_ACTIVATION_TOKEN"),
                            std::pair("desktop-startup-id", "DESKTOP_STARTUP_ID")};

/// The identifier as an object's path.
QString objectPath() {
    QString path = u'/' + bundleIdentifier();
    return path.replace(u'.', u'/');
}

} // namespace

DesktopApplication::Answer DesktopApplication::askToShow(QDBusConnection bus) {
    if (!bus.isConnected())
        return Answer::NobodyRuns;
    auto call = QDBusMessage::createMethodCall(bundleIdentifier(), objectPath(), interface,
                                               QStringLiteral("Activate"));
    call.setAutoStartService(false);
    QVariantMap platformData;
    for (const auto& [key, variable] : leaves)
        if (qEnvironmentVariableIsSet(variable))
            platformData.insert(QString::fromLatin1(key), qEnvironmentVariable(variable));
    call.setArguments({platformData});
    const QDBusMessage answer = bus.call(call, QDBus::Block, answerTime);
    if (answer.type() == QDBusMessage::ReplyMessage)
        return Answer::Shown;
    // Which of the two it is depends on whether the bus could start somebody.
    const bool nobody = answer.errorName() == QLatin1String("org.freedesktop.DBus.Error.ServiceUnknown") ||
                        answer.errorName() == QLatin1String("org.freedesktop.DBus.Error.NameHasNoOwner");
    return nobody ? Answer::NobodyRuns : Answer::NoAnswer;
}

DesktopApplication::DesktopApplication(const QDBusConnection& bus, std::function<QString()> player)
    : m_bus(bus), m_player(std::move(player)) {
    if (!m_bus.isConnected())
        return;
    new DesktopApplicationAdaptor(this);
    new DisplayAdaptor(this);
    m_bus.registerObject(objectPath(), this);
    const QString path = QStringLiteral("/org/freedesktop/DBus");
    m_bus.connect(busName, path, busName, QStringLiteral("NameAcquired"), this, SLOT(nameAcquired(QString)));
    m_bus.connect(busName, path, busName, QStringLiteral("NameLost"), this, SLOT(nameLost(QString)));
    auto request = QDBusMessage::createMethodCall(busName, path, busName, QStringLiteral("RequestName"));
    request.setArguments({bundleIdentifier(), 0U}); // in the queue behind the copy that has it
    m_bus.asyncCall(request);
}

DesktopApplication::~DesktopApplication() {
    if (m_bus.isConnected())
        m_bus.unregisterObject(objectPath());
}

void DesktopApplication::nameAcquired(const QString& name) {
    if (name == bundleIdentifier())
        m_hasName = true;
}

void DesktopApplication::nameLost(const QString& name) {
    if (name == bundleIdentifier())
        m_hasName = false;
}

DesktopApplicationAdaptor::DesktopApplicationAdaptor(DesktopApplication* parent)
    : QDBusAbstractAdaptor(parent), m_application(*parent) {}

void DesktopApplicationAdaptor::Activate(const QVariantMap& platformData) {
    // The leave to come to the front; Qt's Wayland side and our X11 one take it from here.
    for (const auto& [key, variable] : leaves)
        if (const QString leave = platformData.value(QLatin1String(key)).toString(); !leave.isEmpty())
            qputenv(variable, leave.toUtf8());
    Q_EMIT m_application.activated();
}

void DesktopApplicationAdaptor::Open(const QStringList& addresses, const QVariantMap& platformData) {
    Q_UNUSED(addresses) // the player opens music, not the display
    Activate(platformData);
}

void DesktopApplicationAdaptor::ActivateAction(const QString& name, const QVariantList& parameter,
                                               const QVariantMap& platformData) {
    Q_UNUSED(name) // the desktop file lists none
    Q_UNUSED(parameter)
    Activate(platformData);
}

} // namespace tarnwick
