#include "app/commands/StatusReport.h"

#include "app/commandline/Answer.h"
#include "app/program/MusicSession.h"
#include "assets/Catalogue.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QMetaProperty>

#include <algorithm>

namespace tarnwick {

namespace {

QJsonValue artworkToJson(const std::optional<images::Image>& artwork) {
    if (!artwork)
        return QJsonValue::Null;
    return QJsonObject{
        {QStringLiteral("width"), artwork->size().width()},
        {QStringLiteral("height"), artwork->size().height()},
        {QStringLiteral("nocover"), Catalogue::shared().nameOf(*artwork) == QLatin1String("nocover")}};
}

std::vector<std::pair<QString, QJsonValue>> fieldsOf(MusicSession& session) {
    std::vector<std::pair<QString, QJsonValue>> fields;
    const MusicSource& source = session.source();
    const QMetaObject* meta = source.metaObject();
    for (int i = meta->propertyOffset(); i < meta->propertyCount(); ++i) {
        const QMetaProperty property = meta->property(i);
        const QString name = QString::fromLatin1(property.name());
        if (name == QLatin1String("currentAlbumArtwork"))
            fields.emplace_back(name, artworkToJson(source.currentAlbumArtwork()));
        else
            fields.emplace_back(name, QJsonValue::fromVariant(property.read(&source)));
    }
    const QString player = session.music().playerName();
    fields.emplace_back(QStringLiteral("player"), player.isEmpty() ? QJsonValue() : QJsonValue(player));
    return fields;
}

QString plain(const QJsonValue& value) {
    if (value.isString())
        return printable(value.toString());
    if (value.isNull())
        return QStringLiteral("-");
    QByteArray json = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return printable(QString::fromUtf8(json.mid(1, json.size() - 2)));
}

void refresh(MusicSession& session) {
    session.runInBackground([&] { session.music().waitUntilComplete(completionTime); });
    MusicSource& source = session.source();
    session.await({
        [&](const dispatch::Task& done) { source.fetchNowPlaying(done); },
        [&](const dispatch::Task& done) { source.fetchCurrentPlaylistName(done); },
        [&](const dispatch::Task& done) { source.syncShuffleState(done); },
        [&](const dispatch::Task& done) { source.syncVolume(done); },
    });
    // The list belongs to the album that is known by now.
    if (source.isPlayerActive())
        session.await({[&](const dispatch::Task& done) { source.fetchTracksByDisc(done); }});
}

} // namespace

StatusReport StatusReport::of(MusicSession& session) {
    refresh(session);
    StatusReport report;
    report.m_fields = fieldsOf(session);
    return report;
}

QString StatusReport::lines() const {
    QString result;
    for (const auto& [name, value] : m_fields)
        result += name + QStringLiteral(": ") + plain(value) + u'\n';
    return result;
}

QString StatusReport::json(QJsonDocument::JsonFormat format) const {
    QJsonObject object;
    for (const auto& [name, value] : m_fields)
        object.insert(name, value);
    const QByteArray text = QJsonDocument(object).toJson(format);
    return QString::fromUtf8(text) + (format == QJsonDocument::Compact ? QStringLiteral("\n") : QString());
}

bool StatusReport::saysTheSame(const StatusReport& other) const {
    return std::equal(m_fields.begin(), m_fields.end(), other.m_fields.begin(), other.m_fields.end(),
                      [](const auto& a, const auto& b) {
                          return a == b || (a.first == b.first && a.first == QLatin1String("elapsedTime"));
                      });
}

} // namespace tarnwick
