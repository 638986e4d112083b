#include "display/panel/Legibility.h"

#include "display/veil/VeilLayer.h"
#include "tests/unit/display/LegibilityFixture.h"
#include "tests/unit/display/TestCovers.h"
#include "visuals/RotatingCDNSView.h"

#include <algorithm>

namespace tarnwick {
namespace {

TEST(Legibility, NeedsNoVeilWhereTheContrastIsThere) {
    EXPECT_EQ(neededAlpha(colours::white, colours::black, colours::black, 4.5), 0);
    const Colour tint{0.2, 0.3, 0.6, 1};
    for (const Colour& text : {colours::white, colours::black}) {
        const Colour veil = veilColour(tint, text);
        EXPECT_GE(contrastOver(text, veil), 8.99);
        for (const double grey : {0.0, 0.2, 0.4, 0.6, 0.8, 1.0}) {
            const Colour under{grey, grey, grey, 1};
            const double alpha = neededAlpha(text, under, veil, 4.5);
            EXPECT_GE(contrastOver(text, mixed(under, veil, alpha)), 4.49) << grey;
            if (alpha > 0) {
                EXPECT_LT(contrastOver(text, mixed(under, veil, alpha - 0.01)), 4.5) << grey;
            }
        }
    }
}

TEST(Legibility, MovesTheGreenUntilItIsSeen) {
    for (const double grey : {0.0, 0.3, 0.46, 0.5, 0.7, 1.0}) {
        const Colour ground{grey, grey, grey, 1};
        const Colour text = contrastingTextColor(ground);
        EXPECT_GE(contrastOver(progressGreen(text, ground), ground), 2.95) << grey;
    }
    EXPECT_EQ(progressGreen(colours::white, colours::black).toQColor(), QColor("#30d158"));
}

/// Measures the display as it is painted, with the texts left out.
class LegibilityOfDisplay : public LegibilityFixture {
protected:
    void show(int cover, BackgroundOption style, const QString& disc, bool fullScreen) {
        settings.setBackgroundOption(style);
        settings.setDefaultCDImageChoice(disc);
        showEveryLine();
        const char* comment =
            "Registrato dal vivo a Trieste nel maggio 2019, missaggio di Ada Ferri, pianoforte.";
        answer(scripts::nowPlaying(),
               nowPlaying({{1, text("Concerto per due violini, archi e continuo nella sala grande")},
                           {2, text("Orchestra da camera della laguna di Grado")},
                           {10, text(comment)},
                           {11, D::data(encoded(testCover(cover)))}}));
        answer(scripts::tracksByDisc(), discs({{"Uno", "Due", "Tre"}}));
        if (fullScreen != window.isFullScreen())
            window.toggleFullScreen();
        const QSize size = fullScreen ? QSize(1920, 1080) : QSize(1200, 600);
        open(size);
        source->fetchNowPlaying();
        settle();
    }

    /// The scene without texts and logo, the disc turned by `angle` degrees.
    QImage ground(double angle) {
        for (QQuickItem* item : itemsBelow(renderer->root())) {
            if (qobject_cast<CDLayer*>(item))
                item->setRotation(angle);
        }
        return pictureWithoutType();
    }

    std::vector<std::pair<QRectF, double>> rowBoxes() {
        std::vector<std::pair<QRectF, double>> boxes;
        for (QQuickItem* item : itemsBelow(renderer->root())) {
            if (QByteArray(item->metaObject()->className()).startsWith("TrackRow_") && item->isVisible())
                boxes.emplace_back(item->mapRectToScene(item->boundingRect().adjusted(2, 4, -2, -4)), 4.5);
        }
        return boxes;
    }

    /// The same under every line of the panel while the disc turns.
    Worst worstAtAnyAngle() {
        Worst worst;
        for (const double angle : {0.0, 47.0, 133.0, 262.0}) {
            Worst found = worstOf(ground(angle), panelBoxes());
            found.where += QStringLiteral(", turned by %1").arg(angle);
            if (found.share < worst.share)
                worst = found;
        }
        return worst;
    }

    void expectLegible(int cover, BackgroundOption style, bool fullScreen) {
        static const QStringList discs{QStringLiteral("33Vinyl"), QStringLiteral("cddefault"),
                                       QStringLiteral("33WhiteBlured"), QStringLiteral("33Transparent")};
        const QString disc = discs[cover % discs.size()];
        SCOPED_TRACE(testing::Message() << "cover " << cover << ", style " << static_cast<int>(style) << ", "
                                        << disc.toStdString() << (fullScreen ? ", full screen" : ""));
        show(cover, style, disc, fullScreen);
        const Worst worst = worstAtAnyAngle();
        least = std::min(least, worst.share);
        EXPECT_GE(worst.share, 1) << qPrintable(worst.where);
    }

    static std::vector<BackgroundOption> styles() {
        return {BackgroundManager::randomChoices.begin(), BackgroundManager::randomChoices.end()};
    }

    /// Eight; forty where there is time for them.
    static int coverCount() { return qEnvironmentVariableIsSet("TARNWICK_ALL_COVERS") ? 40 : 8; }

    double least = 100;
    windows::FakeWindow& window = windows.addWindow();
};

class LegibilityOfStyle : public LegibilityOfDisplay, public testing::WithParamInterface<BackgroundOption> {};

TEST_P(LegibilityOfStyle, EveryLineOfThePanelHasItsContrast) {
    for (int cover = 0; cover < coverCount(); ++cover)
        expectLegible(cover, GetParam(), false);
    expectLegible(2, GetParam(), true);
    RecordProperty("least", std::to_string(least));
    std::printf("least share of the contrast that is needed: %.3f\n", least);
}

INSTANTIATE_TEST_SUITE_P(Styles, LegibilityOfStyle, testing::ValuesIn(BackgroundManager::randomChoices));

/// What the measure is worth: without its veils the same display is not legible.
TEST_F(LegibilityOfDisplay, TheVeilsAreWhatMakesItLegible) {
    show(0, BackgroundOption::Gradient, QStringLiteral("33Vinyl"), false);
    EXPECT_GE(worstAtAnyAngle().share, 1);
    for (QQuickItem* item : itemsBelow(renderer->root())) {
        if (qobject_cast<VeilLayer*>(item))
            item->setVisible(false);
    }
    EXPECT_LT(worstAtAnyAngle().share, 0.4);
}

TEST_F(LegibilityOfDisplay, EveryRowOfTheDynamicListHasItsContrast) {
    settings.setTracklistStyle(TracklistStyle::Dynamic);
    for (const BackgroundOption style : styles()) {
        for (int cover = 0; cover < coverCount(); ++cover) {
            SCOPED_TRACE(testing::Message() << "cover " << cover << ", style " << static_cast<int>(style));
            show(cover, style, QStringLiteral("33Vinyl"), false);
            if (!view->isFlipped()) {
                view->tapCover();
                settle();
            }
            const auto rows = rowBoxes();
            ASSERT_FALSE(rows.empty());
            for (const double angle : {0.0, 133.0}) {
                const Worst worst = worstOf(ground(angle), rows);
                EXPECT_GE(worst.share, 1) << qPrintable(worst.where);
            }
        }
    }
}

} // namespace
} // namespace tarnwick
