#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <variant>

namespace tarnwick::defaults {

/// What a key can hold. A type is a type: the text "true" is not a boolean.
using Value = std::variant<bool, double, QString, QStringList>;

/// The user's defaults. Main thread only.
class Defaults : public QObject {
    Q_OBJECT

public:
    /// Stores `value` under `key`, at once: it outlives the process from when this returns. Whether it
    /// does; if not, that is reported where the store was told to, and the value holds for this process.
    virtual bool set(const QString& key, const Value& value) = 0;

    /// As `set`, but may reach the disk a little later, so that it can be called many times a second.
    /// The last value always gets there, unless the process is killed before.
    virtual void setSoon(const QString& key, const Value& value) = 0;

    /// What `update` makes of a value; none leaves it as it is.
    using Change = std::function<std::optional<Value>(const std::optional<Value>& now)>;

    /// Replaces the value under `key` by what `change` makes of the one that is stored, so that lists to
    /// which several processes add lose nothing. `change` may be called twice. Returns as `set` does.
    virtual bool update(const QString& key, const Change& change) = 0;

    /// The value under `key`; none when there is none, or one of a kind that is no `Value`.
    virtual std::optional<Value> value(const QString& key) const = 0;

    /// The value under `key` when it is a `Type`, else none.
    template <typename Type>
    std::optional<Type> get(const QString& key) const {
        const auto held = value(key);
        if (!held || !std::holds_alternative<Type>(*held))
            return std::nullopt;
        return std::get<Type>(*held);
    }

Q_SIGNALS:
    /// Another process has changed, added or removed the value under `key`.
    void changedElsewhere(const QString& key);
};

} // namespace tarnwick::defaults
