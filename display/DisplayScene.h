#pragma once

#include <QUrl>
#include <QVariantMap>

#include <memory>

class QQmlEngine;
class QQuickItem;

namespace tarnwick {

class TarnwickView;

/// Opens the looks of the display.
class DisplayScene {
public:
    /// Where the root component is, and what `prepare` lets an engine find. It is an Item that fills its
    /// parent.
    static QUrl rootUrl();

    /// Lets `engine` find the program's QML modules.
    static void prepare(QQmlEngine& engine);

    /// What the root component needs when it is created.
    static QVariantMap initialProperties(TarnwickView& view);

    /// The item that the QML file at `url` describes, with these properties; null with a line on the log when
    /// it cannot be made.
    static std::unique_ptr<QQuickItem> createItem(QQmlEngine& engine, const QUrl& url,
                                                  const QVariantMap& properties);

    /// The root item, made in `engine`; null with a line on the log when it cannot be, which is a fault of
    /// the build. `view` must outlive it.
    static std::unique_ptr<QQuickItem> create(QQmlEngine& engine, TarnwickView& view);
};

} // namespace tarnwick
