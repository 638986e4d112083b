// Draws one flag of the collection as a raster picture while Tarnwick is built: tarnwick-flag FLAG.svg
// OUT.png

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

namespace {

// Larger than any line of text on any screen.
constexpr QSize size(480, 360);

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    QSvgRenderer flag(arguments.value(1));
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    flag.render(&painter, QRectF(QPointF(), size));
    painter.end();
    if (flag.isValid() && picture.save(arguments.value(2), "png"))
        return 0;
    std::fprintf(stderr, "usage: tarnwick-flag FLAG.svg OUT.png\n");
    return 2;
}
