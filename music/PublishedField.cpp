#include "music/PublishedField.h"

#include <QVariantMap>

namespace tarnwick {

template <>
QVariant fieldToVariant(const images::Image& image) {
    return QVariantMap{{QStringLiteral("id"), image.id()},
                       {QStringLiteral("width"), image.size().width()},
                       {QStringLiteral("height"), image.size().height()}};
}

template <>
QVariant fieldToVariant(const QList<double>& numbers) {
    return QVariantList(numbers.begin(), numbers.end());
}

template <>
QVariant fieldToVariant(const QList<DiscTrack>& discs) {
    QVariantList list;
    for (const DiscTrack& disc : discs)
        list.append(QVariantMap{{QStringLiteral("discNumber"), disc.discNumber},
                                {QStringLiteral("tracks"), disc.tracks}});
    return list;
}

} // namespace tarnwick
