#include "assets/ContactSheet.h"

#include <QFontMetrics>
#include <QPainter>

#include <array>

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
constexpr double caption = 1.5;
constexpr double sectionGap = 1.6;

const QColor ground(0x3b, 0x3e, 0x42);
const QColor paper(0xe8, 0xe8, 0xea);

/// Places cells from left to right and top to bottom.
class SheetLayout {
public:
    SheetLayout(const Catalogue& catalogue, double width, double unit)
        : m_catalogue(catalogue), m_width(width), m_unit(unit) {}

    /// Calls `place(name, section, rectangle)` for every picture and returns the height that was needed.
    template <typename Place>
    double run(Place place) const {
        double y = gap;
        for (const Section& section : sections) {
            double x = gap;
            for (const QString& name : m_catalogue.names(section.kind)) {
                if ((x + section.width + gap) * m_unit > m_width) {
                    x = gap;
                    y += section.height + caption + gap;
                }
                place(name, section,
                      QRectF(x * m_unit, y * m_unit, section.width * m_unit, section.height * m_unit));
                x += section.width + gap;
            }
            y += section.height + caption + gap + sectionGap;
        }
        return y * m_unit;
    }

private:
    const Catalogue& m_catalogue;
    double m_width;
    double m_unit;
};

void drawCell(QPainter& painter, const Catalogue& catalogue, const QString& name, const QRectF& cell,
              double unit) {
    const QSize natural = catalogue.naturalSize(name);
    const QSize size = natural.scaled(cell.size().toSize(), Qt::KeepAspectRatio);
    const auto picture = catalogue.picture(name, size, Qt::white);
    const QPointF corner(qRound(cell.center().x() - size.width() / 2.0),
                         qRound(cell.center().y() - size.height() / 2.0));
    if (name.endsWith(QLatin1String("-black")))
        painter.fillRect(cell.adjusted(-unit / 3, -unit / 3, unit / 3, unit / 3), paper);
    if (picture)
        painter.drawImage(corner, *picture);
    const QRectF line(cell.left() - gap / 2 * unit, cell.bottom() + unit * 0.3, cell.width() + gap * unit,
                      caption * unit);
    painter.setPen(QColor(0xe2, 0xe4, 0xe6));
    painter.drawText(line, Qt::AlignHCenter | Qt::AlignTop,
                     painter.fontMetrics().elidedText(name, Qt::ElideMiddle, static_cast<int>(line.width())));
}

} // namespace

QImage contactSheet(const Catalogue& catalogue, QSize size) {
    QImage sheet(size, QImage::Format_RGB32);
    if (sheet.isNull())
        return sheet;
    sheet.fill(ground);
    double fits = 0;
    double tooLarge = size.width();
    for (int i = 0; i < 24; ++i) {
        const double unit = (fits + tooLarge) / 2;
        const double height =
            SheetLayout(catalogue, size.width(), unit).run([](const QString&, const Section&, const QRectF&) {
            });
        (height <= size.height() ? fits : tooLarge) = unit;
    }
    QPainter painter(&sheet);
    QFont font(QStringLiteral("Inter"));
    font.setPixelSize(std::max(1, static_cast<int>(fits * 0.8)));
    painter.setFont(font);
    SheetLayout(catalogue, size.width(), fits)
        .run([&](const QString& name, const Section&, const QRectF& cell) {
            drawCell(painter, catalogue, name, cell, fits);
        });
    return sheet;
}

} // namespace tarnwick
