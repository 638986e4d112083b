#include "settings/Preferences.h"

#include <algorithm>

namespace tarnwick {

namespace {

template <typename Type>
Preference makePreference(const char* key, const Type& defaultValue) {
    QStringList choices;
    if constexpr (std::is_enum_v<Type>) {
        for (const auto& entry : optionTable<Type>)
            choices.append(QLatin1String(entry.rawText));
    }
    return {QLatin1String(key), toStored(defaultValue), choices};
}

} // namespace

defaults::Value Preference::value(const defaults::Defaults& defaults) const {
    const auto stored = defaults.value(key);
    if (!stored || stored->index() != defaultValue.index())
        return defaultValue;
    if (!choices.isEmpty() && !choices.contains(std::get<QString>(*stored)))
        return defaultValue;
    return *stored;
}

std::optional<defaults::Value> Preference::parse(const QString& text) const {
    if (std::holds_alternative<bool>(defaultValue)) {
        if (text != u"true" && text != u"false")
            return std::nullopt;
        return text == u"true";
    }
    if (!choices.isEmpty() && !choices.contains(text))
        return std::nullopt;
    return text;
}

QString Preference::possibleValues() const {
    QStringList texts = choices;
    if (std::holds_alternative<bool>(defaultValue))
        texts = {QStringLiteral("true"), QStringLiteral("false")};
    if (texts.isEmpty())
        return QStringLiteral("any text");
    for (QString& text : texts)
        text = u'"' + text + u'"';
    const QString last = texts.takeLast();
    return texts.join(QStringLiteral(", ")) + QStringLiteral(" or ") + last;
}

const std::vector<Preference>& preferences() {
#define TARNWICK_ROW(Type, name, setter, initial, effect) makePreference<Type>(#name, initial),
    static const std::vector<Preference> all{TARNWICK_PREFERENCES(TARNWICK_ROW)};
#undef TARNWICK_ROW
    return all;
}

const Preference* findPreference(const QString& key) {
    const auto& all = preferences();
    const auto it =
        std::find_if(all.begin(), all.end(), [&](const Preference& each) { return each.key == key; });
    return it == all.end() ? nullptr : &*it;
}

std::optional<std::pair<QString, defaults::Value>> storedWith(const Preference& preference,
                                                              const defaults::Value& value) {
    if (preference.key == u"randomBackgroundEnabled" && value == defaults::Value(true))
        return std::pair(QStringLiteral("backgroundOption"), toStored(BackgroundOption::Random));
    return std::nullopt;
}

} // namespace tarnwick
