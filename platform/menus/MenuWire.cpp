#include "platform/menus/MenuWire.h"

#include <QDBusMetaType>

namespace tarnwick::menus {

namespace {

/// Longer names would make a menu as wide as the screen.
constexpr qsizetype longestLabel = 60;

/// A title for a panel, for which "_" marks the letter of a mnemonic.
QString label(const QString& title) {
    QString text = title.simplified();
    if (text.size() > longestLabel)
        text = text.left(longestLabel - 1).trimmed() + QChar(0x2026);
    return text.replace(QLatin1Char('_'), QStringLiteral("__"));
}

/// [["Control", "Shift", "p"]]
QList<QStringList> shortcutOf(const QKeySequence& sequence) {
    const QKeyCombination combination = sequence[0];
    QStringList words;
    const auto modifiers = combination.keyboardModifiers();
    for (const auto& [modifier, word] :
         {std::pair(Qt::ControlModifier, "Control"), std::pair(Qt::AltModifier, "Alt"),
          std::pair(Qt::ShiftModifier, "Shift"), std::pair(Qt::MetaModifier, "Super")})
        if (modifiers.testFlag(modifier))
            words.append(QString::fromLatin1(word));
    words.append(QKeySequence(combination.key()).toString());
    return {words};
}

} // namespace

QVariantMap propertiesOf(const Entry& entry, const QStringList& wanted) {
    QVariantMap all;
    if (entry.isSeparator) {
        all.insert(QStringLiteral("type"), QStringLiteral("separator"));
    } else {
        all.insert(QStringLiteral("label"), label(entry.title));
        all.insert(QStringLiteral("enabled"), !entry.isMenu || !entry.entries.isEmpty());
    }
    if (entry.isMenu)
        all.insert(QStringLiteral("children-display"), QStringLiteral("submenu"));
    if (!entry.shortcut.isEmpty())
        all.insert(QStringLiteral("shortcut"), QVariant::fromValue(shortcutOf(entry.shortcut)));
    if (wanted.isEmpty())
        return all;
    QVariantMap some;
    for (const QString& name : wanted)
        if (const auto found = all.constFind(name); found != all.constEnd())
            some.insert(name, *found);
    return some;
}

LayoutItem layoutOf(const MenuModel& model, int number, int depth, const QStringList& wanted) {
    LayoutItem item{number, {}, {}};
    const Entry* entry = model.entry(number);
    if (!entry)
        return item;
    item.properties = propertiesOf(*entry, wanted);
    if (depth == 0)
        return item;
    for (const int child : model.numbersIn(number))
        item.children.append(layoutOf(model, child, depth - 1, wanted));
    return item;
}

void registerMenuTypes() {
    qDBusRegisterMetaType<LayoutItem>();
    qDBusRegisterMetaType<ItemProperties>();
    qDBusRegisterMetaType<QList<ItemProperties>>();
    qDBusRegisterMetaType<MenuEvent>();
    qDBusRegisterMetaType<QList<MenuEvent>>();
    qDBusRegisterMetaType<QList<QStringList>>();
    qDBusRegisterMetaType<QList<int>>();
}

QDBusArgument& operator<<(QDBusArgument& argument, const LayoutItem& item) {
    argument.beginStructure();
    argument << item.number << item.properties;
    argument.beginArray(QMetaType::fromType<QDBusVariant>());
    for (const LayoutItem& child : item.children)
        argument << QDBusVariant(QVariant::fromValue(child));
    argument.endArray();
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, LayoutItem& item) {
    argument.beginStructure();
    argument >> item.number >> item.properties;
    item.children.clear();
    argument.beginArray();
    while (!argument.atEnd()) {
        QDBusVariant child;
        argument >> child;
        item.children.append(qdbus_cast<LayoutItem>(child.variant()));
    }
    argument.endArray();
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const ItemProperties& item) {
    argument.beginStructure();
    argument << item.number << item.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, ItemProperties& item) {
    argument.beginStructure();
    argument >> item.number >> item.properties;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const MenuEvent& event) {
    argument.beginStructure();
    argument << event.number << event.kind << event.data << event.timestamp;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, MenuEvent& event) {
    argument.beginStructure();
    argument >> event.number >> event.kind >> event.data >> event.timestamp;
    argument.endStructure();
    return argument;
}

} // namespace tarnwick::menus
