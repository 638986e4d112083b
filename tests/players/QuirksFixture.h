#pragma once

#include "tests/players/MprisFixture.h"

namespace tarnwick {

class Quirks;

/// How real players behave, one behaviour a row: what a fake player says and does, and what has to be made
/// of it.
struct Quirk {
    const char* name;
    QVariantMap properties;
    std::function<void(Quirks&)> play;
    QString busName = QStringLiteral("fake");
};

inline void PrintTo(const Quirk& quirk, std::ostream* stream) { *stream << quirk.name; }
inline std::string nameOfQuirk(const testing::TestParamInfo<Quirk>& quirk) { return quirk.param.name; }

class Quirks : public MprisFixture, public testing::WithParamInterface<Quirk> {
public:
    /// Whether `condition` holds all the time that a player would take to be believed.
    bool stays(const std::function<bool()>& condition) const {
        return !eventually([&] { return !condition(); }, 900ms);
    }
    void pass(std::chrono::milliseconds time) const {
        eventually([] { return false; }, time);
    }
    bool wasSeenStopped() const {
        const QStringList history = probe->takeHistory();
        return std::any_of(history.begin(), history.end(),
                           [](const QString& seen) { return seen.startsWith("stopped"); });
    }
};

inline QVariantMap without(QVariantMap map, const QStringList& keys) {
    for (const QString& key : keys)
        map.remove(key);
    return map;
}

inline const QVariantMap notte =
    metadata("Notte", "Nevia", "Lontano", {{"mpris:length", qlonglong{240000000}}});

} // namespace tarnwick
