#pragma once

#include "platform/defaults/Defaults.h"

#include <QHash>

namespace tarnwick::defaults {

/// Defaults that begin empty and end with the object.
class MemoryDefaults : public Defaults {
public:
    bool set(const QString& key, const Value& value) override {
        m_values.insert(key, value);
        return true;
    }
    void setSoon(const QString& key, const Value& value) override { set(key, value); }

    bool update(const QString& key, const Change& change) override {
        if (const auto changed = change(value(key)))
            set(key, *changed);
        return true;
    }

    std::optional<Value> value(const QString& key) const override {
        const auto it = m_values.find(key);
        return it == m_values.end() ? std::nullopt : std::optional(*it);
    }

    /// Changes a value the way another process would.
    void changeElsewhere(const QString& key, const Value& value) {
        set(key, value);
        Q_EMIT changedElsewhere(key);
    }

private:
    QHash<QString, Value> m_values;
};

} // namespace tarnwick::defaults
