#include "players/mpris/BusValue.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusSignature>
#include <QDBusVariant>
#include <QRegularExpression>

#include <cmath>
#include <limits>

namespace tarnwick::players {

namespace {

constexpr int maximumDepth = 6;
constexpr int maximumItems = 20000;
constexpr qsizetype maximumTexts = 64;

QVariant plain(const QVariant& value, int depth);

QVariant plainArray(const QDBusArgument& argument, int depth) {
    QVariantList items;
    argument.beginArray();
    while (!argument.atEnd() && items.size() < maximumItems)
        items.append(plain(argument.asVariant(), depth + 1));
    argument.endArray();
    return items;
}

QVariant plainStructure(const QDBusArgument& argument, int depth) {
    QVariantList items;
    argument.beginStructure();
    while (!argument.atEnd())
        items.append(plain(argument.asVariant(), depth + 1));
    argument.endStructure();
    return items;
}

QVariant plainEntries(const QDBusArgument& argument, int depth) {
    QVariantMap map;
    argument.beginMap();
    while (!argument.atEnd() && map.size() < maximumItems) {
        argument.beginMapEntry();
        const QString key = plain(argument.asVariant(), depth + 1).toString();
        map.insert(key, plain(argument.asVariant(), depth + 1));
        argument.endMapEntry();
    }
    argument.endMap();
    return map;
}

QVariant plain(const QVariant& value, int depth) {
    if (depth > maximumDepth)
        return {};
    const QMetaType type = value.metaType();
    if (type == QMetaType::fromType<QDBusVariant>())
        return plain(value.value<QDBusVariant>().variant(), depth + 1);
    if (type == QMetaType::fromType<QDBusObjectPath>())
        return value.value<QDBusObjectPath>().path();
    if (type == QMetaType::fromType<QDBusSignature>())
        return value.value<QDBusSignature>().signature();
    if (type == QMetaType::fromType<QVariantMap>()) {
        QVariantMap map;
        const QVariantMap given = value.toMap();
        for (auto entry = given.begin(); entry != given.end(); ++entry)
            map.insert(entry.key(), plain(entry.value(), depth + 1));
        return map;
    }
    if (type != QMetaType::fromType<QDBusArgument>())
        return value;
    const auto argument = value.value<QDBusArgument>();
    switch (argument.currentType()) {
    case QDBusArgument::ArrayType:
        return plainArray(argument, depth);
    case QDBusArgument::StructureType:
        return plainStructure(argument, depth);
    case QDBusArgument::MapType:
        return plainEntries(argument, depth);
    default:
        return {};
    }
}

} // namespace

QVariant plainValue(const QVariant& value) { return plain(value, 0); }

QVariantMap plainMap(const QVariantMap& map, bool foldKeys) {
    QVariantMap result;
    for (auto entry = map.begin(); entry != map.end(); ++entry)
        result.insert(foldKeys ? entry.key().toLower() : entry.key(), plainValue(entry.value()));
    return result;
}

QStringList textsOf(const QVariant& value, qsizetype longest) {
    QStringList given;
    const int type = value.typeId();
    if (type == QMetaType::QString) {
        given.append(value.toString());
    } else if (type == QMetaType::QStringList) {
        given = value.toStringList();
    } else if (type == QMetaType::QVariantList) {
        for (const QVariant& item : value.toList()) {
            if (item.typeId() == QMetaType::QString)
                given.append(item.toString());
        }
    }
    QStringList texts;
    for (const QString& text : std::as_const(given)) {
        const QString trimmed = text.left(longest).trimmed();
        if (!trimmed.isEmpty() && !texts.contains(trimmed) && texts.size() < maximumTexts)
            texts.append(trimmed);
    }
    return texts;
}

QString textOf(const QVariant& value) { return textsOf(value).join(QStringLiteral(", ")); }

std::optional<double> numberOf(const QVariant& value) {
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::UChar:
    case QMetaType::Double: {
        const double number = value.toDouble();
        return std::isfinite(number) ? std::optional(number) : std::nullopt;
    }
    default:
        break;
    }
    static const QRegularExpression beginning(QStringLiteral("^\\s*([-+]?\\d{1,18}(?:\\.\\d+)?)"));
    const QStringList texts = textsOf(value);
    const auto match = beginning.match(texts.value(0));
    return match.hasMatch() ? std::optional(match.captured(1).toDouble()) : std::nullopt;
}

int countOf(const QVariant& value) {
    const double number = numberOf(value).value_or(0);
    return number >= 1 && number <= std::numeric_limits<int>::max() ? static_cast<int>(number) : 0;
}

std::optional<bool> flagOf(const QVariant& value) {
    return value.typeId() == QMetaType::Bool ? std::optional(value.toBool()) : std::nullopt;
}

} // namespace tarnwick::players
