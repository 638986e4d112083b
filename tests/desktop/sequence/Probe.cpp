// Loaded into the program by the test of sequences, and no part of it: tells over a socket what state the
// program is in. It looks on and changes nothing.

#include <QCoreApplication>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QQuickItem>
#include <QQuickWindow>
#include <QScreen>
#include <QSocketNotifier>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <cstdlib>

namespace {

QQuickWindow* mainWindow() {
    for (QWindow* window : QGuiApplication::topLevelWindows())
        if (window->title() == u"Tarnwick")
            return qobject_cast<QQuickWindow*>(window);
    return nullptr;
}

QList<const QWindow*> preferences() {
    QList<const QWindow*> shown;
    for (const QWindow* window : QGuiApplication::topLevelWindows())
        if (window->title() == u"Preferences" && window->isVisible())
            shown.append(window);
    return shown;
}

/// Whether they lie on their screen with the frame that the desktop gives them.
bool preferencesFit() {
    const auto all = preferences();
    return std::all_of(all.begin(), all.end(), [](const QWindow* window) {
        return window->screen()->availableGeometry().contains(window->frameGeometry());
    });
}

/// What the popups of the window are called, from the lowest; nothing that goes without the keyboard.
QStringList popups(const QQuickWindow& window) {
    QStringList names;
    for (const QQuickItem* layer : window.contentItem()->childItems()) {
        if (!layer->inherits("QQuickOverlay"))
            continue;
        for (const QQuickItem* item : layer->childItems())
            if (const QObject* popup = item->parent();
                item->isVisible() && popup && popup->property("focus").toBool())
                names.append(popup->inherits("QQuickMenu") ? "menu" : "chooser");
    }
    return names;
}

/// The title of the entry that the menus' keys have reached.
QString litEntry(const QQuickWindow& window) {
    for (const QQuickItem* item = window.activeFocusItem(); item; item = item->parentItem())
        if (item->inherits("QQuickMenuItem"))
            return item->property("text").toString();
    return {};
}

bool hasWindowButtons(const QQuickItem& item) {
    const auto children = item.childItems();
    return std::any_of(children.begin(), children.end(), [](const QQuickItem* child) {
        return (QByteArray(child->metaObject()->className()).startsWith("WindowButton_") &&
                child->isVisible()) ||
               hasWindowButtons(*child);
    });
}

/// "keys" for the key view itself, "inside" for what is in it, "over" for a popup, else what has the focus.
QString focusOf(const QQuickWindow& window, const QQuickItem& keys) {
    const QQuickItem* item = window.activeFocusItem();
    if (!item)
        return {};
    if (item == &keys)
        return "keys";
    if (keys.isAncestorOf(item))
        return "inside";
    for (const QQuickItem* each = item; each; each = each->parentItem())
        if (each->inherits("QQuickPopupItem"))
            return "over";
    return QString::fromLatin1(item->metaObject()->className());
}

QJsonObject state() {
    const QQuickWindow* window = mainWindow();
    const auto* keys = window ? window->property("displayPlace").value<QQuickItem*>() : nullptr;
    const QObject* display = keys ? keys->childItems().value(0) : nullptr;
    if (!display)
        return {};
    const auto* view = display->property("view").value<QObject*>();
    const auto* controls = view->property("controls").value<QObject*>();
    const QWindow* focused = QGuiApplication::focusWindow();
    const Qt::WindowStates states = window->windowStates();
    return {{"isReady", keys->isVisible()},
            {"isVisible", window->isVisible()},
            {"isMinimised", states.testFlag(Qt::WindowMinimized)},
            {"isExposed", window->isExposed()},
            {"isFullScreen", states.testFlag(Qt::WindowFullScreen)},
            {"isFlipped", view->property("isFlipped").toBool()},
            {"hasPicker", controls->property("showPlaylistPicker").toBool()},
            {"hasBar", controls->property("showTrackControls").toBool()},
            {"hasButtons", hasWindowButtons(*window->contentItem())},
            {"preferences", int(preferences().size())},
            {"preferencesFit", preferencesFit()},
            {"popups", popups(*window).join(' ')},
            {"entry", litEntry(*window)},
            {"keyboard", focused ? focused->title() : QString()},
            {"focus", focusOf(*window, *keys)},
            {"window", qint64(window->winId())},
            {"x", window->x()},
            {"y", window->y()},
            {"width", window->width()},
            {"height", window->height()}};
}

/// Lets the program take in what the X server had sent before.
void catchUp() {
    if (const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>())
        std::free(
            xcb_get_input_focus_reply(x11->connection(), xcb_get_input_focus(x11->connection()), nullptr));
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
}

void answer(int connection) {
    char byte = 0;
    if (read(connection, &byte, 1) != 1)
        _exit(3); // the test has gone
    catchUp();
    const QByteArray text = QJsonDocument(state()).toJson(QJsonDocument::Compact) + '\n';
    [[maybe_unused]] const auto written = write(connection, text.constData(), std::size_t(text.size()));
}

void connectToTest() {
    const QByteArray path = qgetenv("TARNWICK_PROBE");
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    const int connection = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (path.isEmpty() || path.size() >= qsizetype(sizeof address.sun_path) || connection < 0)
        return;
    std::copy(path.begin(), path.end(), address.sun_path);
    if (connect(connection, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0)
        return;
    auto* asked = new QSocketNotifier(connection, QSocketNotifier::Read, qApp);
    QObject::connect(asked, &QSocketNotifier::activated, asked, [connection] { answer(connection); });
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(connectToTest)
