#include "app/program/DisplayProgram.h"

#include "app/commandline/Answer.h"
#include "app/desktop/Identity.h"
#include "app/desktop/Memory.h"
#include "app/program/KeyView.h"
#include "assets/Catalogue.h"
#include "canvas/RenderQueue.h"
#include "controls/assistive/AccessibleStates.h"
#include "display/DisplayScene.h"
#include "platform/windows/Frames.h"
#include "players/mpris/MprisMusic.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQuickImageProvider>
#include <QScreen>
#include <QStandardPaths>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(Tarnwick_AppPlugin)

namespace tarnwick {

namespace {

constexpr QSize firstSize(1200, 600);
constexpr int iconSide = 256;

/// Longest wait for the first picture of the splash before the start goes on without it: the window may
/// come up minimised.
constexpr auto longestWait = std::chrono::milliseconds(500);

/// When a player that the command line names should have been found.
constexpr auto playerPatience = std::chrono::seconds(2);

/// When the start and the first album's coming are over.
constexpr auto settled = std::chrono::seconds(4);

/// The catalogue's pictures for the splash.
class CatalogueImages : public QQuickImageProvider {
public:
    CatalogueImages() : QQuickImageProvider(Image) {}

    QImage requestImage(const QString& name, QSize* size, const QSize& requested) override {
        const auto picture = Catalogue::shared().picture(name, requested);
        if (!picture)
            return {};
        *size = picture->size();
        return *picture;
    }
};

void log(const QString& line) { print(line + u'\n'); }

QImage applicationImage() {
    const auto picture = Catalogue::shared().picture(QStringLiteral("AppIcon"), QSize(iconSide, iconSide));
    return picture ? *picture : QImage();
}

QDBusConnection desktopBus() {
    if (!players::MprisMusic::hasSessionBus())
        return QDBusConnection(QStringLiteral("none"));
    return QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("tarnwick-desktop"));
}

} // namespace

DisplayProgram::DisplayProgram(const Invocation& invocation)
    : m_invocation(invocation), m_startsInFullScreen(invocation.has(QStringLiteral("fullscreen"))),
      m_session(invocation,
                {.log = log, .showDialog = [this](const QString& message) { showMessage(message); }}),
      m_copies(RunningCopies::standardFolder()),
      m_defaults(defaults::FileDefaults::standardPath(), m_session.dispatcher(), log),
      m_power(m_session.dispatcher()), m_windows(m_session.dispatcher()),
      m_singleTouch(m_session.dispatcher()),
      m_agentQueue(m_session.dispatcher().globalQueue(dispatch::QualityOfService::Background)),
      m_loginAgent(log, &m_agentQueue), m_app(appParts()),
      m_dockIcon(m_session.dispatcher(), Catalogue::shared(),
                 [this](const QImage& icon) {
                     // A cover that was still being drawn must not replace the icon that was put back.
                     if (m_app.settings().autoUpdateAppIcon())
                         m_windows.setApplicationIcon(icon);
                 }),
      m_stopSignals([] { QCoreApplication::exit(exitDone); }) {
    qGuiApp->installEventFilter(this);
    AccessibleStates::install();
    renderqueue::setDispatcher(&m_session.dispatcher());
}

DisplayProgram::~DisplayProgram() {
    qGuiApp->removeEventFilter(this);
    if (m_view)
        m_view->disappear();
    if (m_window)
        disconnect(m_window.get(), nullptr, this, nullptr); // its focus moves while it goes
    m_session.music().setRefusalHandler({});
    m_session.end();
    m_agentQueue.finish(); // what is stored about the login is also done
    renderqueue::setDispatcher(nullptr);
}

TarnwickApp::Parts DisplayProgram::appParts() {
    return {.settings = {.dispatcher = m_session.dispatcher(),
                         .defaults = m_defaults,
                         .windows = m_windows,
                         .power = &m_power,
                         .launchAgent = &m_loginAgent.manager(),
                         .applicationImage = applicationImage},
            .musicSource = m_session.source(),
            .isFirstCopy = [this] { return m_copies.isFirst(); },
            .canComeBack = [this] { return canComeBack(); },
            .makePreferencesWindow =
                [this] { return m_preferencesOfMenu ? m_preferencesOfMenu->open() : nullptr; },
            .importFonts =
                [this](bool forClock) {
                    if (m_clockFonts && m_trackInfoFonts)
                        importFonts(forClock, m_chooseFonts, *m_clockFonts, *m_trackInfoFonts);
                },
            .quit = [] { QCoreApplication::exit(exitDone); }};
}

int DisplayProgram::run() {
    if (!openWindow())
        return exitFailed;
    connect(&m_app, &TarnwickApp::showSplashChanged, this, &DisplayProgram::showDisplay);
    m_app.splashAppeared();
    const int code = QCoreApplication::exec();
    m_app.mainWindow().leave();
    return code;
}

/// By the tray, or by the launcher, which asks our bus name; but only where we are installed is there one.
bool DisplayProgram::canComeBack() const {
    if (m_tray && m_tray->isShown())
        return true;
    return m_desktop && m_desktop->hasName() &&
           !QStandardPaths::locate(QStandardPaths::ApplicationsLocation,
                                   bundleIdentifier() + QStringLiteral(".desktop"))
                .isEmpty();
}

bool DisplayProgram::openWindow() {
    DisplayScene::prepare(m_engine);
    m_engine.addImageProvider(QStringLiteral("catalogue"), new CatalogueImages);
    QQmlComponent component(&m_engine, QUrl(QStringLiteral("qrc:/qt/qml/Tarnwick/App/Main.qml")));
    m_window.reset(qobject_cast<QQuickWindow*>(
        component.createWithInitialProperties({{QStringLiteral("app"), QVariant::fromValue(&m_app)}})));
    if (!m_window) {
        complain(component.errorString());
        return false;
    }
    m_renderer.guard(*m_window);
    m_keys = m_window->property("displayPlace").value<KeyView*>();
    placeWindow();
    // What follows the first picture may take the time it takes.
    connect(m_window.get(), &QQuickWindow::frameSwapped, this, &DisplayProgram::makeDisplay,
            Qt::ConnectionType(Qt::QueuedConnection | Qt::SingleShotConnection));
    m_session.dispatcher().asyncAfter(m_session.dispatcher().mainQueue(), longestWait,
                                      [this] { makeDisplay(); });
    m_window->setVisible(true);
    return true;
}

void DisplayProgram::placeWindow() {
    if (const QScreen* screen = m_window->screen())
        m_window->setGeometry(windows::centred(firstSize, screen->availableGeometry()));
    windows::Window& window = m_windows.add(*m_window);
    m_app.mainWindow().restoreFrame();
    if (m_startsInFullScreen || m_app.settings().launchInFullscreen())
        window.toggleFullScreen(); // from its first picture on
}

void DisplayProgram::makeDisplay() {
    if (m_view)
        return;
    loadFonts();
    m_view = std::make_unique<TarnwickView>(viewParts());
    m_display = DisplayScene::create(m_engine, *m_view);
    if (m_display)
        m_display->setParentItem(m_keys);
    connect(m_keys, &KeyView::keyDown, m_view.get(), &TarnwickView::onKeyDown);
    takeHands();
    joinDesktop();
}

TarnwickView::Parts DisplayProgram::viewParts() {
    return {.dispatcher = m_session.dispatcher(),
            .musicSource = m_session.source(),
            .settings = m_app.settings(),
            .backgroundManager = m_app.backgroundManager(),
            .windows = m_windows,
            .images = m_session.images(),
            .power = &m_power,
            .fonts = &m_fontRegistry,
            .log = log,
            .randomClockFontName = [this] { return m_clockFonts->randomFontName(); },
            .randomTrackInfoFontName = [this] { return m_trackInfoFonts->randomFontName(); },
            .applyDockIcon = [this](const auto& cover,
                                    bool enabled) { m_dockIcon.applyDockIcon(cover, enabled); },
            .openPreferences = [this] { m_preferencesOfBar->open(); }};
}

void DisplayProgram::loadFonts() {
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    const BaseFontManager::Environment environment{
        m_defaults, m_fontRegistry, data.isEmpty() ? QString() : data + QStringLiteral("/tarnwick"),
        systemRandomIndex()};
    m_clockFonts.emplace(environment);
    m_trackInfoFonts.emplace(environment);
    m_chooseFonts = fontFileChooser(m_engine, [this] { return &windowInUse(); });
    const PreferencesDoor::Parts door{m_engine,      m_app.settings(),  m_windows,    *m_window,
                                      *m_clockFonts, *m_trackInfoFonts, m_chooseFonts};
    m_preferencesOfMenu.emplace(door);
    m_preferencesOfBar.emplace(door);
}

/// Whatever keys, fingers and the pointer do beyond what the views take themselves.
void DisplayProgram::takeHands() {
    m_playerKeys.emplace(m_session.source(), *m_view);
    m_heldKeys.emplace();
    connect(m_keys, &KeyView::pressed, &*m_playerKeys, &PlayerKeys::press);
    m_restingPointer.emplace(m_session.dispatcher(), *m_window);
    connect(&*m_restingPointer, &RestingPointer::isHiddenChanged, m_window.get(),
            [window = m_window.get()](bool isHidden) { window->setProperty("isPointerHidden", isHidden); });
    m_drag.emplace(*m_window);
    connect(&m_singleTouch, &windows::SingleTouch::held, this, [this](QWindow* window, const QPointF& place) {
        if (window == m_window.get())
            QMetaObject::invokeMethod(window, "openMenu", Q_ARG(QPointF, place));
    });
}

void DisplayProgram::joinDesktop() {
    const QDBusConnection bus = desktopBus();
    m_desktop.emplace(bus, [this] { return m_session.music().playerAddress(); });
    connect(&*m_desktop, &DesktopApplication::activated, &m_app.mainWindow(), &MainWindow::show);
    m_shortcuts.emplace(m_app.menu(), *m_window);
    connect(m_window.get(), &QQuickWindow::activeFocusItemChanged, this, &DisplayProgram::followFocus);
    connect(m_view->controls(), &TrackControls::showPlaylistPickerChanged, this,
            &DisplayProgram::followFocus);
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, &DisplayProgram::followPhase);
    followMotion(bus);
    if (bus.isConnected()) {
        m_globalMenu.emplace(m_app.menu(), *m_window, bus);
        joinTray(bus);
    }
    m_windows.setApplicationIcon(applicationImage());
}

void DisplayProgram::joinTray(const QDBusConnection& bus) {
    m_tray.emplace(m_app.trayMenu(), bus, QStringLiteral("Tarnwick"), bundleIdentifier());
    connect(&*m_tray, &menus::TrayIcon::activated, &m_app.mainWindow(), &MainWindow::show);
    connect(&*m_tray, &menus::TrayIcon::secondaryActivated, m_view.get(),
            [this] { m_view->controls()->press(QStringLiteral("playPause")); });
    connect(&*m_tray, &menus::TrayIcon::turned, m_view->controls()->volumeScale(), &VolumeScale::turn);
    connect(&m_windows, &windows::QtWindowSystem::applicationIconChanged, &*m_tray,
            [this] { m_tray->setIcon(m_windows.applicationIcon()); });
}

void DisplayProgram::followMotion(const QDBusConnection& bus) {
    m_reducedMotion.emplace(bus);
    connect(&*m_reducedMotion, &animation::ReducedMotion::changed, m_view.get(),
            &TarnwickView::setReducedMotion);
}

void DisplayProgram::showDisplay() {
    makeDisplay();
    // From here on what changes at the player shows at once; the polls are only the floor.
    followPlayer(m_session.source(), m_session.music(), *m_view->controls());
    const auto invite = [this] { m_view->setCapabilities(m_session.music().capabilities()); };
    connect(&m_session.source(), &MusicSource::playerChanged, m_view.get(), invite);
    invite();
    m_session.music().setRefusalHandler([this](const QString& line) { showMessage(line); });
    m_view->appear();
    m_session.dispatcher().asyncAfter(m_session.dispatcher().mainQueue(), playerPatience,
                                      [this] { tellMissingPlayer(); });
    m_session.dispatcher().asyncAfter(m_session.dispatcher().mainQueue(), settled, giveFreedMemoryBack);
}

void DisplayProgram::tellMissingPlayer() {
    const QString missing = missingPlayer(m_invocation, m_session.music());
    if (missing.isEmpty())
        return;
    log(missing);
    showMessage(missing);
}

void DisplayProgram::showMessage(const QString& message) {
    m_session.dispatcher().mainQueue().async([this, message] {
        if (m_view)
            m_view->controls()->showMessage(message);
    });
}

void DisplayProgram::followPhase() {
    if (QGuiApplication::applicationState() == Qt::ApplicationActive)
        m_app.setScenePhase(ScenePhase::Active);
    else
        m_app.setScenePhase(m_window->isVisible() ? ScenePhase::Inactive : ScenePhase::Background);
}

void DisplayProgram::followFocus() {
    m_shortcuts->setPlainKeysEnabled(m_keys->hasKeys() && !m_view->controls()->showPlaylistPicker());
}

QQuickWindow& DisplayProgram::windowInUse() {
    if (auto* window = qobject_cast<QQuickWindow*>(QGuiApplication::focusWindow()))
        return *window;
    m_app.mainWindow().show();
    return *m_window;
}

bool DisplayProgram::eventFilter(QObject* watched, QEvent* event) {
    // Asked to quit, Qt would close the windows first, and the main window is never closed.
    if (watched == qGuiApp && event->type() == QEvent::Quit) {
        QCoreApplication::exit(exitDone);
        return true;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace tarnwick
