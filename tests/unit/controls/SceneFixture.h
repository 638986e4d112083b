#pragma once

#include "controls/preferences/PreferencesModel.h"
#include "platform/defaults/MemoryDefaults.h"
#include "tests/fakes/FakeWindows.h"
#include "tests/unit/controls/ControlsFixture.h"

#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

namespace tarnwick {

/// The background's colours as the picker asks for them.
class Colours : public QObject {
    Q_OBJECT
    Q_PROPERTY(QList<QColor> gradientColors MEMBER gradientColors NOTIFY changed)
    Q_PROPERTY(QColor dynamicTextColor MEMBER dynamicTextColor NOTIFY changed)

public:
    QList<QColor> gradientColors{Qt::darkCyan, Qt::black};
    QColor dynamicTextColor = Qt::white;

Q_SIGNALS:
    void changed();
};

/// A window with one of the folder's views and real events. Animations and the timers of QML run on a time
/// that only `pass` and `waitFor` move.
class SceneFixture : public ControlsFixture {
protected:
    SceneFixture();
    ~SceneFixture() override;

    QQuickItem* showBar(QSize size = {1200, 600});
    QQuickItem* showPreferences(QSize size = {590, 1000});

    /// Every visible item below `root` whose `property` is `value`.
    static QList<QQuickItem*> find(QQuickItem* root, const char* property, const QVariant& value);
    static QQuickItem* one(QQuickItem* root, const char* property, const QVariant& value);

    static QPoint centre(QQuickItem* item) {
        return item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint();
    }
    void click(QQuickItem* item) { QTest::mouseClick(window.get(), Qt::LeftButton, {}, centre(item)); }
    void pointAt(QQuickItem* item) { QTest::mouseMove(window.get(), centre(item)); }
    void press(Qt::Key key) { QTest::keyClick(window.get(), key); }
    /// Turns the wheel by one notch, towards the user when negative.
    void wheel(QQuickItem* over, int notches);

    /// Whether what has the keyboard shows its ring.
    bool showsRing() const;

    /// What assistive technology is told of what has the keyboard: "role name".
    QString spokenFocus() const;

    /// Goes through everything that Tab reaches, which must show its ring, and back to where it began or
    /// out of the view. What was told on the way.
    QStringList walk();

    void pass(std::chrono::milliseconds time);
    bool waitFor(const std::function<bool()>& condition);

    defaults::MemoryDefaults defaults;
    windows::FakeWindows windows;
    Settings settings{{dispatcher, defaults, windows}};
    Colours colours;
    PreferencesModel model{{settings,
                            [this](bool isClock) { called.append(isClock ? "import clock" : "import info"); },
                            [this](bool isClock, const QString& name) {
                                called.append((isClock ? "clock " : "info ") + name);
                            }}};
    QQmlEngine engine;
    std::unique_ptr<QQuickWindow> window = std::make_unique<QQuickWindow>();

private:
    QQuickItem* show(const QString& file, const QVariantMap& properties, QSize size);
};

} // namespace tarnwick
