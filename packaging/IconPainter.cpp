// Paints the application's icon at the sizes of the icon theme. Usage: icon_painter FOLDER SIDE…
// Each becomes FOLDER/SIDE.png.

#include "assets/Catalogue.h"

#include <QDir>
#include <QGuiApplication>

#include <cstdio>

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QDir folder(arguments.value(1));
    for (const QString& side : arguments.mid(2)) {
        const auto icon = tarnwick::Catalogue::shared().picture(QStringLiteral("AppIcon"),
                                                                QSize(side.toInt(), side.toInt()));
        if (!icon || !icon->save(folder.filePath(side + QStringLiteral(".png")))) {
            std::fprintf(stderr, "icon_painter: no icon of %s pixels\n", qPrintable(side));
            return 1;
        }
    }
    return 0;
}
