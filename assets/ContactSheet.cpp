#include "assets/ContactSheet.h"

#include <QFontMetrics>
#include <QPainter>

#include <array>
#include <cmath>
#include <vector>

namespace tarnwick {

namespace {

/// How one kind is shown.
struct Section {
    Catalogue::Kind kind;
    double width; ///< of a picture, in units of the sheet
    double height;
};
constexpr std::array sections{
    Section{Catalogue::Kind::Disc, 11, 11},   Section{Catalogue::Kind::Picture, 11, 11},
    Section{Catalogue::Kind::Logo, 5.5, 2.4}, Section{Catalogue::Kind::Symbol, 3, 3},
    Section{Catalogue::Kind::Flag, 3.6, 2.7},
};
constexpr double gap = 1.2;
constexpr double sectionGap = 1.6;
constexpr double captionTop = 0.3;
constexpr double captionSize = 0.8; ///< of its type
constexpr double captionLine = 1;

/// Where a sheet is as large as it likes to be.
constexpr int comfortableWidth = 1800;
constexpr double comfortableUnit = 16; ///< pixels

const QColor greyGround(0x3b, 0x3e, 0x42);
const QColor darkGround(0x12, 0x13, 0x15);
const QColor paper(0xe8, 0xe8, 0xea);

QFont captionFont(double unit) {
    QFont font(QStringLiteral("Inter"));
    font.setPixelSize(std::max(1, static_cast<int>(unit * captionSize)));
    return font;
}

/// How wide `text` is as a caption, in units of the sheet.
double captionWidth(const QString& text) {
    constexpr double large = 100;
    return QFontMetricsF(captionFont(large)).horizontalAdvance(text) / large;
}

/// The name in one line, or, where that is wider than `width`, in the two that need the least.
QStringList captionLines(const QString& name, double width) {
    QStringList best{name};
    double least = captionWidth(name);
    if (least <= width)
        return best;
    for (qsizetype i = 1; i < name.size(); ++i) {
        if (name[i - 1].isLetterOrNumber() || i < 2)
            continue;
        const QStringList lines{name.left(i).trimmed(), name.mid(i)};
        if (const double widest = std::max(captionWidth(lines[0]), captionWidth(lines[1])); widest < least) {
            least = widest;
            best = lines;
        }
    }
    return best;
}

/// A picture and the lines of its name.
struct Cell {
    QString name;
    QStringList caption;
};

/// The pictures of one kind in columns of one width, so that every name is whole. In units of the sheet.
struct Grid {
    Section section;
    QList<Cell> cells;
    double column = 0;
    double row = 0;
};

std::vector<Grid> makeGrids(const Catalogue& catalogue) {
    std::vector<Grid> grids;
    for (const Section& section : sections) {
        Grid grid{section, {}, section.width, 0};
        qsizetype lines = 1;
        for (const QString& name : catalogue.names(section.kind)) {
            grid.cells.append({name, captionLines(name, section.width)});
            lines = std::max(lines, grid.cells.back().caption.size());
            for (const QString& line : grid.cells.back().caption)
                grid.column = std::max(grid.column, captionWidth(line));
        }
        grid.row = section.height + captionTop + static_cast<double>(lines) * captionLine;
        grids.push_back(std::move(grid));
    }
    return grids;
}

/// Places cells from left to right and top to bottom, calls `place(cell, rectangle)` for each, the rectangle
/// being the picture's in pixels, and returns the height that is needed.
template <typename Place>
double layOut(const std::vector<Grid>& grids, double width, double unit, Place place) {
    double y = gap;
    for (const Grid& grid : grids) {
        double x = gap;
        for (const Cell& cell : grid.cells) {
            if ((x + grid.column + gap) * unit > width && x > gap) {
                x = gap;
                y += grid.row + gap;
            }
            const double left = x + (grid.column - grid.section.width) / 2;
            place(cell, QRectF(left * unit, y * unit, grid.section.width * unit, grid.section.height * unit));
            x += grid.column + gap;
        }
        y += grid.row + gap + sectionGap;
    }
    return y * unit;
}

double neededHeight(const std::vector<Grid>& grids, double width, double unit) {
    return layOut(grids, width, unit, [](const Cell&, const QRectF&) {});
}

void drawCell(QPainter& painter, const Catalogue& catalogue, const Cell& cell, const QRectF& place,
              double unit) {
    const QSize natural = catalogue.naturalSize(cell.name);
    const QSize size = natural.scaled(place.size().toSize(), Qt::KeepAspectRatio);
    const auto picture = catalogue.picture(cell.name, size, Qt::white);
    const QPointF corner(qRound(place.center().x() - size.width() / 2.0),
                         qRound(place.center().y() - size.height() / 2.0));
    if (cell.name.endsWith(QLatin1String("-black")))
        painter.fillRect(place.adjusted(-unit / 3, -unit / 3, unit / 3, unit / 3), paper);
    if (picture)
        painter.drawImage(corner, *picture);
    painter.setPen(QColor(0xe2, 0xe4, 0xe6));
    for (qsizetype i = 0; i < cell.caption.size(); ++i) {
        const double top = place.bottom() + (captionTop + static_cast<double>(i) * captionLine) * unit;
        painter.drawText(QRectF(place.center().x(), top, 0, captionLine * unit),
                         Qt::AlignCenter | Qt::TextDontClip, cell.caption[i]);
    }
}

} // namespace

QSize contactSheetSize(const Catalogue& catalogue) {
    const double height = neededHeight(makeGrids(catalogue), comfortableWidth, comfortableUnit);
    return {comfortableWidth, static_cast<int>(std::ceil(height))};
}

QImage contactSheet(const Catalogue& catalogue, QSize size, bool isDark) {
    QImage sheet(size, QImage::Format_RGB32);
    if (sheet.isNull())
        return sheet;
    sheet.fill(isDark ? darkGround : greyGround);
    const auto grids = makeGrids(catalogue);
    double fits = 0;
    double tooLarge = size.width();
    for (int i = 0; i < 24; ++i) {
        const double unit = (fits + tooLarge) / 2;
        (neededHeight(grids, size.width(), unit) <= size.height() ? fits : tooLarge) = unit;
    }
    QPainter painter(&sheet);
    painter.setFont(captionFont(fits));
    layOut(grids, size.width(), fits,
           [&](const Cell& cell, const QRectF& place) { drawCell(painter, catalogue, cell, place, fits); });
    return sheet;
}

} // namespace tarnwick
