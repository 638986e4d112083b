#include "tests/unit/controls/SceneFixture.h"

#include "platform/animation/VirtualAnimationDriver.h"

#include <QAccessible>
#include <QElapsedTimer>
#include <QMetaEnum>
#include <QQmlComponent>
#include <QtQml/qqmlextensionplugin.h>

#include <algorithm>

Q_IMPORT_QML_PLUGIN(Tarnwick_AssetsPlugin)
Q_IMPORT_QML_PLUGIN(Tarnwick_CanvasPlugin)
Q_IMPORT_QML_PLUGIN(Tarnwick_ControlsPlugin)
Q_IMPORT_QML_PLUGIN(Tarnwick_SettingsPlugin)

namespace tarnwick {

namespace {

animation::VirtualAnimationDriver& animations() {
    // There can be one in a process, and none may end after Qt's own animations.
    static auto* driver = new animation::VirtualAnimationDriver;
    return *driver;
}

} // namespace

SceneFixture::SceneFixture() {
    animations();
    engine.addImportPath("qrc:/qt/qml");
}

SceneFixture::~SceneFixture() {
    window.reset(); // before what its items look at
}

QQuickItem* SceneFixture::show(const QString& file, const QVariantMap& properties, QSize size) {
    QQmlComponent component(&engine, QUrl("qrc:/qt/qml/Tarnwick/Controls/" + file));
    auto* item = qobject_cast<QQuickItem*>(component.createWithInitialProperties(properties));
    if (!item) {
        ADD_FAILURE() << qPrintable(component.errorString());
        return nullptr;
    }
    item->setParent(window.get());
    item->setParentItem(window->contentItem());
    item->setSize(size);
    window->resize(size);
    window->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    window->requestActivate();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
    return item;
}

QQuickItem* SceneFixture::showBar(QSize size) {
    return show("TrackControlsView.qml",
                {{"controls", QVariant::fromValue(controls.get())},
                 {"settings", QVariant::fromValue(&settings)},
                 {"backgroundManager", QVariant::fromValue<QObject*>(&colours)}},
                size);
}

QQuickItem* SceneFixture::showPreferences(QSize size) {
    return show("PreferencesView.qml",
                {{"settings", QVariant::fromValue(&settings)}, {"model", QVariant::fromValue(&model)}}, size);
}

QList<QQuickItem*> SceneFixture::find(QQuickItem* root, const char* property, const QVariant& value) {
    QList<QQuickItem*> found;
    for (QQuickItem* child : root->childItems()) {
        if (child->isVisible() && child->property(property) == value)
            found.append(child);
        found += find(child, property, value);
    }
    return found;
}

QQuickItem* SceneFixture::one(QQuickItem* root, const char* property, const QVariant& value) {
    const auto found = find(root, property, value);
    EXPECT_FALSE(found.isEmpty()) << property << " " << qPrintable(value.toString());
    return found.value(0, root);
}

void SceneFixture::wheel(QQuickItem* over, int notches) {
    const QPoint place = centre(over);
    QWheelEvent event(place, window->mapToGlobal(place), {}, {0, 120 * notches}, Qt::NoButton, {},
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(window.get(), &event);
}

bool SceneFixture::showsRing() const {
    const std::function<bool(const QQuickItem*)> contains = [&](const QQuickItem* item) {
        const auto children = item->childItems();
        return std::any_of(children.begin(), children.end(), [&](const QQuickItem* child) {
            return child->isVisible() &&
                   (QByteArray(child->metaObject()->className()).startsWith("FocusRing") || contains(child));
        });
    };
    return window->activeFocusItem() && contains(window->activeFocusItem());
}

QString SceneFixture::spokenFocus() const {
    QAccessible::setActive(true); // only what is there already hears of it
    auto* interface = QAccessible::queryAccessibleInterface(window->activeFocusItem());
    if (!interface)
        return {};
    const auto roles = QMetaEnum::fromType<QAccessible::Role>();
    return QLatin1String(roles.valueToKey(interface->role())) + u' ' + interface->text(QAccessible::Name);
}

QStringList SceneFixture::walk() {
    QStringList told;
    press(Qt::Key_Tab);
    const QQuickItem* first = window->activeFocusItem();
    do {
        told.append(spokenFocus());
        EXPECT_TRUE(showsRing()) << qPrintable(told.last());
        press(Qt::Key_Tab);
    } while (window->activeFocusItem() != first && showsRing() && told.size() < 100);
    return told;
}

void SceneFixture::pass(std::chrono::milliseconds time) {
    constexpr std::chrono::milliseconds frame(20);
    for (auto left = time; left.count() > 0; left -= frame)
        animations().step(std::min(left, frame).count());
}

bool SceneFixture::waitFor(const std::function<bool()>& condition) {
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > 5000)
            return false;
        animations().step(20);
        QTest::qWait(1); // for what is drawn and laid out
    }
    return true;
}

} // namespace tarnwick
