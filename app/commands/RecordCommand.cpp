#include "app/commandline/Answer.h"
#include "app/commands/Commands.h"
#include "visuals/GeneratedRecord.h"

#include <QImageReader>

namespace tarnwick {

int runRecord(const Invocation& invocation) {
    const QString& path = invocation.arguments[0];
    const QString& tag = invocation.arguments[1];
    const QString& out = invocation.arguments[2];
    if (generatedRecordBase(tag).isEmpty()) {
        complain(QStringLiteral("no record is made for the tag '%1'; there are %2")
                     .arg(tag, generatedRecordTags().join(QStringLiteral(", "))));
        return exitUsage;
    }
    if (const QString fault = pictureNameFault(out); !fault.isEmpty()) {
        complain(fault);
        return exitUsage;
    }
    QImageReader reader(path);
    reader.setAutoTransform(true);
    reader.setDecideFormatFromContent(true);
    const QImage cover = reader.read();
    if (cover.isNull()) {
        complain(QStringLiteral("%1 is not a picture: %2").arg(path, reader.errorString()));
        return exitFailed;
    }
    const DiscImage record = makeGeneratedRecord(Catalogue::shared(), images::Image::fromPixels(cover), tag,
                                                 standardPrint, complain);
    const auto picture = record.render(static_cast<int>(standardPrint.side));
    if (!picture || !picture->save(out, "png")) {
        complain(QStringLiteral("%1 cannot be written").arg(out));
        return exitFailed;
    }
    return exitDone;
}

} // namespace tarnwick
