#include "display/panel/PanelLayout.h"

#include "canvas/type/TextInk.h"
#include "display/panel/PanelColumn.h"
#include "display/state/TrackTexts.h"

#include <QRegularExpression>

#include <algorithm>

namespace tarnwick {

namespace {

constexpr double cellOverhang = 0.055; // of the type's size: what a figure leaves free in its cell
constexpr double colonRaise = 0.07;
constexpr double leastProgressRow = 120;
constexpr double recordEnd = 0.75; // of the window's width
constexpr double capHeight = 0.727;

int lightOf(double points) {
    constexpr double hairlineFrom = 20; // thinner strokes break up below
    return points >= hairlineFrom ? QFont::ExtraLight : QFont::Light;
}

std::function<int(double)> always(int weight) {
    return [weight](double) { return weight; };
}

/// The lines of a text whose words are wrapped; the text's own line ends count, its empty lines do not.
QStringList linesOf(const QString& text, int limit) {
    static const QRegularExpression ends(QStringLiteral("[\\r\\n\\x{2028}\\x{2029}\\x{0b}\\x{0c}]+"));
    QStringList lines;
    for (const QString& line : wrapWords(text, limit).split(ends, Qt::SkipEmptyParts)) {
        if (const QString tidy = line.simplified(); !tidy.isEmpty())
            lines.append(tidy);
    }
    return lines;
}

QString oneLine(const QString& text) { return text.simplified(); }

/// Sets one panel.
class Composer {
public:
    Composer(const PanelFacts& facts, const PanelFrame& frame, const PanelFonts& fonts)
        : m_facts(facts), m_sizes(panelSizes(frame.fullScreen)),
          m_limits(wrapLimits(frame.window.width(), frame.fullScreen)), m_column(frame),
          m_face(fonts.font(facts.trackFont)), m_clockFace(fonts.font(facts.clockFont)) {}

    PanelLayout compose() {
        addProgress();
        addTitle();
        addArtist();
        addAlbum();
        addLogo();
        addDetails();
        addClock();
        addFlags();
        addComment();
        m_layout.lines = std::move(m_column.lines());
        return std::move(m_layout);
    }

private:
    void addProgress();
    void addTitle();
    void addArtist();
    void addAlbum();
    void addLogo();
    void addDetails();
    void addClock();
    void addFlags();
    void addComment();

    PanelFigures figures(const QString& text, const QFont& font) const;
    void addLine(const QString& text, PanelBlock block, double points, int weight, double gap);
    double lineOf(double points) const { return m_sizes.gap() + PanelColumn::lineHeight * points; }
    const PanelFrame& frame() const { return m_column.frame(); }
    QRectF snapped(const QRectF& box) const {
        return {QPointF(m_column.snapped(box.left()), m_column.snapped(box.top())),
                QPointF(m_column.snapped(box.right()), m_column.snapped(box.bottom()))};
    }

    const PanelFacts& m_facts;
    const PanelSizes m_sizes;
    const WrapLimits m_limits;
    PanelColumn m_column;
    const QFont m_face;
    const QFont m_clockFace;
    PanelLayout m_layout;
};

/// Cells for `text`, at the origin.
PanelFigures Composer::figures(const QString& text, const QFont& font) const {
    PanelFigures figures;
    figures.font = font;
    const double size = typeSize(font);
    figures.box = QRectF(0, -PanelColumn::ascent * size, figureCells(font).width(text, font),
                         PanelColumn::lineHeight * size);
    return figures;
}

void Composer::addProgress() {
    if (!m_facts.elapsed)
        return;
    const double height = PanelColumn::lineHeight * m_sizes.times();
    const std::optional<double> top = m_column.takeHeight(height);
    if (!top || frame().widestLine() <= 0)
        return;
    const QFont font = panelFont(systemFont(), m_sizes.times(), QFont::Medium);
    PanelProgress row{figures(*m_facts.elapsed, font), {}, figures(m_facts.duration, font)};

    const double edge = frame().inkEdge();
    const double gap = 0.4 * m_sizes.base;
    const double times = row.elapsed.box.width() + row.duration.box.width() + 2 * gap;
    const double wanted =
        std::max({(leastProgressRow), edge - recordEnd * frame().window.width(), times + (3 * m_sizes.base)});
    const double width = std::min(frame().widestLine(), wanted);
    if (width <= times)
        return; // times of a thousand days, or a window that is none

    const double baseline = m_column.snapped(*top + PanelColumn::ascent * m_sizes.times());
    const double overhang = cellOverhang * typeSize(font);
    const auto put = [&](PanelFigures& figures, double left) {
        figures.baseline = baseline;
        figures.box.translate(left, baseline);
    };
    put(row.elapsed, edge - width - overhang);
    put(row.duration, edge + overhang - row.duration.box.width());
    const double thickness = (frame().fullScreen ? 5 : 3);
    const double middle = baseline - capHeight / 2 * typeSize(font);
    const double left = row.elapsed.box.right() + gap;
    row.bar = snapped({left, middle - thickness / 2, row.duration.box.left() - gap - left, thickness});
    m_layout.progress = row;
}

void Composer::addTitle() {
    const QStringList lines = linesOf(m_facts.title, m_limits.title);
    if (lines.isEmpty())
        return;
    const QFont labelFont = panelFont(m_face, m_sizes.base, QFont::Light);
    QString labels = m_facts.labels;
    const double distance = 0.5 * m_sizes.base;
    double room = labels.isEmpty() ? 0 : measureInk(labels, labelFont).ink.width() + distance;
    if (room > frame().widestLine() / 2) {
        labels.clear();
        room = 0;
    }
    m_column.skip(m_sizes.gap());
    // However long the title, the artist and the album keep a line each.
    const double reserve = (m_facts.artist.isEmpty() ? 0 : lineOf(m_sizes.large)) + lineOf(m_sizes.medium);
    const bool added = m_column.addText(lines, oneLine(m_facts.title),
                                        {.block = PanelBlock::Title,
                                         .face = m_face,
                                         .points = m_sizes.large,
                                         .weight = always(QFont::Light),
                                         .room = room},
                                        reserve);
    if (added && !labels.isEmpty())
        m_column.addLabels(labels, labelFont, distance);
}

void Composer::addArtist() {
    const QStringList lines = linesOf(m_facts.artist, m_limits.artist);
    if (lines.isEmpty())
        return;
    m_column.skip(m_sizes.gap());
    m_column.addText(
        lines, oneLine(m_facts.artist),
        {.block = PanelBlock::Artist, .face = m_face, .points = m_sizes.large, .weight = always(QFont::Bold)},
        lineOf(m_sizes.medium));
}

void Composer::addAlbum() {
    if (const QStringList lines = linesOf(m_facts.album, m_limits.album); !lines.isEmpty()) {
        m_column.skip(m_sizes.gap());
        m_column.addText(
            lines, oneLine(m_facts.album),
            {.block = PanelBlock::Album, .face = m_face, .points = m_sizes.medium, .weight = lightOf});
    }
    addLine(m_facts.group, PanelBlock::Album, m_sizes.group(), QFont::Light, m_sizes.gap());
    addLine(m_facts.year, PanelBlock::Album, m_sizes.group(), QFont::Light, m_sizes.gap());
}

void Composer::addLine(const QString& text, PanelBlock block, double points, int weight, double gap) {
    const QString tidy = oneLine(text);
    if (tidy.isEmpty())
        return;
    m_column.skip(gap);
    m_column.addText({tidy}, tidy,
                     {.block = block, .face = m_face, .points = points, .weight = always(weight)});
}

void Composer::addLogo() {
    if (m_facts.logo.isEmpty())
        return;
    constexpr double heightInBase = 1.72;
    m_column.skip(m_sizes.gap());
    const double height = heightInBase * m_sizes.base;
    if (const std::optional<double> top = m_column.takeHeight(height)) {
        const double width = std::min(height * m_facts.logoAspect, frame().widestLine());
        m_layout.logo = PanelPicture{m_facts.logo, snapped({frame().inkEdge() - width, *top, width, height})};
    }
}

void Composer::addDetails() {
    constexpr double paddingBelow = 10;
    const size_t before = m_column.lines().size();
    for (const QString& detail : m_facts.details)
        addLine(detail, PanelBlock::Details, m_sizes.base, QFont::Normal, m_sizes.gap());
    if (m_column.lines().size() > before)
        m_column.skip(paddingBelow);
}

void Composer::addClock() {
    if (!m_facts.clock)
        return;
    constexpr double paddingOfTime = 3;
    constexpr double paddingBelow = 5;
    m_column.skip(m_sizes.gap());
    QFont font = panelFont(m_clockFace, m_sizes.clock, QFont::Light);
    PanelFigures clock = figures(*m_facts.clock, font);
    if (clock.box.width() > frame().widestLine() && clock.box.width() > 0) {
        const double scale = frame().widestLine() / clock.box.width();
        font = panelFont(m_clockFace, scale * typeSize(font), QFont::Light);
        clock = figures(*m_facts.clock, font);
    }
    const double height = PanelColumn::lineHeight * m_sizes.clock;
    if (!m_column.fits(height + paddingOfTime + PanelColumn::lineHeight * m_sizes.date)) {
        m_column.setFull();
        return;
    }
    const double top = m_column.takeHeight(height).value_or(0);
    clock.raise = colonRaise * typeSize(font);
    clock.baseline = m_column.snapped(top + PanelColumn::ascent * m_sizes.clock);
    clock.box.translate(frame().inkEdge() + cellOverhang * typeSize(font) - clock.box.width(),
                        clock.baseline);
    m_layout.clock = clock;

    const QString date = oneLine(m_facts.date);
    if (date.isEmpty())
        return;
    m_column.skip(paddingOfTime);
    m_column.addText({date}, date,
                     {.block = PanelBlock::Clock,
                      .face = m_clockFace,
                      .points = m_sizes.date,
                      .weight = always(QFont::Light)});
    m_column.skip(paddingBelow);
}

void Composer::addFlags() {
    if (m_facts.flags.isEmpty())
        return;
    m_column.skip(m_sizes.gap());
    const double height = 1.5 * m_sizes.base;
    const std::optional<double> top = m_column.takeHeight(height);
    if (!top)
        return;
    const double width = height * 4 / 3;
    const double gap = 0.5 * m_sizes.base;
    const auto count =
        std::min(m_facts.flags.size(), static_cast<qsizetype>((frame().widestLine() + gap) / (width + gap)));
    double left = frame().inkEdge() + gap - static_cast<double>(count) * (width + gap);
    for (qsizetype i = 0; i < count; ++i, left += width + gap)
        m_layout.flags.push_back({m_facts.flags[i], snapped({left, *top, width, height})});
}

void Composer::addComment() {
    const QStringList lines = linesOf(m_facts.comment, m_limits.comment);
    if (lines.isEmpty())
        return;
    const double inner = 0.15 * m_sizes.base;
    m_column.skip(2 * m_sizes.gap());
    if (!m_column.fits(PanelColumn::lineHeight * (m_sizes.medium + m_sizes.base) + inner)) {
        m_column.setFull();
        return;
    }
    addLine(QStringLiteral("Information:"), PanelBlock::Comment, m_sizes.medium, QFont::Bold, 0);
    m_column.skip(inner);
    m_column.addText(lines, oneLine(m_facts.comment),
                     {.block = PanelBlock::Comment,
                      .face = m_face,
                      .points = m_sizes.base,
                      .weight = always(QFont::Light),
                      .ending = QStringLiteral(" …")});
}

} // namespace

QRectF PanelLayout::bounds(PanelBlock block) const {
    QRectF bounds;
    if (block == PanelBlock::Progress && progress)
        bounds = progress->elapsed.box | progress->duration.box | progress->bar;
    if (block == PanelBlock::Logo && logo)
        bounds = logo->box;
    if (block == PanelBlock::Clock && clock)
        bounds = clock->box;
    if (block == PanelBlock::Flags) {
        for (const PanelPicture& flag : flags)
            bounds |= flag.box;
    }
    for (const PanelLine& line : lines) {
        if (line.block == block)
            bounds |= line.box;
    }
    return bounds;
}

bool PanelLayout::givesWay(PanelBlock block, const QRectF& bar, double margin) const {
    const bool yields = block == PanelBlock::Details || block == PanelBlock::Clock ||
                        block == PanelBlock::Flags || block == PanelBlock::Comment;
    return yields && bounds(block).adjusted(-margin, -margin, margin, margin).intersects(bar);
}

PanelLayout layoutPanel(const PanelFacts& facts, const PanelFrame& frame, const PanelFonts& fonts) {
    return Composer(facts, frame, fonts).compose();
}

} // namespace tarnwick
