#include "app/commandline/Answer.h"
#include "app/commands/Commands.h"
#include "app/desktop/LoginAgent.h"
#include "platform/defaults/FileDefaults.h"
#include "platform/dispatch/SystemDispatcher.h"
#include "settings/Preferences.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace tarnwick {

namespace {

QJsonValue toJson(const defaults::Value& value) {
    if (const auto* isOn = std::get_if<bool>(&value))
        return *isOn;
    return std::get<QString>(value); // no preference is anything else
}

QString plain(const QJsonValue& value) {
    if (value.isBool())
        return value.toBool() ? QStringLiteral("true") : QStringLiteral("false");
    return value.toString();
}

int printAll(const defaults::Defaults& defaults, bool asJson) {
    QJsonObject object;
    for (const Preference& preference : preferences()) {
        const QJsonValue value = toJson(preference.value(defaults));
        object.insert(preference.key, value);
        if (!asJson)
            print(preference.key + QStringLiteral(": ") + plain(value) + u'\n');
    }
    if (asJson)
        print(QString::fromUtf8(QJsonDocument(object).toJson()));
    return exitDone;
}

int printOne(const Preference& preference, const defaults::Defaults& defaults, bool asJson) {
    const QJsonValue value = toJson(preference.value(defaults));
    QString text = plain(value);
    if (asJson && value.isString()) { // a document cannot be a text, so it is cut out of a list
        text = QString::fromUtf8(QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact));
        text = text.mid(1, text.size() - 2);
    }
    print(text + u'\n');
    return exitDone;
}

/// Starting at login is the one preference whose effect needs no display.
bool applyLogin(const Preference& preference, const defaults::Value& value) {
    if (preference.key != u"launchAtLogin")
        return true;
    bool worked = true;
    LoginAgent agent([&](const QString& line) {
        complain(line);
        worked = false;
    });
    if (std::get<bool>(value))
        agent.manager().installLaunchAgent();
    else
        agent.manager().removeLaunchAgent();
    return worked;
}

} // namespace

int runDefaults(const Invocation& invocation) {
    dispatch::SystemDispatcher dispatcher;
    defaults::FileDefaults defaults(defaults::FileDefaults::standardPath(), dispatcher, complain);
    const bool asJson = invocation.has(QStringLiteral("json"));
    if (invocation.arguments.isEmpty())
        return printAll(defaults, asJson);

    const Preference* preference = findPreference(invocation.arguments.first());
    if (!preference) {
        QStringList keys;
        for (const Preference& each : preferences())
            keys.append(each.key);
        complain(QStringLiteral("'%1' is no preference; there are %2")
                     .arg(invocation.arguments.first(), keys.join(QStringLiteral(", "))));
        return exitUsage;
    }
    if (invocation.arguments.size() == 1)
        return printOne(*preference, defaults, asJson);

    const auto value = preference->parse(invocation.arguments.last());
    if (!value) {
        complain(QStringLiteral("%1 can be %2, not '%3'")
                     .arg(preference->key, preference->possibleValues(), invocation.arguments.last()));
        return exitUsage;
    }
    bool isStored = defaults.set(preference->key, *value);
    if (const auto other = storedWith(*preference, *value))
        isStored = defaults.set(other->first, other->second) && isStored;
    return applyLogin(*preference, *value) && isStored ? exitDone : exitFailed;
}

} // namespace tarnwick
