// Paints one picture of the catalogue at build time.

#include "assets/painter/DiscShader.h"
#include "assets/painter/Logo.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImageWriter>
#include <QSaveFile>

#include <algorithm>
#include <cstdio>

using namespace tarnwick::painter;

namespace {

// Beyond this the file grows and the eye sees nothing; at 100 the format would turn lossless.
constexpr int quality = 94;

/// Copies in one step, so that nobody who builds at the same time sees half a file.
bool copyAtOnce(const QString& from, const QString& to) {
    QFile source(from);
    QDir().mkpath(QFileInfo(to).path());
    QSaveFile target(to);
    return source.open(QIODevice::ReadOnly) && target.open(QIODevice::WriteOnly) &&
           target.write(source.readAll()) == source.size() && target.commit();
}

/// Paints a disc into `file`, or takes it from `kept`, where the same painter has left it before.
bool writeDisc(const QString& tag, const QString& file, const QString& kept) {
    if (QFile::exists(kept) && copyAtOnce(kept, file))
        return true;
    const auto all = discs();
    const auto disc = std::find_if(all.begin(), all.end(), [&](const Disc& d) {
        return tag == QLatin1String(d.tag.data(), static_cast<qsizetype>(d.tag.size()));
    });
    if (disc == all.end())
        return false;
    QImageWriter writer(file, "webp");
    writer.setQuality(quality);
    if (!writer.write(paintDisc(*disc)))
        return false;
    copyAtOnce(file, kept); // a cache that cannot be written costs time, nothing else
    return true;
}

bool writeLogo(const QString& format, const QString& colour, const QString& path) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(logoSvg(format.toUpper(), colour)) > 0;
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() == 5 && arguments[1] == QLatin1String("disc") &&
        writeDisc(arguments[2], arguments[3], arguments[4]))
        return 0;
    if (arguments.size() == 5 && arguments[1] == QLatin1String("logo") &&
        writeLogo(arguments[2], arguments[3], arguments[4]))
        return 0;
    std::fprintf(stderr,
                 "usage: tarnwick-painter disc TAG FILE.webp KEPT.webp | logo FORMAT COLOUR FILE.svg\n");
    return 2;
}
