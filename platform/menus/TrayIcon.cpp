#include "platform/menus/TrayIcon.h"

#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QtEndian>

#include <cstdlib>

namespace tarnwick::menus {

namespace {

const auto watcher = QStringLiteral("org.kde.StatusNotifierWatcher");
const auto watcherPath = QStringLiteral("/StatusNotifierWatcher");
const auto itemPath = QStringLiteral("/StatusNotifierItem");
const auto menuPath = QStringLiteral("/TrayMenu");

/// What trays draw, at one and two times.
constexpr int iconSides[] = {22, 32, 48, 64};

IconPicture pictureOf(const QImage& icon, int side) {
    QImage scaled = icon.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation)
                        .convertToFormat(QImage::Format_ARGB32);
    IconPicture picture{scaled.width(), scaled.height(), {}};
    picture.pixels.reserve(qsizetype{4} * scaled.width() * scaled.height());
    for (int y = 0; y < scaled.height(); ++y) {
        auto* line = reinterpret_cast<quint32*>(scaled.scanLine(y));
        for (int x = 0; x < scaled.width(); ++x)
            line[x] = qToBigEndian(line[x]);
        picture.pixels.append(reinterpret_cast<const char*>(line), qsizetype{4} * scaled.width());
    }
    return picture;
}

void registerTrayTypes() {
    qDBusRegisterMetaType<IconPicture>();
    qDBusRegisterMetaType<QList<IconPicture>>();
    qDBusRegisterMetaType<ToolTip>();
}

} // namespace

QDBusArgument& operator<<(QDBusArgument& argument, const IconPicture& picture) {
    argument.beginStructure();
    argument << picture.width << picture.height << picture.pixels;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, IconPicture& picture) {
    argument.beginStructure();
    argument >> picture.width >> picture.height >> picture.pixels;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const ToolTip& tip) {
    argument.beginStructure();
    argument << tip.icon << tip.pictures << tip.title << tip.text;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, ToolTip& tip) {
    argument.beginStructure();
    argument >> tip.icon >> tip.pictures >> tip.title >> tip.text;
    argument.endStructure();
    return argument;
}

TrayIcon::TrayIcon(MenuModel& model, const QDBusConnection& bus, const QString& name,
                   const QString& identifier)
    : m_bus(bus), m_export(model, bus, menuPath), m_watcher(watcher, bus) {
    registerTrayTypes();
    m_adaptor = new TrayAdaptor(this, name, identifier);
    m_bus.registerObject(itemPath, this);
    connect(&m_watcher, &QDBusServiceWatcher::serviceRegistered, this, &TrayIcon::announce);
    connect(&m_watcher, &QDBusServiceWatcher::serviceUnregistered, this, [this] { m_isTaken = false; });
    for (const char* change : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"})
        m_bus.connect(watcher, watcherPath, watcher, QLatin1String(change), this, SLOT(askForHost()));
    announce();
}

TrayIcon::~TrayIcon() { m_bus.unregisterObject(itemPath); }

void TrayIcon::setIcon(const QImage& icon) {
    QList<IconPicture> pictures;
    if (!icon.isNull())
        for (const int side : iconSides)
            pictures.append(pictureOf(icon, side));
    m_adaptor->setPictures(std::move(pictures));
}

void TrayIcon::announce() {
    auto call = QDBusMessage::createMethodCall(watcher, watcherPath, watcher,
                                               QStringLiteral("RegisterStatusNotifierItem"));
    call.setAutoStartService(false);
    call.setArguments({m_bus.baseService()});
    auto* pending = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending] {
        m_isTaken = !pending->isError();
        pending->deleteLater();
    });
    askForHost();
}

/// A watcher may run with no tray to draw anything. One that does not tell has one.
void TrayIcon::askForHost() {
    auto call = QDBusMessage::createMethodCall(
        watcher, watcherPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    call.setAutoStartService(false);
    call.setArguments({watcher, QStringLiteral("IsStatusNotifierHostRegistered")});
    auto* pending = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending] {
        const QVariant answer = pending->reply().arguments().value(0);
        m_hasHost = pending->isError() || answer.value<QDBusVariant>().variant().toBool();
        pending->deleteLater();
    });
}

TrayAdaptor::TrayAdaptor(TrayIcon* parent, QString name, QString identifier)
    : QDBusAbstractAdaptor(parent), m_icon(*parent), m_name(std::move(name)),
      m_identifier(std::move(identifier)) {}

void TrayAdaptor::setPictures(QList<IconPicture> pictures) {
    m_pictures = std::move(pictures);
    Q_EMIT NewIcon();
}

QDBusObjectPath TrayAdaptor::menu() const { return QDBusObjectPath(menuPath); }

void TrayAdaptor::Activate(int x, int y) {
    Q_UNUSED(x)
    Q_UNUSED(y)
    QMetaObject::invokeMethod(&m_icon, &TrayIcon::activated, Qt::QueuedConnection);
}

void TrayAdaptor::SecondaryActivate(int x, int y) {
    Q_UNUSED(x)
    Q_UNUSED(y)
    QMetaObject::invokeMethod(&m_icon, &TrayIcon::secondaryActivated, Qt::QueuedConnection);
}

// The tray shows the exported menu by itself.
void TrayAdaptor::ContextMenu(int x, int y) {
    Q_UNUSED(x)
    Q_UNUSED(y)
}

void TrayAdaptor::Scroll(int delta, const QString& orientation) {
    if (orientation.compare(QLatin1String("horizontal"), Qt::CaseInsensitive) == 0)
        return;
    constexpr int notch = 120;
    // Some trays tell notches, and not eighths of a degree.
    const int eighths = std::abs(delta) < 15 ? delta * notch : delta;
    QMetaObject::invokeMethod(
        &m_icon, [&icon = m_icon, eighths] { Q_EMIT icon.turned(eighths); }, Qt::QueuedConnection);
}

} // namespace tarnwick::menus
