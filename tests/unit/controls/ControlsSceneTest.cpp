// Whole flows with real events on the QML scene.

#include "controls/PreferencesModel.h"
#include "controls/PreferencesWindowOpener.h"
#include "controls/TrackControls.h"
#include "music/Scripts.h"
#include "platform/defaults/MemoryDefaults.h"
#include "tests/fakes/FakeWindows.h"
#include "tests/unit/music/MusicFixture.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(Tarnwick_AssetsPlugin)
Q_IMPORT_QML_PLUGIN(Tarnwick_ControlsPlugin)
Q_IMPORT_QML_PLUGIN(Tarnwick_SettingsPlugin)

using testing::ElementsAre;
using testing::IsEmpty;

namespace tarnwick {
namespace {

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

class SceneTest : public MusicFixture {
protected:
    SceneTest() {
        MusicSource::setShared(source.get());
        engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    }
    ~SceneTest() override {
        window.reset(); // before what its items look at
    }

    QQuickItem* show(const QString& file, QVariantMap properties, QSize size) {
        QQmlComponent component(&engine, QUrl(QStringLiteral("qrc:/qt/qml/Tarnwick/Controls/") + file));
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

    QQuickItem* showBar(QSize size = {1200, 600}) {
        return show(QStringLiteral("TrackControlsView.qml"),
                    {{QStringLiteral("controls"), QVariant::fromValue(controls.get())},
                     {QStringLiteral("settings"), QVariant::fromValue(&settings)},
                     {QStringLiteral("backgroundManager"), QVariant::fromValue<QObject*>(&colours)}},
                    size);
    }
    QQuickItem* showPreferences(QSize size = {590, 1000}) {
        return show(QStringLiteral("PreferencesView.qml"),
                    {{QStringLiteral("settings"), QVariant::fromValue(&settings)},
                     {QStringLiteral("model"), QVariant::fromValue(&model)}},
                    size);
    }

    /// Every item below `root` whose `property` is `value`.
    static QList<QQuickItem*> find(QQuickItem* root, const char* property, const QVariant& value) {
        QList<QQuickItem*> found;
        for (QQuickItem* child : root->childItems()) {
            if (child->isVisible() && child->property(property) == value)
                found.append(child);
            found += find(child, property, value);
        }
        return found;
    }
    static QQuickItem* one(QQuickItem* root, const char* property, const QVariant& value) {
        const auto found = find(root, property, value);
        EXPECT_FALSE(found.isEmpty()) << property << " " << qPrintable(value.toString());
        return found.value(0, root);
    }
    static QPoint centre(QQuickItem* item) {
        return item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint();
    }
    void click(QQuickItem* item) { QTest::mouseClick(window.get(), Qt::LeftButton, {}, centre(item)); }

    static bool waitFor(const std::function<bool()>& condition) { return QTest::qWaitFor(condition, 5000); }

    std::function<void()> note(const QString& what) {
        return [this, what] { called.append(what); };
    }

    QStringList called;
    defaults::MemoryDefaults defaults;
    windows::FakeWindows windows;
    Settings settings{{dispatcher, defaults, windows}};
    Colours colours;
    std::unique_ptr<TrackControls> controls = std::make_unique<TrackControls>(TrackControls::Parts{
        dispatcher, *source, note(QStringLiteral("previous")), note(QStringLiteral("playPause")),
        note(QStringLiteral("next")), note(QStringLiteral("shuffle")), note(QStringLiteral("preferences"))});
    PreferencesModel model{{settings,
                            [this](bool isClock) { called.append(isClock ? "import clock" : "import info"); },
                            [this](bool isClock, const QString& name) {
                                called.append((isClock ? "clock " : "info ") + name);
                            }}};
    QQmlEngine engine;
    std::unique_ptr<QQuickWindow> window = std::make_unique<QQuickWindow>();
};

TEST_F(SceneTest, TheBarsSizesFollowTheWindow) {
    QQuickItem* bar = showBar();
    const struct {
        double width, button, slider, panelWidth, panelHeight;
    } rows[] = {{1200, 44, 260, 460, 140}, {3000, 66, 390, 690, 210}, {400, 22, 130, 230, 70}};
    controls->setShowTrackControls(true);
    for (const auto& row : rows) {
        bar->setSize({row.width, 600});
        QQuickItem* button = one(bar, "identifier", QStringLiteral("next"));
        EXPECT_EQ(button->size(), QSizeF(row.button, row.button)) << row.width;
        QQuickItem* shuffle = one(bar, "identifier", QStringLiteral("shuffle"));
        EXPECT_TRUE(waitFor([&] {
            return shuffle->x() - button->x() == row.button + 24 * controls->sizeScale();
        })) << row.width;
        auto* panel = bar->property("panelItem").value<QQuickItem*>();
        EXPECT_EQ(panel->size(), QSizeF(row.panelWidth, row.panelHeight));
        EXPECT_EQ(panel->mapToScene({0, panel->height()}).y(), 530)
            << "70 above the bottom while nothing plays";
        EXPECT_EQ(one(bar, "identifier", QStringLiteral("playPause"))->property("symbol"), "play.fill");
    }
    answer(scripts::nowPlaying(), nowPlaying());
    source->fetchNowPlaying();
    dispatcher.runUntilIdle();
    bar->setSize({1200, 600});
    auto* panel = bar->property("panelItem").value<QQuickItem*>();
    EXPECT_EQ(panel->mapToScene({0, panel->height()}).y(), 570);
    EXPECT_EQ(one(bar, "identifier", QStringLiteral("playPause"))->property("symbol"), "pause.fill");
}

TEST_F(SceneTest, ThePointerShowsTheBarLightsAButtonAndPressesIt) {
    QQuickItem* bar = showBar();
    QQuickItem* next = one(bar, "identifier", QStringLiteral("next"));
    EXPECT_FALSE(controls->showTrackControls());
    QTest::mouseMove(window.get(), QPoint(20, 20));
    QTest::mouseMove(window.get(), centre(next));
    ASSERT_TRUE(waitFor([&] { return controls->hoveredButton() == QStringLiteral("next"); }));
    EXPECT_TRUE(controls->showTrackControls());
    click(next);
    EXPECT_THAT(called, ElementsAre(QStringLiteral("next")));
    QTest::mouseMove(window.get(), QPoint(20, 20));
    ASSERT_TRUE(waitFor([&] { return controls->hoveredButton().isEmpty() && !controls->isHovered(); }));
}

TEST_F(SceneTest, DraggingTheSliderSendsEveryLevelDownToTheEnds) {
    QQuickItem* bar = showBar();
    controls->setShowTrackControls(true);
    QQuickItem* slider = one(bar, "knobSize", 18.0);
    const QPoint middle = centre(slider);
    QTest::mousePress(window.get(), Qt::LeftButton, {}, middle);
    for (const int x : {100, 200, -300, -400, 0, 300})
        QTest::mouseMove(window.get(), middle + QPoint(x, 0));
    QTest::mouseRelease(window.get(), Qt::LeftButton, {}, middle + QPoint(300, 0));
    dispatcher.runUntilIdle();
    EXPECT_EQ(source->volumeLevel(), 1);
    EXPECT_EQ(sentCount(scripts::setVolume(1)), 1 + 1);
    EXPECT_EQ(sentCount(scripts::setVolume(0)), 1) << "at the end already, nothing changes";
    EXPECT_EQ(slider->property("position"), 1.0);
}

TEST_F(SceneTest, TheKeyboardGoesThroughTheBar) {
    QQuickItem* bar = showBar();
    bar->forceActiveFocus();
    QTest::keyClick(window.get(), Qt::Key_Tab);
    EXPECT_TRUE(controls->showTrackControls());
    QQuickItem* focused = window->activeFocusItem();
    ASSERT_EQ(focused->property("identifier"), "previous");
    QTest::keyClick(window.get(), Qt::Key_Tab);
    QTest::keyClick(window.get(), Qt::Key_Space);
    EXPECT_THAT(called, ElementsAre(QStringLiteral("playPause")));
    const double before = source->volumeLevel();
    QTest::keyClick(window.get(), Qt::Key_PageUp);
    dispatcher.runUntilIdle();
    EXPECT_NEAR(source->volumeLevel(), before + 0.05, 1e-9);
}

TEST_F(SceneTest, ThePickerShowsNamesAsTheyAreAndPlaysTheOneThatIsClicked) {
    const QString odd = QStringLiteral("<b>bold</b>\nsecond line & more");
    answer(scripts::playlistNames(), script::Descriptor::list({D::text(QStringLiteral("שלום עולם")),
                                                               D::text(odd), D::text(QString(1000, u'w'))}));
    QQuickItem* bar = showBar();
    for (const auto& entry : optionTable<PlaylistBackgroundOption>) {
        settings.setPlaylistBackgroundOption(entry.option);
        controls->press(QStringLiteral("playlist"));
        dispatcher.runUntilIdle();
        ASSERT_TRUE(waitFor([&] { return !find(bar, "text", odd).isEmpty(); })) << entry.rawText;
        QTest::qWait(250); // it slides in
        sent.clear();
        click(one(bar, "text", odd));
        EXPECT_EQ(sentCount(scripts::playPlaylist(odd)), 1) << entry.rawText;
        EXPECT_FALSE(controls->showPlaylistPicker());
        ASSERT_TRUE(waitFor([&] { return find(bar, "text", odd).isEmpty(); }));
    }
}

TEST_F(SceneTest, EscapeAndAClickOutsideCloseThePickerAndArrowsChoose) {
    answer(scripts::playlistNames(), texts({"Uno", "Due", "Tre"}));
    QQuickItem* bar = showBar();
    const auto open = [&] {
        controls->press(QStringLiteral("playlist"));
        dispatcher.runUntilIdle();
        ASSERT_TRUE(waitFor([&] { return !find(bar, "text", QStringLiteral("Due")).isEmpty(); }));
    };
    open();
    QTest::keyClick(window.get(), Qt::Key_Escape);
    EXPECT_FALSE(controls->showPlaylistPicker());
    open();
    QTest::mouseClick(window.get(), Qt::LeftButton, {}, QPoint(30, 30));
    EXPECT_FALSE(controls->showPlaylistPicker());
    open();
    QTest::keyClick(window.get(), Qt::Key_Down);
    QTest::keyClick(window.get(), Qt::Key_Down);
    QTest::keyClick(window.get(), Qt::Key_Return);
    EXPECT_EQ(sentCount(scripts::playPlaylist(QStringLiteral("Due"))), 1);
}

TEST_F(SceneTest, AnEmptyListSaysSoUntilOneComes) {
    QQuickItem* bar = showBar();
    controls->press(QStringLiteral("playlist"));
    const auto messages = [&] { return find(bar, "text", QStringLiteral("No Playlists Found")); };
    EXPECT_TRUE(waitFor([&] { return messages().size() == 1; }));
    answer(scripts::playlistNames(), texts({"Uno"}));
    dispatcher.runUntilIdle();
    EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(SceneTest, OfFiveHundredPlaylistsOnlyTheVisibleRowsExist) {
    D::List names;
    for (int i = 0; i < 500; ++i)
        names.push_back(D::text(QStringLiteral("Playlist %1").arg(i)));
    answer(scripts::playlistNames(), D::list(std::move(names)));
    QQuickItem* bar = showBar();
    controls->press(QStringLiteral("playlist"));
    dispatcher.runUntilIdle();
    ASSERT_TRUE(waitFor([&] { return !find(bar, "text", QStringLiteral("Playlist 3")).isEmpty(); }));
    QQuickItem* list = one(bar, "count", 500);
    EXPECT_LT(list->property("contentItem").value<QQuickItem*>()->childItems().size(), 30);
}

TEST_F(SceneTest, EveryTogglesClickIsStoredAndEveryStoredChangeIsSeen) {
    QQuickItem* view = showPreferences();
    settings.setShowDateAndTime(true);
    settings.setEnableTrackInfoFont(true);
    int toggles = 0;
    for (const Preference& preference : preferences()) {
        if (!std::holds_alternative<bool>(preference.defaultValue) || preference.key == u"showTrackYear")
            continue;
        QQuickItem* toggle = one(view, "key", preference.key);
        const QByteArray name = preference.key.toLatin1();
        const bool before = settings.property(name.constData()).toBool();
        EXPECT_EQ(toggle->property("checked").toBool(), before) << name.constData();
        QTest::mouseClick(window.get(), Qt::LeftButton, {},
                          toggle->mapToScene(QPointF(8, toggle->height() / 2)).toPoint());
        EXPECT_EQ(settings.property(name.constData()).toBool(), !before) << name.constData();
        settings.setProperty(name.constData(), before);
        EXPECT_EQ(toggle->property("checked").toBool(), before) << name.constData();
        ++toggles;
    }
    EXPECT_EQ(toggles, 23);
}

TEST_F(SceneTest, PickersChooseAndTheRandomSwitchTakesTheBackgroundsAway) {
    QQuickItem* view = showPreferences();
    click(one(view, "modelData", QStringLiteral("Shapes")));
    EXPECT_EQ(settings.backgroundOption(), BackgroundOption::Shapes);
    QTest::keyClick(window.get(), Qt::Key_Right);
    settings.setRandomBackgroundEnabled(true);
    click(one(view, "modelData", QStringLiteral("White")));
    EXPECT_EQ(settings.backgroundOption(), BackgroundOption::Random) << "disabled";
    for (QQuickItem* segment : find(view, "modelData", QStringLiteral("White")))
        EXPECT_FALSE(segment->property("isChosen").toBool());
    settings.setRandomBackgroundEnabled(false);
    click(one(view, "modelData", QStringLiteral("White")));
    EXPECT_EQ(settings.backgroundOption(), BackgroundOption::White);
    EXPECT_EQ(find(view, "modelData", QStringLiteral("Dynamic")).size(), 2);
    click(find(view, "modelData", QStringLiteral("Dynamic")).first());
    EXPECT_EQ(settings.playlistBackgroundOption(), PlaylistBackgroundOption::Dynamic);
}

TEST_F(SceneTest, AFontsRemovalIsAskedForAndGoesToItsOwnList) {
    QQuickItem* view = showPreferences();
    model.setImportedFonts(true, {QStringLiteral("Foo-Bold")});
    model.setImportedFonts(false, {QStringLiteral("Foo-Bold")});
    settings.setSelectedClockFont(QStringLiteral("Foo-Bold"));
    QQuickItem* remove = one(view, "text", QStringLiteral("Import Clock Font"));
    click(remove);
    EXPECT_THAT(called, IsEmpty()) << "disabled while the clock is off";
    settings.setShowDateAndTime(true);
    click(remove);
    EXPECT_THAT(called, ElementsAre(QStringLiteral("import clock")));
    const auto alerts = [&] { return find(view, "title", QStringLiteral("Remove Font?")); };
    model.askToRemove(true);
    ASSERT_EQ(alerts().size(), 1);
    QTest::keyClick(window.get(), Qt::Key_Escape);
    EXPECT_THAT(alerts(), IsEmpty());
    model.askToRemove(true);
    click(one(view, "objectName", QStringLiteral("confirm")));
    EXPECT_THAT(called, ElementsAre(QStringLiteral("import clock"), QStringLiteral("clock Foo-Bold")));
    EXPECT_THAT(alerts(), IsEmpty());
}

TEST_F(SceneTest, TheContentKeepsItsSizeAndScrollsBothWays) {
    QQuickItem* view = showPreferences({500, 400});
    auto* flickable = view->property("flickable").value<QQuickItem*>();
    EXPECT_EQ(flickable->property("contentWidth"), 590.0);
    EXPECT_EQ(flickable->property("contentHeight"), 1000.0);
    QTest::keyClick(window.get(), Qt::Key_Tab);
    for (int i = 0; i < 20; ++i)
        QTest::keyClick(window.get(), Qt::Key_Tab);
    EXPECT_GT(flickable->property("contentY").toDouble(), 100) << "what the keyboard acts on comes into view";
}

TEST_F(SceneTest, ThePreferencesWindowExistsOnceUntilItIsClosed) {
    PreferencesWindowOpener opener(engine, settings, model);
    opener.open();
    QPointer<QQuickWindow> first = opener.window();
    ASSERT_TRUE(first);
    EXPECT_EQ(first->title(), QStringLiteral("Preferences"));
    EXPECT_EQ(first->width(), 590) << "grown to its content";
    EXPECT_FALSE(first->flags() & (Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint));
    opener.open();
    EXPECT_EQ(opener.window(), first);
    first->close();
    EXPECT_EQ(opener.window(), nullptr);
    opener.open();
    EXPECT_TRUE(opener.window() && opener.window() != first);
}

} // namespace
} // namespace tarnwick

#include "ControlsSceneTest.moc"
