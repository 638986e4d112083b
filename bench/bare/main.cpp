// The bare window as a program of its own, for what start-up, memory and rest cost: bare_window
// [--fullscreen]

#include <QGuiApplication>
#include <QPainter>
#include <QQmlEngine>
#include <QQuickImageProvider>
#include <QQuickView>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(BarePlugin)

namespace {

class Discs : public QQuickImageProvider {
public:
    Discs() : QQuickImageProvider(Image) {}

    QImage requestImage(const QString&, QSize*, const QSize& size) override {
        QImage picture(size, QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setBrush(QGradient(QGradient::NightFade));
        painter.drawEllipse(picture.rect().adjusted(1, 1, -1, -1));
        return picture;
    }
};

} // namespace

int main(int argc, char** argv) {
    const QGuiApplication application(argc, argv);
    QQuickView window;
    window.engine()->addImportPath(QStringLiteral("qrc:/qt/qml"));
    window.engine()->addImageProvider(QStringLiteral("bare"), new Discs);
    window.setResizeMode(QQuickView::SizeRootObjectToView);
    window.setSource(QUrl(QStringLiteral("qrc:/qt/qml/Bare/BareView.qml")));
    window.resize(1200, 600);
    if (QCoreApplication::arguments().contains(QLatin1String("--fullscreen")))
        window.showFullScreen();
    else
        window.show();
    return QCoreApplication::exec();
}
