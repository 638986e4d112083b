// Draws a flag at build time that would take too long when it is shown.

#include "assets/PictureRenderer.h"

#include <QFile>
#include <QGuiApplication>
#include <QImageWriter>

#include <cstdio>

namespace {

constexpr QSize largest(320, 240); // more than a flag is shown with on a screen of 4K
constexpr int quality = 95;

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    QFile drawing(arguments.value(1));
    if (arguments.size() != 3 || !drawing.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "usage: tarnwick-flag-painter DRAWING.svg PICTURE.webp\n");
        return 2;
    }
    QImageWriter writer(arguments[2], "webp");
    writer.setQuality(quality);
    return writer.write(tarnwick::renderPicture(drawing.readAll(), largest)) ? 0 : 1;
}
