#pragma once

#include <QJsonDocument>
#include <QJsonValue>
#include <QString>

#include <utility>
#include <vector>

namespace tarnwick {

class MusicSession;

/// What `status` tells: the fields of the model in the order of their declaration, and the player.
class StatusReport {
public:
    /// Asks for all of it anew. Returns within the time that tags, cover and album are given.
    static StatusReport of(MusicSession& session);

    /// A line a field, as a terminal can show it.
    QString lines() const;
    /// One object, with its end of line.
    QString json(QJsonDocument::JsonFormat format) const;

    /// Whether the two say the same, but for how far the track has played.
    bool saysTheSame(const StatusReport& other) const;

private:
    std::vector<std::pair<QString, QJsonValue>> m_fields;
};

} // namespace tarnwick
