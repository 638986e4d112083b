#include "visuals/GeneratedRecord.h"

#include "visuals/CDImageOption.h"

#include <algorithm>
#include <array>

namespace tarnwick {

namespace {

/// Tags that are no choice of their own, but can be printed on.
constexpr std::array reels{QLatin1String("R2RSony"), QLatin1String("R2RSonyRed")};

struct Factors {
    double holeRadius;
    double inset;
};

Factors factorsOf(const QString& tag) {
    if (tag.startsWith(QLatin1String("33")))
        return {0.2, 19.6};
    if (tag == QLatin1String("45Vinyl") || tag == QLatin1String("45RedFlexy"))
        return {0.2, 13.8};
    if (tag == QLatin1String("45YellowJukebox"))
        return {1.1, 15.0};
    if (tag == QLatin1String("RTM-LPR90"))
        return {0.8, 21.3};
    return {1, 1};
}

} // namespace

QString generatedRecordBase(const QString& tag) {
    if (tag == QLatin1String("cddefault"))
        return QStringLiteral("cdblank");
    const auto& options = imageOptions();
    const bool known =
        std::any_of(options.begin(), options.end(), [&](const CDImageOption& o) { return o.tag == tag; }) ||
        std::find(reels.begin(), reels.end(), tag) != reels.end();
    return known ? tag : QString();
}

QStringList generatedRecordTags() {
    QStringList tags;
    for (const CDImageOption& option : imageOptions())
        tags.append(option.tag);
    for (const QLatin1String& reel : reels)
        tags.append(reel);
    tags.removeIf([](const QString& tag) { return generatedRecordBase(tag).isEmpty(); });
    tags.removeDuplicates();
    return tags;
}

RecordPrint printFor(const QString& tag, const RecordPrint& print) {
    const Factors factors = factorsOf(tag);
    return {print.side, print.holeRadius * factors.holeRadius, print.inset * factors.inset};
}

DiscImage makeGeneratedRecord(const Catalogue& catalogue, const images::Image& cover, const QString& tag,
                              const RecordPrint& print, const std::function<void(const QString&)>& log) {
    const QString base = generatedRecordBase(tag);
    if (base.isEmpty())
        return {};
    const DiscImage disc = DiscImage::named(catalogue, base);
    if (disc.isNull()) {
        log(QStringLiteral("Errore: Immagine di base %1 non trovata negli asset.").arg(base));
        return {};
    }
    return DiscImage::printed(disc, cover, printFor(tag, print));
}

} // namespace tarnwick
