#include "display/DisplayScene.h"

#include "display/state/TarnwickView.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(Tarnwick_ControlsPlugin)
Q_IMPORT_QML_PLUGIN(Tarnwick_DisplayPlugin)
Q_IMPORT_QML_PLUGIN(Tarnwick_AssetsPlugin)
Q_IMPORT_QML_PLUGIN(Tarnwick_CanvasPlugin)
Q_IMPORT_QML_PLUGIN(Tarnwick_SettingsPlugin)
Q_IMPORT_QML_PLUGIN(Tarnwick_VisualsPlugin)

namespace tarnwick {

QUrl DisplayScene::rootUrl() { return QUrl(QStringLiteral("qrc:/qt/qml/Tarnwick/Display/DisplayView.qml")); }

void DisplayScene::prepare(QQmlEngine& engine) {
    const QString root = QStringLiteral("qrc:/qt/qml");
    if (!engine.importPathList().contains(root))
        engine.addImportPath(root);
}

QVariantMap DisplayScene::initialProperties(TarnwickView& view) {
    return {{QStringLiteral("view"), QVariant::fromValue(&view)}};
}

std::unique_ptr<QQuickItem> DisplayScene::createItem(QQmlEngine& engine, const QUrl& url,
                                                     const QVariantMap& properties) {
    prepare(engine);
    QQmlComponent component(&engine, url);
    if (!component.isReady()) {
        qWarning().noquote() << component.errorString();
        return nullptr;
    }
    std::unique_ptr<QObject> object(component.createWithInitialProperties(properties));
    if (!qobject_cast<QQuickItem*>(object.get())) {
        qWarning().noquote() << component.errorString();
        return nullptr;
    }
    return std::unique_ptr<QQuickItem>(static_cast<QQuickItem*>(object.release()));
}

std::unique_ptr<QQuickItem> DisplayScene::create(QQmlEngine& engine, TarnwickView& view) {
    return createItem(engine, rootUrl(), initialProperties(view));
}

} // namespace tarnwick
