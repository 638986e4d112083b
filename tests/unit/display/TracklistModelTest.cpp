#include "display/tracklist/TracklistModel.h"

#include "tests/unit/display/DisplayFixture.h"

using namespace std::chrono_literals;
using testing::ElementsAre;

namespace tarnwick {
namespace {

class TracklistModelTest : public DisplayFixture {
protected:
    /// What the rows say, from the second on: the first is the cover's.
    QStringList rows() const {
        QStringList result;
        for (int row = 1; row < model.rowCount(); ++row) {
            const auto value = [&](TracklistModel::Role role) { return model.data(model.index(row), role); };
            if (value(TracklistModel::Kind) == TracklistModel::HeaderRow) {
                result.append(QStringLiteral("Disc %1").arg(value(TracklistModel::DiscNumber).toInt()));
                continue;
            }
            QString text =
                value(TracklistModel::Title).toString() + u' ' + value(TracklistModel::Duration).toString();
            if (value(TracklistModel::IsCurrent).toBool())
                text += u" current";
            if (value(TracklistModel::IsHovered).toBool())
                text += u" hovered";
            if (value(TracklistModel::IsSelected).toBool())
                text += u" selected";
            result.append(text);
        }
        return result;
    }

    TracklistModel model;
};

TEST_F(TracklistModelTest, RowsStandByDiscWithTheirDurationsAndMarks) {
    play(nowPlaying({{1, text("Stesso")},
                     {5, D::integer(2)},
                     {6, D::integer(2)},
                     {16, D::list({D::real(65.9), D::integer(3725), D::real(0)})}}));
    list(discs({{"Uno", "Stesso"}, {"Tre", "Stesso"}}));
    model.setView(view.get());
    EXPECT_THAT(rows(), ElementsAre("Disc 1", "Uno 01:05", "Stesso 62:05", "Disc 2", "Tre 00:00",
                                    "Stesso N/A current"));
    view->tapCover();
    view->onKeyDown(125);
    model.hover(5, true);
    model.hover(2, true);
    EXPECT_THAT(rows(), ElementsAre("Disc 1", "Uno 01:05 hovered selected", "Stesso 62:05", "Disc 2",
                                    "Tre 00:00 hovered", "Stesso N/A current"))
        << "one hovered row a disc";
    EXPECT_EQ(model.selectedRow(), 2);
    model.hover(3, true);
    model.hover(2, false); // the pointer left after it had entered the next
    EXPECT_EQ(view->hoveredTrack(1), 1);
}

TEST_F(TracklistModelTest, ASingleDiscHasNoHeaderAndATapPlaysItsRow) {
    play(album("Lontano"));
    list(discs({{"Uno", "Due"}}));
    model.setView(view.get());
    EXPECT_THAT(rows(), ElementsAre("Uno 04:05", "Due 03:00"));
    sent.clear();
    model.play(0); // the cover
    model.play(2);
    dispatcher.runUntilIdle();
    EXPECT_THAT(sent, testing::Contains(scripts::playTitle("Due", "Lontano")));
    EXPECT_EQ(sent.filter("Uno").size(), 0);
}

TEST_F(TracklistModelTest, TheListOfAnotherAlbumIsNotShown) {
    play(album("Lontano"));
    EXPECT_TRUE(model.isEmpty());
    list(discs({{"Uno"}}));
    model.setView(view.get());
    EXPECT_FALSE(model.isEmpty());
    model.hover(1, true);
    play(album("Vicino"));
    EXPECT_THAT(rows(), ElementsAre());
    EXPECT_FALSE(model.isEmpty()) << "it is not known yet, which is not the same as empty";
    list(discs({{"Altro"}}));
    EXPECT_THAT(rows(), ElementsAre("Altro 04:05"));
}

} // namespace
} // namespace tarnwick
