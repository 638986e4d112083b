#include "music/Scripts.h"
#include "tests/unit/controls/SceneFixture.h"

#include <QAccessible>

#include <cmath>

using testing::ElementsAre;
using testing::IsEmpty;

namespace tarnwick {
namespace {

class PickerSceneTest : public SceneFixture {
protected:
    /// Opens the picker by a click on its button, and waits until it stands still.
    void open(QQuickItem* bar) {
        click(one(bar, "identifier", "playlist"));
        ASSERT_TRUE(controls->showPlaylistPicker());
        dispatcher.runUntilIdle();
        pass(std::chrono::milliseconds(400));
        ASSERT_TRUE(waitFor([&] { return !find(bar, "text", "Select Playlist").isEmpty(); }));
    }

    /// The row that shows `name`.
    static QQuickItem* row(QQuickItem* bar, const QString& name) {
        for (QQuickItem* item : find(bar, "text", name)) {
            if (item->property("isHovering").isValid())
                return item;
        }
        ADD_FAILURE() << "no row " << qPrintable(name);
        return bar;
    }
};

TEST_F(PickerSceneTest, ThePickerShowsNamesAsTheyAreAndPlaysTheOneThatIsClicked) {
    const QString odd = "<b>bold</b>\nsecond line & more";
    answer(scripts::playlistNames(),
           script::Descriptor::list({D::text("שלום עולם"), D::text(odd), D::text(QString(1000, u'w'))}));
    QQuickItem* bar = showBar();
    for (const auto& entry : optionTable<PlaylistBackgroundOption>) {
        settings.setPlaylistBackgroundOption(entry.option);
        open(bar);
        sent.clear();
        click(row(bar, odd));
        EXPECT_EQ(sentCount(scripts::playPlaylist(odd)), 1) << entry.rawText;
        EXPECT_FALSE(controls->showPlaylistPicker());
        ASSERT_TRUE(waitFor([&] { return find(bar, "text", odd).isEmpty(); }));
    }
}

TEST_F(PickerSceneTest, EscapeTabAndAClickOutsideCloseItAndTheKeysGoBackToWhereTheyWere) {
    answer(scripts::playlistNames(), texts({"Uno", "Due", "Tre"}));
    QQuickItem* bar = showBar();
    QQuickItem other(window->contentItem());
    other.forceActiveFocus();
    const std::function<void()> ways[] = {
        [&] { press(Qt::Key_Escape); },
        [&] { press(Qt::Key_Tab); },
        [&] { QTest::mouseClick(window.get(), Qt::LeftButton, {}, QPoint(30, 30)); },
        [&] { click(one(bar, "identifier", "playlist")); },
    };
    for (const auto& close : ways) {
        open(bar);
        EXPECT_NE(window->activeFocusItem(), &other);
        const auto fetched = sentCount(scripts::playlistNames());
        close();
        EXPECT_FALSE(controls->showPlaylistPicker());
        EXPECT_EQ(window->activeFocusItem(), &other);
        dispatcher.runUntilIdle();
        EXPECT_EQ(sentCount(scripts::playlistNames()), fetched + (&close == &ways[3] ? 1 : 0));
    }
    QTest::mouseMove(window.get(), QPoint(20, 20));
    ASSERT_TRUE(waitFor([&] { return !controls->isHovered(); }));
    dispatcher.advance(std::chrono::seconds(1));
    EXPECT_FALSE(controls->showTrackControls()) << "the picker held it only while it was open";
}

TEST_F(PickerSceneTest, TheBarGoesOnWorkingWhileItIsOpen) {
    QQuickItem* bar = showBar();
    open(bar);
    click(one(bar, "identifier", "next"));
    EXPECT_THAT(called, ElementsAre("next"));
    EXPECT_FALSE(controls->showPlaylistPicker());
}

TEST_F(PickerSceneTest, TheKeysChooseARow) {
    D::List names;
    for (int i = 0; i < 50; ++i)
        names.push_back(D::text(QString::number(i)));
    answer(scripts::playlistNames(), D::list(std::move(names)));
    QQuickItem* bar = showBar();
    const std::pair<QList<Qt::Key>, QString> rows[] = {
        {{Qt::Key_Down, Qt::Key_Down, Qt::Key_Return}, "1"},
        {{Qt::Key_End, Qt::Key_Up, Qt::Key_Enter}, "48"},
        {{Qt::Key_End, Qt::Key_Home, Qt::Key_Space}, "0"},
        {{Qt::Key_PageDown, Qt::Key_PageDown, Qt::Key_PageUp, Qt::Key_Space}, "8"},
    };
    for (const auto& [keys, name] : rows) {
        open(bar);
        sent.clear();
        for (const Qt::Key key : keys)
            press(key);
        EXPECT_EQ(sentCount(scripts::playPlaylist(name)), 1) << qPrintable(name);
        EXPECT_FALSE(controls->showPlaylistPicker());
        pass(std::chrono::milliseconds(400));
    }
}

TEST_F(PickerSceneTest, ARowLightsUpUnderThePointerInEachLooksOwnWay) {
    answer(scripts::playlistNames(), texts({"Uno", "Due"}));
    QQuickItem* bar = showBar();
    colours.dynamicTextColor = Qt::black;
    const struct {
        PlaylistBackgroundOption look;
        QColor text, lit, plate;
        double scale, beyond; ///< how far it grows, and goes for a moment
    } rows[] = {
        {PlaylistBackgroundOption::Standard, Qt::white, QColor(0xff, 0xd6, 0x0a), QColor(0, 0, 0, 0x33), 1.05,
         1.053},
        {PlaylistBackgroundOption::Dynamic, Qt::black, Qt::black, QColor(255, 255, 255, 0x1a), 1.05, 1.053},
        {PlaylistBackgroundOption::IPod, Qt::black, Qt::white, QColor(0, 0x6f, 0xdc), 1.03, 1.0301},
    };
    for (const auto& expected : rows) {
        settings.setPlaylistBackgroundOption(expected.look);
        open(bar);
        QQuickItem* uno = row(bar, "Uno");
        auto* plate = uno->property("plate").value<QQuickItem*>();
        EXPECT_EQ(uno->property("textColor").value<QColor>(), expected.text);
        double largest = 1;
        bool wasBetween = false;
        const auto watch = QObject::connect(uno, &QQuickItem::scaleChanged, uno, [&] {
            largest = std::max(largest, uno->scale());
            const int blue = plate->property("color").value<QColor>().blue();
            wasBetween |= blue > 0xdc + 2 && blue < 255 - 2;
        });
        pointAt(uno);
        EXPECT_TRUE(waitFor([&] { return uno->property("isHovering").toBool(); }));
        pass(std::chrono::milliseconds(500));
        QObject::disconnect(watch);
        EXPECT_EQ(uno->scale(), expected.scale);
        EXPECT_LE(largest, expected.beyond + 0.003);
        EXPECT_GE(largest, expected.beyond - 0.003);
        EXPECT_EQ(uno->property("textColor").value<QColor>(), expected.lit);
        EXPECT_EQ(plate->property("color").value<QColor>(), expected.plate);
        EXPECT_EQ(wasBetween, expected.look == PlaylistBackgroundOption::IPod) << "it eases there";
        QTest::mouseMove(window.get(), QPoint(20, 20));
        EXPECT_TRUE(waitFor([&] { return uno->scale() == 1; }));
        EXPECT_EQ(uno->property("textColor").value<QColor>(), expected.text);
        press(Qt::Key_Escape);
        pass(std::chrono::milliseconds(400));
    }
}

TEST_F(PickerSceneTest, AnEmptyListSaysSoUntilOneComes) {
    QQuickItem* bar = showBar();
    controls->press("playlist");
    const auto messages = [&] { return find(bar, "text", "No Playlists Found"); };
    EXPECT_TRUE(waitFor([&] { return messages().size() == 1; }));
    for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right, Qt::Key_Home}) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(window.get(), &event);
        EXPECT_TRUE(event.isAccepted()) << key << " goes on to what is behind the picker";
    }
    answer(scripts::playlistNames(), texts({"Uno"}));
    dispatcher.runUntilIdle();
    EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(PickerSceneTest, OfFiveHundredPlaylistsOnlyTheVisibleRowsExist) {
    D::List names;
    for (int i = 0; i < 500; ++i)
        names.push_back(D::text(QStringLiteral("Playlist %1").arg(i)));
    answer(scripts::playlistNames(), D::list(std::move(names)));
    QQuickItem* bar = showBar();
    controls->press("playlist");
    dispatcher.runUntilIdle();
    ASSERT_TRUE(waitFor([&] { return !find(bar, "text", "Playlist 3").isEmpty(); }));
    QQuickItem* list = one(bar, "count", 500);
    EXPECT_LT(list->property("contentItem").value<QQuickItem*>()->childItems().size(), 30);
    wheel(list, -3);
    EXPECT_TRUE(waitFor([&] { return list->property("contentY").toDouble() > 50; }));
    EXPECT_FALSE(find(bar, "text", "Playlist 9").isEmpty());
}

TEST_F(PickerSceneTest, ALongNameIsCutOffOrWrapsAndTellsAssistiveTechnologyAllOfIt) {
    const QString name = "Viaggi lunghi, finestrino abbassato, nessuna fretta di arrivare";
    answer(scripts::playlistNames(), D::list({D::text(name), D::text("日曜日の午後")}));
    QQuickItem* bar = showBar();
    for (const auto& entry : optionTable<PlaylistBackgroundOption>) {
        settings.setPlaylistBackgroundOption(entry.option);
        open(bar);
        const double one = std::ceil((entry.option == PlaylistBackgroundOption::IPod ? 18 : 16) * 1.21 + 16);
        EXPECT_NEAR(row(bar, "日曜日の午後")->height(), one, 1) << "as high as in any script";
        EXPECT_EQ(row(bar, name)->height() > one + 10, entry.option == PlaylistBackgroundOption::IPod);
        EXPECT_EQ(QAccessible::queryAccessibleInterface(row(bar, name))->text(QAccessible::Name), name);
        press(Qt::Key_Escape);
        pass(std::chrono::milliseconds(400));
    }
}

} // namespace
} // namespace tarnwick
