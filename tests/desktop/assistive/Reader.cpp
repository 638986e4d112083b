// What a screen reader or a switch does, from the command line: finds what there is by role and name, acts on
// it, and listens. It speaks to the accessibility bus of the session, and to nothing of ours.
//
//   reader tree                    role|name|states|value|description, a line each
//   reader do ROLE NAME ACTION     1 when nothing of that role and name offers it
//   reader set ROLE NAME VALUE
//   reader listen                  event|detail|role|name, as they come, until it is ended

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusInterface>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusReply>

#include <array>
#include <cstdio>
#include <functional>
#include <utility>

namespace {

/// An object of the bus, as the protocol carries it.
struct Reference {
    QString owner;
    QDBusObjectPath path;
};

QDBusArgument& operator<<(QDBusArgument& to, const Reference& object) {
    to.beginStructure();
    to << object.owner << object.path;
    to.endStructure();
    return to;
}
const QDBusArgument& operator>>(const QDBusArgument& from, Reference& object) {
    from.beginStructure();
    from >> object.owner >> object.path;
    from.endStructure();
    return from;
}

/// The states that are told, by their numbers in the protocol.
constexpr std::array<std::pair<int, const char*>, 9> stateNames{{{4, "checked"},
                                                                 {8, "enabled"},
                                                                 {9, "expandable"},
                                                                 {10, "expanded"},
                                                                 {11, "focusable"},
                                                                 {12, "focused"},
                                                                 {23, "selected"},
                                                                 {24, "sensitive"},
                                                                 {25, "showing"}}};

QDBusConnection accessibilityBus() {
    QDBusInterface launcher("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus");
    const QDBusReply<QString> address = launcher.call("GetAddress");
    return QDBusConnection::connectToBus(address.value(), "accessibility");
}

/// One thing that there is.
class Thing {
public:
    Thing(QDBusConnection bus, Reference at) : m_bus(std::move(bus)), m_at(std::move(at)) {}

    QString role() const { return call("Accessible", "GetRoleName").toString(); }
    QString name() const { return property("Accessible", "Name").toString(); }
    QString description() const { return property("Accessible", "Description").toString(); }
    QString value() const { return property("Value", "CurrentValue").toString(); }

    QStringList states() const {
        const auto words = qdbus_cast<QList<uint>>(call("Accessible", "GetState"));
        QStringList names;
        for (const auto& [number, name] : stateNames)
            if (words.value(number / 32) & (1U << (number % 32)))
                names.append(name);
        return names;
    }
    QList<Thing> children() const {
        QList<Thing> things;
        for (const Reference& at : qdbus_cast<QList<Reference>>(call("Accessible", "GetChildren")))
            things.append(Thing(m_bus, at));
        return things;
    }

    bool act(const QString& action) const {
        const int count = property("Action", "NActions").toInt();
        for (int i = 0; i < count; ++i)
            if (call("Action", "GetName", {i}).toString().compare(action, Qt::CaseInsensitive) == 0)
                return call("Action", "DoAction", {i}).toBool();
        return false;
    }
    void setValue(double value) const {
        send("org.freedesktop.DBus.Properties", "Set",
             {"org.a11y.atspi.Value", "CurrentValue", QVariant::fromValue(QDBusVariant(value))});
    }

private:
    QVariant send(const QString& interface, const QString& method, const QVariantList& arguments) const {
        auto message = QDBusMessage::createMethodCall(m_at.owner, m_at.path.path(), interface, method);
        message.setArguments(arguments);
        return m_bus.call(message, QDBus::Block, 2000).arguments().value(0);
    }
    QVariant call(const char* facet, const char* method, const QVariantList& arguments = {}) const {
        return send(QString("org.a11y.atspi.") + facet, method, arguments);
    }
    QVariant property(const char* facet, const char* name) const {
        const QVariant answer = send("org.freedesktop.DBus.Properties", "Get",
                                     {QString("org.a11y.atspi.") + facet, QString(name)});
        return answer.value<QDBusVariant>().variant();
    }

    QDBusConnection m_bus;
    Reference m_at;
};

/// Visits everything of the program until `visit` says that it has found what it wants. Whether it did.
bool walk(const Thing& from, const std::function<bool(const Thing&)>& visit) {
    for (const Thing& child : from.children())
        if (visit(child) || walk(child, visit))
            return true;
    return false;
}

void print(const QStringList& fields) {
    std::printf("%s\n", qUtf8Printable(fields.join('|').replace('\n', ' ')));
    std::fflush(stdout);
}

/// Prints what the program announces.
class Listener : public QObject {
    Q_OBJECT

public:
    explicit Listener(const QDBusConnection& bus) : m_bus(bus) {
        QDBusInterface registry("org.a11y.atspi.Registry", "/org/a11y/atspi/registry",
                                "org.a11y.atspi.Registry", m_bus);
        registry.call("RegisterEvent", "object:", QStringList(), QString());
        m_bus.connect({}, {}, "org.a11y.atspi.Event.Object", {}, this, SLOT(hear(QDBusMessage)));
    }

private Q_SLOTS:
    void hear(const QDBusMessage& event) {
        const Thing source(m_bus, {event.service(), QDBusObjectPath(event.path())});
        print({event.member() + ':' + event.arguments().value(0).toString(),
               event.arguments().value(1).toString(), source.role(), source.name()});
    }

private:
    QDBusConnection m_bus;
};

int use(const Thing& desktop, const QString& role, const QString& name,
        const std::function<bool(const Thing&)>& how) {
    return walk(
               desktop,
               [&](const Thing& thing) { return thing.name() == name && thing.role() == role && how(thing); })
               ? 0
               : 1;
}

} // namespace

Q_DECLARE_METATYPE(Reference)

int main(int count, char** words) {
    QCoreApplication application(count, words);
    qDBusRegisterMetaType<Reference>();
    qDBusRegisterMetaType<QList<Reference>>();
    const QDBusConnection bus = accessibilityBus();
    const Thing desktop(bus, {"org.a11y.atspi.Registry", QDBusObjectPath("/org/a11y/atspi/accessible/root")});
    const QStringList asked = QCoreApplication::arguments().mid(1);
    const QString verb = asked.value(0);
    if (verb == "tree") {
        walk(desktop, [](const Thing& thing) {
            print({thing.role(), thing.name(), thing.states().join(' '), thing.value(), thing.description()});
            return false;
        });
        return 0;
    }
    if (verb == "do")
        return use(desktop, asked.value(1), asked.value(2),
                   [&](const Thing& thing) { return thing.act(asked.value(3)); });
    if (verb == "set")
        return use(desktop, asked.value(1), asked.value(2), [&](const Thing& thing) {
            thing.setValue(asked.value(3).toDouble());
            return true;
        });
    if (verb == "listen") {
        const Listener listener(bus);
        return QCoreApplication::exec();
    }
    return 2;
}

#include "Reader.moc"
