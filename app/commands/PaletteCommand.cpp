#include "app/commandline/Answer.h"
#include "app/commands/Commands.h"
#include "platform/images/Image.h"
#include "visuals/Palette.h"

#include <QFile>
#include <QImageReader>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace tarnwick {

namespace {

QJsonArray toJson(const Colour& colour) { return {colour.red, colour.green, colour.blue, colour.alpha}; }

QJsonArray toJson(const std::vector<Colour>& colours) {
    QJsonArray result;
    for (const Colour& colour : colours)
        result.append(toJson(colour));
    return result;
}

QString toText(const std::vector<Colour>& colours) {
    QStringList result;
    for (const Colour& colour : colours) {
        const QString name = colour.toQColor().name();
        result.append(colour.alpha < 1 ? QStringLiteral("%1 at %2").arg(name).arg(colour.alpha, 0, 'g', 3)
                                       : name);
    }
    return result.join(QStringLiteral(", "));
}

} // namespace

int runPalette(const Invocation& invocation) {
    const QString& path = invocation.arguments.front();
    QImageReader reader(path);
    reader.setAutoTransform(true);
    reader.setDecideFormatFromContent(true);
    const QImage picture = reader.read();
    if (picture.isNull()) {
        complain(QStringLiteral("%1 is not a picture: %2").arg(path, reader.errorString()));
        return exitFailed;
    }
    QJsonObject json;
    QString text;
    for (const StylePalette& palette : paletteOf(images::normalised(picture))) {
        json.insert(rawText(palette.style),
                    QJsonObject{{"gradientColors", toJson(palette.gradientColors)},
                                {"darkGradientColors", toJson(palette.darkGradientColors)},
                                {"dynamicTextColor", toJson(palette.dynamicTextColor)}});
        text += QStringLiteral("%1: %2; dark %3; text %4\n")
                    .arg(rawText(palette.style), toText(palette.gradientColors),
                         toText(palette.darkGradientColors),
                         palette.dynamicTextColor == colours::white ? QStringLiteral("white")
                                                                    : QStringLiteral("black"));
    }
    print(invocation.has(QStringLiteral("json")) ? QString::fromUtf8(QJsonDocument(json).toJson()) : text);
    return exitDone;
}

} // namespace tarnwick
