#include "script/values/Printer.h"

#include "script/values/Coercion.h"
#include "script/values/Keyword.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>

namespace tarnwick::script {

namespace {

void appendQuoted(QString& to, const QString& text) {
    to += QLatin1Char('"');
    for (const QChar letter : text) {
        switch (letter.unicode()) {
        case '"':
            to += QLatin1String("\\\"");
            break;
        case '\\':
            to += QLatin1String("\\\\");
            break;
        case '\n':
            to += QLatin1String("\\n");
            break;
        case '\r':
            to += QLatin1String("\\r");
            break;
        case '\t':
            to += QLatin1String("\\t");
            break;
        default:
            to += letter;
        }
    }
    to += QLatin1Char('"');
}

/// A record's key: bare when it is a word or several, between bars when it is anything else.
void appendKey(QString& to, const QString& key) {
    const bool isBare =
        !key.isEmpty() && !key.front().isDigit() && !isReservedWord(key) &&
        std::all_of(key.begin(), key.end(), [](QChar letter) {
            return letter.isLetterOrNumber() || letter == QLatin1Char('_') || letter == QLatin1Char(' ');
        });
    to += isBare ? key : QLatin1Char('|') + key + QLatin1Char('|');
}

void append(QString& to, const Descriptor& value) {
    switch (value.type()) {
    case DescriptorType::Null:
        break;
    case DescriptorType::MissingValue:
        to += QLatin1String("missing value");
        break;
    case DescriptorType::Text:
        appendQuoted(to, *value.text());
        break;
    case DescriptorType::Data:
        to +=
            QStringLiteral("«data tdta") + QString::fromLatin1(value.data().toHex().toUpper()) + QChar(0xbb);
        break;
    case DescriptorType::Alias:
        to += QLatin1String("alias ");
        appendQuoted(to, *value.text());
        break;
    case DescriptorType::Object:
        to += value.specifier();
        break;
    case DescriptorType::List:
    case DescriptorType::Record: {
        to += QLatin1Char('{');
        QLatin1String separator;
        for (const Descriptor& item : value.items()) {
            to += separator;
            append(to, item);
            separator = QLatin1String(", ");
        }
        for (const auto& [key, field] : value.fields()) {
            to += separator;
            appendKey(to, key);
            to += QLatin1Char(':');
            append(to, field);
            separator = QLatin1String(", ");
        }
        to += QLatin1Char('}');
        break;
    }
    default:
        to += value.text().value_or(QString());
        break;
    }
}

QJsonValue jsonValue(const Descriptor& value) {
    switch (value.type()) {
    case DescriptorType::Null:
    case DescriptorType::MissingValue:
        return QJsonValue::Null;
    case DescriptorType::Boolean:
        return value.booleanValue();
    case DescriptorType::Integer:
        return value.integerValue();
    case DescriptorType::Real:
        return value.doubleValue();
    case DescriptorType::Data:
        return QJsonObject{{QStringLiteral("data"), value.data().size()}};
    case DescriptorType::Object:
        return value.specifier();
    case DescriptorType::List: {
        QJsonArray items;
        for (const Descriptor& item : value.items())
            items.append(jsonValue(item));
        return items;
    }
    case DescriptorType::Record: {
        QJsonObject fields;
        for (const auto& [key, field] : value.fields())
            fields.insert(key, jsonValue(field));
        return fields;
    }
    default:
        return value.text().value_or(QString());
    }
}

} // namespace

QString literal(const Descriptor& value) {
    QString text;
    append(text, value);
    return text;
}

QByteArray json(const Descriptor& value) {
    // A document holds arrays and objects only: a single value is written inside of an array.
    const QByteArray text = QJsonDocument(QJsonArray{jsonValue(value)}).toJson(QJsonDocument::Compact);
    return text.mid(1, text.size() - 2);
}

} // namespace tarnwick::script
