#include "display/panel/PanelLayout.h"

#include "canvas/type/TextInk.h"

#include <QFontInfo>
#include <gmock/gmock.h>

#include <algorithm>

namespace tarnwick {
namespace {

PanelFacts everything() {
    PanelFacts facts;
    facts.elapsed = "02:41";
    facts.duration = "05:18";
    facts.labels = "4.  cd2";
    facts.title = "Le luci lontane del porto";
    facts.artist = "NEVIA CORALLO";
    facts.album = "Lontano";
    facts.group = "Notturni per pianoforte e archi";
    facts.year = "(2019)";
    facts.logo = "alac-white";
    facts.details = {"Playlist: Sere di settembre", "Genre: Jazz", "Bit Rate: 1018 kbps",
                     "File Size: 38.64 MB", "Sample Rate: 96 kHz"};
    facts.clock = "21:47";
    facts.date = "22 nov 2026";
    facts.flags = {"Italy", "Japan", "Germany"};
    facts.comment = "Italy, Japan, Germany. Registrato dal vivo a Trieste nel maggio 2019, "
                    "missaggio di Ada Ferri, pianoforte Bösendorfer.";
    return facts;
}

PanelFacts withTitle(const QString& title) {
    PanelFacts facts = everything();
    facts.title = title;
    facts.artist = title.toUpper();
    facts.album = title;
    facts.group = title;
    facts.comment = title + u' ' + title;
    facts.details.append("Genre: " + title);
    return facts;
}

PanelLayout laidOut(const PanelFacts& facts, const PanelFrame& frame) {
    return layoutPanel(facts, frame, SystemPanelFonts());
}

std::vector<const PanelLine*> linesOf(const PanelLayout& layout, PanelBlock block) {
    std::vector<const PanelLine*> lines;
    for (const PanelLine& line : layout.lines) {
        if (line.block == block)
            lines.push_back(&line);
    }
    return lines;
}

/// Every box that shows something, top to bottom.
std::vector<QRectF> boxesOf(const PanelLayout& layout) {
    std::vector<QRectF> boxes;
    if (layout.progress)
        boxes.insert(boxes.end(),
                     {layout.progress->elapsed.box, layout.progress->bar, layout.progress->duration.box});
    for (const PanelLine& line : layout.lines)
        boxes.push_back(line.box);
    if (layout.logo)
        boxes.push_back(layout.logo->box);
    if (layout.clock)
        boxes.push_back(layout.clock->box);
    for (const PanelPicture& flag : layout.flags)
        boxes.push_back(flag.box);
    return boxes;
}

const std::vector<PanelFrame>& frames() {
    static const std::vector<PanelFrame> frames{
        {.window = {1200, 600}},
        {.window = {600, 300}, .pixelRatio = 2},
        {.window = {850, 425}, .pixelRatio = 1.25},
        {.window = {1920, 1080}, .fullScreen = true},
        {.window = {1920, 1080}, .fullScreen = true, .pixelRatio = 4},
        {.window = {1920, 1080}, .fullScreen = true, .cassette = true},
        {.window = {2560, 1080}, .fullScreen = true},
        {.window = {7680, 4320}},
        {.window = {608, 1080}, .fullScreen = true},
        {.window = {600, 300}, .fullScreen = true},
        {.window = {200, 3000}},
        {.window = {90, 40}},
        {.window = {0, 0}},
    };
    return frames;
}

TEST(PanelLayout, NothingOverlapsOrLeavesTheWindow) {
    const std::vector<QString> titles{
        "Le luci",
        QString(80, u'W'),
        QStringLiteral("Ab ").repeated(134),
        QString(400, u'x'),
        QStringLiteral("遠い海へ、もう一度だけ手紙を書く夜に").repeated(4),
        QStringLiteral("ليلة على الميناء البعيد ").repeated(9),
        QStringLiteral("לילה ארוך ").repeated(9),
        "Été \U0001F3B7\U0001F469\u200D\U0001F469\u200D\U0001F467 ",
        "a" + QStringLiteral("\u0301\u0323").repeated(30),
        QStringLiteral("กี้ที่ป้ำ ").repeated(12),
        QString(),
    };
    for (const QString& title : titles) {
        for (const PanelFrame& frame : frames()) {
            SCOPED_TRACE(testing::Message() << qPrintable(title.left(20)) << " in " << frame.window.width()
                                            << "x" << frame.window.height());
            const PanelLayout layout = laidOut(withTitle(title), frame);
            const QRectF inside(QPointF(0, 0), QSizeF(frame.inkEdge() + 6, frame.window.height() - 11.9));
            const std::vector<QRectF> boxes = boxesOf(layout);
            for (size_t i = 0; i < boxes.size(); ++i) {
                EXPECT_TRUE(inside.contains(boxes[i]))
                    << i << " " << boxes[i].left() << "," << boxes[i].bottom();
                for (size_t j = i + 1; j < boxes.size(); ++j)
                    EXPECT_FALSE(
                        boxes[i].adjusted(.1, .1, -.1, -.1).intersects(boxes[j].adjusted(.1, .1, -.1, -.1)))
                        << i << " and " << j;
            }
        }
    }
}

TEST(PanelLayout, EndsTheInkOfEveryLineAtOneEdge) {
    struct Row {
        PanelFrame frame;
        double edge;
    };
    const std::vector<Row> rows{
        {{.window = {1200, 600}}, 1160},
        {{.window = {600, 300}}, 560},
        {{.window = {1920, 1080}, .fullScreen = true}, 1805},
        {{.window = {1920, 1080}, .fullScreen = true, .cassette = true}, 1880},
        {{.window = {2560, 1080}, .fullScreen = true}, 2445},
    };
    for (const Row& row : rows) {
        const PanelLayout layout = laidOut(everything(), row.frame);
        for (const PanelLine& line : layout.lines) {
            if (line.text == "4.  cd2")
                continue;
            EXPECT_NEAR(line.box.right(), row.edge, 0.001) << qPrintable(line.text);
        }
        EXPECT_NEAR(layout.logo->box.right(), row.edge, 0.5);
        EXPECT_GE(layout.progress->bar.width(), 40);
    }
}

TEST(PanelLayout, StandsWhereItShouldAtTheUsualSize) {
    const PanelLayout layout = laidOut(everything(), {.window = {1200, 600}});
    EXPECT_NEAR(layout.progress->elapsed.box.left(), 900, 1); // where the record ends
    EXPECT_NEAR(linesOf(layout, PanelBlock::Title).back()->baseline, 57.4, 1.5);
    EXPECT_NEAR(linesOf(layout, PanelBlock::Artist).front()->baseline, 88.2, 1.5);
    EXPECT_NEAR(layout.clock->baseline, 361, 2);
    EXPECT_EQ(linesOf(layout, PanelBlock::Comment).size(), 5U);
    EXPECT_NEAR(layout.bounds(PanelBlock::Comment).bottom(), 533, 6);
    EXPECT_EQ(linesOf(layout, PanelBlock::Album)[0]->font.weight(), QFont::ExtraLight);
    EXPECT_EQ(linesOf(layout, PanelBlock::Album)[2]->font.weight(), QFont::Light);

    const PanelLayout screen = laidOut(everything(), {.window = {1920, 1080}, .fullScreen = true});
    EXPECT_NEAR(screen.progress->elapsed.box.left(), 1440, 1);
    EXPECT_EQ(typeSize(linesOf(screen, PanelBlock::Title).back()->font), 38);
    EXPECT_NEAR(screen.bounds(PanelBlock::Comment).bottom(), 874, 12);
    EXPECT_EQ(linesOf(screen, PanelBlock::Title).front()->font.weight(), QFont::Light) << "the number";
    EXPECT_EQ(linesOf(screen, PanelBlock::Comment).back()->font.weight(), QFont::Light);
}

TEST(PanelLayout, PutsTheLabelsOnTheFirstBaselineBesideTheWholeTitle) {
    for (const QString& title : QStringList{"Uno", "Un titolo che prende più di una riga",
                                            "雨の停車場 そして 遠い海へ、もう一度だけ手紙を書く夜に"}) {
        PanelFacts facts = everything();
        facts.title = title;
        const PanelLayout layout = laidOut(facts, {.window = {600, 300}});
        const auto lines = linesOf(layout, PanelBlock::Title);
        ASSERT_GE(lines.size(), 2U);
        EXPECT_EQ(lines[0]->baseline, lines[1]->baseline);
        for (size_t i = 1; i < lines.size(); ++i)
            EXPECT_LE(lines[0]->box.right(), lines[i]->box.left() - 6.9);
    }
}

TEST(PanelLayout, SetsWideLinesSmallerAndThenCutsThem) {
    PanelFacts facts = everything();
    const PanelFrame frame{.window = {1200, 600}};
    facts.title = QString(50, u'n');
    const PanelLayout smaller = laidOut(facts, frame);
    const PanelLine* line = linesOf(smaller, PanelBlock::Title).back();
    EXPECT_EQ(line->text, facts.title);
    facts.title = QString(400, u'n');
    const PanelLayout cut = laidOut(facts, frame);
    line = linesOf(cut, PanelBlock::Title).back();
    EXPECT_NEAR(typeSize(line->font), 13.2, 0.001);
    EXPECT_TRUE(line->text.endsWith(u'…'));
    EXPECT_EQ(line->spoken, facts.title);
    EXPECT_LE(line->box.width(), frame.widestLine());
}

TEST(PanelLayout, OnlyTheEndOfATextIsLeftOut) {
    PanelFacts facts = everything();
    facts.title = "Le luci lontane del porto";
    for (int width = 300; width < 900; width += 20) {
        const PanelLayout layout = laidOut(facts, {.window = {double(width), 200}});
        QStringList words;
        const auto lines = linesOf(layout, PanelBlock::Title);
        for (const PanelLine* line : lines) {
            if (line->text.contains(u'…')) {
                EXPECT_EQ(line, lines.back()) << width;
            }
            if (line->text != facts.labels)
                words.append(line->text);
        }
        const QString shown = words.join(u' ');
        EXPECT_TRUE(facts.title.startsWith(shown.left(shown.indexOf(u'…'))))
            << width << " " << qPrintable(shown);
    }
}

TEST(PanelLayout, LeavesOutFromBelowWhatDoesNotFit) {
    PanelFacts facts = everything();
    facts.title = QStringLiteral("parola ").repeated(60);
    const PanelLayout small = laidOut(facts, {.window = {600, 300}});
    EXPECT_TRUE(linesOf(small, PanelBlock::Title).back()->text.endsWith(u'…'));
    EXPECT_FALSE(linesOf(small, PanelBlock::Artist).empty());
    EXPECT_FALSE(linesOf(small, PanelBlock::Album).empty());
    EXPECT_FALSE(small.clock);
    EXPECT_TRUE(small.flags.empty());

    // The clock never comes without its date, the heading never without a comment.
    for (int height = 100; height < 700; height += 3) {
        const PanelLayout layout = laidOut(everything(), {.window = {1200, double(height)}});
        EXPECT_EQ(layout.clock.has_value(), linesOf(layout, PanelBlock::Clock).size() == 1) << height;
        EXPECT_NE(linesOf(layout, PanelBlock::Comment).size(), 1U) << height;
        EXPECT_LE(layout.flags.empty() ? 0 : 1, layout.clock ? 1 : 0) << height;
    }
    const PanelLayout short_ = laidOut(everything(), {.window = {1200, 520}});
    EXPECT_TRUE(linesOf(short_, PanelBlock::Comment).back()->text.endsWith(" …"));
}

TEST(PanelLayout, ShowsOnlyWhatThereIs) {
    PanelFacts facts;
    facts.album = "Album sconosciuto";
    const PanelLayout layout = laidOut(facts, {.window = {1200, 600}});
    ASSERT_EQ(layout.lines.size(), 1U);
    EXPECT_NEAR(layout.lines[0].box.top(), 20, 0.001);
    EXPECT_FALSE(layout.progress || layout.logo || layout.clock);
}

TEST(PanelLayout, GivesWayOnlyWhereTheBarComesNear) {
    const PanelLayout layout = laidOut(everything(), {.window = {1920, 1080}, .fullScreen = true});
    const QRectF comment = layout.bounds(PanelBlock::Comment);
    const QRectF bar(comment.left() - 200, comment.bottom() + 11, 400, 100);
    EXPECT_TRUE(layout.givesWay(PanelBlock::Comment, bar, 12));
    EXPECT_FALSE(layout.givesWay(PanelBlock::Comment, bar.translated(0, 2), 12));
    EXPECT_FALSE(layout.givesWay(PanelBlock::Flags, bar, 12));
    EXPECT_FALSE(layout.givesWay(PanelBlock::Title, layout.bounds(PanelBlock::Title), 12));
}

TEST(PanelFonts, AChosenFaceKeepsItsStyleAndBoldLinesAreNeverLighter) {
    struct Row {
        const char* family;
        const char* style;
        const char* bold;
    };
    for (const Row& row : {Row{"Inter", "Italic", "Bold Italic"}, Row{"Inter", "Black", "Black"},
                           Row{"Inter", "Regular", "Bold"}, Row{"Inter", "Bold", "Extra Bold"},
                           Row{"Inter", "Light Italic", "Bold Italic"},
                           Row{"DejaVu Sans", "Condensed Oblique", "Condensed Bold Oblique"},
                           Row{"DejaVu Sans", "Bold", "Bold"}, Row{"Noto Serif", "Italic", "Bold Italic"}}) {
        QFont face;
        face.setFamilies({row.family, "Inter"});
        face.setStyleName(row.style);
        EXPECT_EQ(panelFont(face, 14, QFont::Light).styleName(), row.style);
        const QString bold = panelFont(face, 14, QFont::Bold).styleName();
        EXPECT_EQ(bold.simplified().remove(u' '), QString(row.bold).remove(u' '))
            << row.family << " " << row.style;
    }
}

TEST(PanelLayout, HasTheSystemFont) {
    EXPECT_EQ(QFontInfo(SystemPanelFonts().font("System Font")).family(), "Inter");
}

} // namespace
} // namespace tarnwick
