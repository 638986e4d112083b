#include "music/ReplyDecoder.h"

#include "music/Numerals.h"

#include <algorithm>
#include <map>

namespace tarnwick::replies {

using script::Descriptor;

QString itemText(const Descriptor& reply, int index, const QString& fallback) {
    const auto item = reply.item(index);
    return item ? item->text().value_or(fallback) : fallback;
}

double itemNumber(const Descriptor& reply, int index) {
    const auto item = reply.item(index);
    return item ? item->doubleValue() : 0;
}

QStringList texts(const Descriptor& list) {
    QStringList result;
    for (const Descriptor& item : list.items())
        if (const auto text = item.text())
            result.append(*text);
    return result;
}

QList<double> numbers(const Descriptor& list) {
    QList<double> result;
    for (const QString& text : texts(list))
        if (const auto number = decimalFloat(text))
            result.append(*number);
    return result;
}

QList<DiscTrack> tracksByDisc(const Descriptor& list) {
    using NumberedTitle = std::pair<qint32, QString>;
    std::map<qint32, std::vector<NumberedTitle>> discs;
    for (const Descriptor& entry : list.items()) {
        const auto disc = entry.coerceToList();
        const auto number = disc ? disc->item(1) : std::nullopt;
        const auto second = number ? disc->item(2) : std::nullopt;
        const auto tracks = second ? second->coerceToList() : std::nullopt;
        if (!tracks)
            continue;
        std::vector<NumberedTitle> titles;
        for (const Descriptor& trackEntry : tracks->items()) {
            const auto track = trackEntry.coerceToList();
            const auto trackNumber = track ? track->item(1) : std::nullopt;
            const auto titleItem = trackNumber ? track->item(2) : std::nullopt;
            if (const auto title = titleItem ? titleItem->text() : std::nullopt)
                titles.emplace_back(trackNumber->int32Value(), *title);
        }
        std::stable_sort(titles.begin(), titles.end(),
                         [](const NumberedTitle& a, const NumberedTitle& b) { return a.first < b.first; });
        discs[number->int32Value()] = std::move(titles);
    }
    QList<DiscTrack> result;
    for (const auto& [number, titles] : discs) {
        DiscTrack disc{number, {}};
        for (const auto& title : titles)
            disc.tracks.append(title.second);
        result.append(disc);
    }
    return result;
}

} // namespace tarnwick::replies
