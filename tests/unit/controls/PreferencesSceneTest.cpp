#include "controls/preferences/PreferencesWindowOpener.h"
#include "tests/unit/controls/SceneFixture.h"
#include "visuals/Colour.h"

#include <QScreen>

using testing::ElementsAre;
using testing::IsEmpty;

namespace tarnwick {
namespace {

using PreferencesSceneTest = SceneFixture;

TEST_F(PreferencesSceneTest, EveryTogglesClickIsStoredAndEveryStoredChangeIsSeen) {
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

TEST_F(PreferencesSceneTest, PickersChooseAndTheRandomSwitchTakesTheBackgroundsAway) {
    QQuickItem* view = showPreferences();
    click(one(view, "modelData", "Shapes"));
    EXPECT_EQ(settings.backgroundOption(), BackgroundOption::Shapes);
    QTest::keyClick(window.get(), Qt::Key_Right);
    settings.setRandomBackgroundEnabled(true);
    click(one(view, "modelData", "White"));
    EXPECT_EQ(settings.backgroundOption(), BackgroundOption::Random) << "disabled";
    for (QQuickItem* segment : find(view, "modelData", "White"))
        EXPECT_FALSE(segment->property("isChosen").toBool());
    settings.setRandomBackgroundEnabled(false);
    EXPECT_EQ(settings.backgroundOption(), BackgroundOption::Random) << "until another is chosen";
    click(one(view, "modelData", "White"));
    EXPECT_EQ(settings.backgroundOption(), BackgroundOption::White);
    EXPECT_EQ(find(view, "modelData", "Dynamic").size(), 2);
    click(find(view, "modelData", "Dynamic").first());
    EXPECT_EQ(settings.playlistBackgroundOption(), PlaylistBackgroundOption::Dynamic);
}

TEST_F(PreferencesSceneTest, AFontsRemovalIsAskedForAndGoesToItsOwnList) {
    QQuickItem* view = showPreferences();
    model.setImportedFonts(true, {"Foo-Bold"});
    model.setImportedFonts(false, {"Foo-Bold"});
    settings.setSelectedClockFont("Foo-Bold");
    QQuickItem* import = one(view, "text", "Import Clock Font");
    QQuickItem* remove = one(view, "removeTip", "Remove selected clock font");
    remove = one(remove, "objectName", "remove");
    click(import);
    click(remove);
    EXPECT_THAT(called, IsEmpty()) << "disabled while the clock is off";
    EXPECT_FALSE(model.showRemoveAlert());
    settings.setShowDateAndTime(true);
    click(import);
    EXPECT_THAT(called, ElementsAre("import clock"));
    called.clear();

    const auto alerts = [&] { return find(view, "title", "Remove Font?"); };
    const std::function<void()> refusals[] = {
        [&] { press(Qt::Key_Escape); }, [&] { click(one(view, "objectName", "cancel")); },
        [&] { press(Qt::Key_Space); }, // what is safe has the keyboard first
    };
    for (const auto& refuse : refusals) {
        click(remove);
        ASSERT_EQ(alerts().size(), 1);
        click(import);
        EXPECT_THAT(called, IsEmpty()) << "the question comes first";
        refuse();
        EXPECT_THAT(alerts(), IsEmpty());
        EXPECT_EQ(window->activeFocusItem(), remove) << "the keys go back";
        press(Qt::Key_Tab);
        EXPECT_EQ(window->activeFocusItem(), import);
    }
    click(remove);
    press(Qt::Key_Tab);
    EXPECT_EQ(spokenFocus(), "Button Remove");
    EXPECT_TRUE(showsRing());
    press(Qt::Key_Space);
    EXPECT_THAT(called, ElementsAre("clock Foo-Bold"));
    EXPECT_THAT(alerts(), IsEmpty());

    settings.setEnableTrackInfoFont(true);
    click(one(one(view, "removeTip", "Remove selected track info font"), "objectName", "remove"));
    click(one(view, "objectName", "confirm"));
    EXPECT_EQ(called.last(), "info System Font") << "what is selected there, whatever it is";
}

TEST_F(PreferencesSceneTest, ASectionThatIsOffTakesItsFontsAwayAndChanceTakesThePicker) {
    QQuickItem* view = showPreferences();
    const struct {
        const char *isOn, *isRandom, *import;
    } sections[] = {{"showDateAndTime", "randomClockFontEnabled", "Import Clock Font"},
                    {"enableTrackInfoFont", "randomTrackInfoFontEnabled", "Import Track Font"}};
    for (const auto& section : sections) {
        QQuickItem* import = one(view, "text", QString::fromLatin1(section.import));
        QQuickItem* random = one(view, "key", QString::fromLatin1(section.isRandom));
        QQuickItem* remove = one(import->parentItem(), "objectName", "remove");
        QQuickItem* picker = one(import->parentItem(), "storedText", "System Font");
        for (const bool isOn : {false, true}) {
            settings.setProperty(section.isOn, isOn);
            for (const bool isRandom : {false, true}) {
                settings.setProperty(section.isRandom, isRandom);
                for (const QQuickItem* item : {import, random, remove})
                    EXPECT_EQ(item->isEnabled(), isOn) << section.import;
                EXPECT_EQ(picker->isEnabled(), isOn && !isRandom) << section.import;
            }
        }
    }
}

TEST_F(PreferencesSceneTest, APopUpOffersItsListAndFollowsWhatIsStored) {
    QQuickItem* view = showPreferences();
    settings.setShowDateAndTime(true);
    model.setImportedFonts(true, {"Foo-Bold", "Bar"});
    // The list makes its rows one by one.
    const auto open = [&](QQuickItem* picker, const char* row) {
        click(picker);
        auto* popup = picker->property("popup").value<QObject*>();
        auto* list = popup->property("contentItem").value<QQuickItem*>();
        EXPECT_TRUE(waitFor([&] {
            return !find(list, "highlighted", true).isEmpty() &&
                   !find(list, "text", QString::fromLatin1(row)).isEmpty();
        }));
        return list;
    };
    QQuickItem* records = one(view, "storedText", settings.defaultCDImageChoice());
    QQuickItem* list = open(records, "33 RPM 12\" Vinyl");
    EXPECT_EQ(list->property("count"), 25);
    click(one(list, "text", "33 RPM 12\" Vinyl"));
    EXPECT_EQ(settings.defaultCDImageChoice(), "33Vinyl");
    EXPECT_EQ(records->property("displayText"), "33 RPM 12\" Vinyl");
    settings.setDefaultCDImageChoice("45Vinyl");
    EXPECT_EQ(records->property("displayText"), "45 RPM 7\" Vinyl");
    settings.setDefaultCDImageChoice("Elsewhere");
    EXPECT_EQ(records->property("displayText"), "Elsewhere");

    QQuickItem* fonts = one(view, "storedText", "System Font");
    list = open(fonts, "Foo-Bold");
    EXPECT_EQ(list->property("count"), 3);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_EQ(settings.selectedClockFont(), "Foo-Bold");
    open(fonts, "Foo-Bold");
    press(Qt::Key_Escape);
    EXPECT_EQ(settings.selectedClockFont(), "Foo-Bold");
}

TEST_F(PreferencesSceneTest, TheKeyboardReachesEverythingAndEverythingHasANameAndARole) {
    showPreferences();
    settings.setShowDateAndTime(true);
    settings.setEnableTrackInfoFont(true);
    window->contentItem()->forceActiveFocus();
    const QStringList told = walk();
    for (const char* each :
         {"CheckBox Rotate record during playback", "CheckBox Sample Rate", "Grouping Background",
          "Grouping Playlist Background", "ComboBox Record Image", "CheckBox Date & Time",
          "ComboBox Font of Track Info", "Button Remove selected clock font", "Button Import Track Font",
          "Grouping Tracklist Style"})
        EXPECT_TRUE(told.contains(QString::fromLatin1(each))) << each;
    for (const QString& each : told)
        EXPECT_GT(each.section(u' ', 1).size(), 0) << "has no name: " << qPrintable(each);
    EXPECT_EQ(told.size(), 14 + 3 + 2 + 1 + 2 + 5 + 5 + 1);
}

TEST_F(PreferencesSceneTest, TheContentKeepsItsSizeAndScrollsBothWays) {
    QQuickItem* view = showPreferences({500, 400});
    auto* flickable = view->property("flickable").value<QQuickItem*>();
    EXPECT_EQ(flickable->property("contentWidth"), 590.0);
    EXPECT_EQ(flickable->property("contentHeight"), 1000.0);
    wheel(view, -1);
    EXPECT_TRUE(waitFor([&] { return flickable->property("contentY").toDouble() > 10; }));
    for (int i = 0; i < 21; ++i)
        press(Qt::Key_Tab);
    EXPECT_GT(flickable->property("contentY").toDouble(), 100) << "what the keyboard acts on comes into view";
}

TEST_F(PreferencesSceneTest, WhatTheKeyboardActsOnHasSomethingAroundIt) {
    const QSize size(300, 200);
    QQuickItem* view = showPreferences(size);
    settings.setShowDateAndTime(true);
    settings.setEnableTrackInfoFont(true);
    auto* flickable = view->property("flickable").value<QQuickItem*>();
    press(Qt::Key_Tab);
    const QQuickItem* first = window->activeFocusItem();
    const auto check = [&] {
        const QQuickItem* item = window->activeFocusItem();
        const QRectF place = item->mapRectToScene(item->boundingRect());
        const std::string told = spokenFocus().toStdString();
        EXPECT_GE(place.left(), 12) << told;
        EXPECT_GE(place.top(), 12) << told;
        EXPECT_LE(place.bottom(), size.height() - 12) << told;
        const bool hasRoom = place.width() <= size.width() - 24;
        EXPECT_TRUE(place.right() <= size.width() - 12 || !hasRoom) << told;
    };
    do {
        check();
        press(Qt::Key_Tab);
    } while (window->activeFocusItem() != first && !::testing::Test::HasFailure());
    EXPECT_EQ(flickable->property("contentY"), 0.0) << "the first row with its header";
    press(Qt::Key_Backtab);
    check();
}

TEST_F(PreferencesSceneTest, AListThatPopsUpKeepsToASmallWindowAndLightsTheRowAtOnce) {
    const QSize size(300, 200);
    QQuickItem* view = showPreferences(size);
    QQuickItem* records = one(view, "storedText", settings.defaultCDImageChoice());
    records->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Space);
    auto* list = records->property("popup").value<QObject*>()->property("contentItem").value<QQuickItem*>();
    ASSERT_TRUE(waitFor([&] { return !find(list, "highlighted", true).isEmpty(); }));
    const QRectF place = list->mapRectToScene(list->boundingRect());
    EXPECT_TRUE(QRectF(QPointF(8, 8), size - QSize(16, 16)).contains(place))
        << place.y() << " " << place.bottom() << " " << place.x() << " " << place.right();
    for (const Qt::Key key : {Qt::Key_End, Qt::Key_Home}) {
        press(key);
        pass(std::chrono::milliseconds(20));
        const auto lit = find(list, "highlighted", true);
        ASSERT_EQ(lit.size(), 1);
        EXPECT_TRUE(place.contains(lit.front()->mapRectToScene(lit.front()->boundingRect()))) << key;
    }
}

TEST_F(PreferencesSceneTest, TheQuestionFitsTheSmallestWindowAndReturnAnswersIt) {
    const QSize size(300, 200);
    QQuickItem* view = showPreferences(size);
    settings.setShowDateAndTime(true);
    settings.setSelectedClockFont("Foo-Bold");
    for (const bool confirms : {false, true}) {
        model.askToRemove(true);
        QQuickItem* card = one(view, "objectName", "card");
        EXPECT_TRUE(QRectF(QPointF(), size).contains(card->mapRectToScene(card->boundingRect())));
        if (confirms)
            press(Qt::Key_Tab);
        EXPECT_TRUE(called.isEmpty());
        press(confirms ? Qt::Key_Return : Qt::Key_Enter);
        EXPECT_FALSE(model.showRemoveAlert());
    }
    EXPECT_THAT(called, ElementsAre("clock Foo-Bold"));
}

TEST_F(PreferencesSceneTest, WhatIsOffAndWhatRemovesCanBeToldInLightAndInDark) {
    QQuickItem* view = showPreferences();
    auto* style = view->property("style").value<QObject*>();
    settings.setShowBitRate(false);
    settings.setShowDateAndTime(false);
    QQuickItem* box = one(view, "key", "showBitRate");
    QQuickItem* toggle = one(view, "key", "showDateAndTime");
    for (const bool isDark : {false, true}) {
        style->setProperty("isDark", isDark);
        pass(std::chrono::milliseconds(300));
        const QImage picture = window->grabWindow();
        const auto luminanceAt = [&](const QQuickItem* item, double x, double y) {
            return relativeLuminance(
                Colour::fromQColor(picture.pixelColor(item->mapToScene(QPointF(x, y)).toPoint())));
        };
        const double card = luminanceAt(box, -3, 10);
        EXPECT_GE(contrastRatio(luminanceAt(box, 0, 10), card), 3) << "box, dark " << isDark;
        EXPECT_GE(contrastRatio(luminanceAt(toggle, 24, 8), card), 3) << "switch, dark " << isDark;
        model.askToRemove(true);
        const QImage question = window->grabWindow();
        const QQuickItem* confirm = one(view, "objectName", "confirm");
        const QColor red = question.pixelColor(confirm->mapToScene({6, 14}).toPoint());
        EXPECT_GE(contrastRatio(1, relativeLuminance(Colour::fromQColor(red))), 4.5) << isDark;
        model.cancelRemoval();
    }
}

TEST_F(PreferencesSceneTest, TheContentScrollsUnderAFingerAndTakesItsTaps) {
    QQuickItem* view = showPreferences({590, 560});
    auto* flickable = view->property("flickable").value<QQuickItem*>();
    const std::unique_ptr<QPointingDevice> screen(QTest::createTouchDevice());
    const auto finger = [&] { return QTest::touchEvent(window.get(), screen.get(), false); };
    const auto tap = [&](const QQuickItem* item) {
        const QPoint place = item->mapToScene({item->width() / 2, item->height() / 2}).toPoint();
        finger().press(0, place).commit();
        finger().release(0, place).commit();
    };
    const BackgroundOption before = settings.backgroundOption();
    const QPoint from = centre(one(view, "modelData", "Shapes"));
    finger().press(0, from).commit();
    for (int y = 20; y <= 300; y += 20) {
        finger().move(0, from - QPoint(0, y)).commit();
        QTest::qWait(20);
    }
    finger().release(0, from - QPoint(0, 300)).commit();
    EXPECT_TRUE(waitFor([&] { return flickable->property("contentY").toDouble() > 100; }));
    EXPECT_TRUE(waitFor([&] { return !flickable->property("moving").toBool(); }));
    EXPECT_EQ(settings.backgroundOption(), before) << "it was moved and not tapped";
    flickable->setProperty("contentY", 500);
    settings.setTracklistStyle(TracklistStyle::Standard);
    tap(find(view, "modelData", "Dynamic").last());
    EXPECT_EQ(settings.tracklistStyle(), TracklistStyle::Dynamic) << "at once";
    tap(one(view, "key", "showDateAndTime"));
    EXPECT_TRUE(settings.showDateAndTime());
}

TEST_F(PreferencesSceneTest, ThePreferencesWindowExistsOnceUntilItIsClosed) {
    PreferencesWindowOpener opener(engine, settings, model);
    opener.open();
    QPointer<QQuickWindow> first = opener.window();
    ASSERT_TRUE(first);
    EXPECT_EQ(first->title(), "Preferences");
    EXPECT_EQ(first->width(), 590) << "grown to its content";
    EXPECT_FALSE(first->flags() & (Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint));
    EXPECT_EQ(first->type(), Qt::Dialog) << "only such are kept above the display";
    opener.open();
    EXPECT_EQ(opener.window(), first);
    const QRect free = first->screen()->availableGeometry();
    const QMargins usualFrame(5, 28, 5, 5);
    EXPECT_TRUE(free.contains(first->geometry().marginsAdded(usualFrame))) << "with its title and border";
    model.askToRemove(true);
    first->close();
    EXPECT_EQ(opener.window(), nullptr);
    opener.open();
    EXPECT_TRUE(opener.window() && opener.window() != first);
    EXPECT_FALSE(model.showRemoveAlert()) << "a question goes with its window";
}

} // namespace
} // namespace tarnwick
