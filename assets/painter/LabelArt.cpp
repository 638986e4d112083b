#include "assets/painter/LabelArt.h"

#include "assets/painter/Geometry.h"
#include "assets/painter/StrokeType.h"

#include <QtMath>

namespace tarnwick::painter {

namespace {

const QString name = QStringLiteral("TARNWICK");

/// The fine print: words of the letters there are.
constexpr std::array words{"TRAIN", "ATTIC", "ARCTIC", "KIWI", "CAIRN", "TWIN", "RAIN", "TRACK",
                           "WAIT",  "TIARA", "CRANK",  "RACK", "TANK",  "INK",  "TACT", "WARRANT"};

/// Neighbours in a list are never the same word.
QString word(const Disc& disc, int index) {
    constexpr std::size_t stride = 5; // shares no factor with the number of words
    const std::size_t place = static_cast<std::size_t>(index) * stride + disc.seed * 3;
    return QLatin1String(words[place % words.size()]);
}

/// Draws one label. The painter's unit is the label's radius, so that a style fits every size.
class LabelPainter {
public:
    LabelPainter(QPainter& painter, const Disc& disc)
        : m_painter(painter), m_disc(disc), m_paper(QColor::fromRgb(disc.label.paper)),
          m_ink(QColor::fromRgb(disc.label.ink)), m_accent(QColor::fromRgb(disc.label.accent)),
          m_speed(disc.zones.label > 0.4F ? QStringLiteral("45") : QStringLiteral("33")) {}

    void paint() {
        if (!m_disc.label.inkOnly && m_disc.label.style != LabelStyle::Print)
            circle(1, m_paper);
        ink(m_ink);
        switch (m_disc.label.style) {
        case LabelStyle::None:
            break;
        case LabelStyle::Classic:
            classic();
            break;
        case LabelStyle::Half:
            half();
            break;
        case LabelStyle::Band:
            band();
            break;
        case LabelStyle::RingType:
            ringType();
            break;
        case LabelStyle::Mini:
            mini();
            break;
        case LabelStyle::Bee:
            bee();
            break;
        case LabelStyle::Rays:
            rays();
            break;
        case LabelStyle::Rings:
            rings();
            break;
        case LabelStyle::Wing:
            wing();
            break;
        case LabelStyle::House:
            house();
            break;
        case LabelStyle::Deck:
            deck();
            break;
        case LabelStyle::Juke:
            juke();
            break;
        case LabelStyle::Print:
            print();
            break;
        case LabelStyle::TapeHub:
            tapeHub();
            break;
        }
    }

private:
    void ink(const QColor& colour) { m_painter.setPen(colour); }

    void circle(double radius, const QColor& colour) {
        m_painter.setBrush(colour);
        m_painter.setPen(Qt::NoPen);
        m_painter.drawEllipse(QPointF(), radius, radius);
    }

    void ring(double radius, double width, const QColor& colour) {
        m_painter.setBrush(Qt::NoBrush);
        m_painter.setPen(QPen(colour, width));
        m_painter.drawEllipse(QPointF(), radius, radius);
    }

    void text(const QString& what, double x, double y, const StrokeType& type) {
        drawStrokes(m_painter, what, {x, y}, type);
    }

    void finePrintRing(double radius, double height) {
        StrokeType type{height, 0.13, 0.36};
        const double room = 2 * M_PI * radius;
        const auto separator = QStringLiteral(" - ");
        QString line;
        for (int index = 0;; ++index) {
            const QString longer = line + word(m_disc, index) + separator;
            if (strokeWidth(longer, type) > room)
                break;
            line = longer;
        }
        // What is left over goes between the letters, so that the ring closes.
        type.tracking += (room - strokeWidth(line, type)) / (static_cast<double>(line.size()) * height);
        drawStrokesOnCircle(m_painter, line, radius, 0, type);
    }

    void rows(double top, int count, double height = 0.05, double x = 0, int first = 44) {
        for (int i = 0; i < count; ++i)
            text(word(m_disc, first + i), x, top + i * height * 1.9, {height, 0.14, 0.36});
    }

    void sides(double y, double x = 0.56) {
        text(m_speed, -x, y, {0.075, 0.14, 0.34});
        text(QStringLiteral("1"), x, y, {0.075, 0.14, 0.34});
    }

    /// A round plate in the middle that bears the type where the rest is a pattern.
    void plate(double radius, double edge, double nameRadius) {
        circle(radius, m_paper);
        ring(radius, edge, m_ink);
        ink(m_ink);
        drawStrokesOnCircle(m_painter, name, nameRadius, 0, {0.115, 0.15, 0.34});
        text(m_speed, -0.33, 0.02, {0.07});
        text(QStringLiteral("1"), 0.33, 0.02, {0.07});
        rows(0.24, 3);
    }

    void classic() {
        finePrintRing(0.915, 0.042);
        text(name, 0, -0.46, {0.15, 0.145, 0.34});
        sides(0);
        rows(0.34, 5);
    }

    void half() {
        m_painter.setPen(Qt::NoPen);
        m_painter.setBrush(m_accent);
        m_painter.drawPie(QRectF(-1, -1, 2, 2), 180 * 16, 180 * 16);
        ink(m_ink);
        finePrintRing(0.915, 0.042);
        text(name, 0, -0.44, {0.16, 0.15, 0.34});
        sides(-0.10);
        rows(0.34, 5);
        m_painter.setPen(QPen(m_ink, 0.008));
        m_painter.drawLine(QPointF(-0.84, 0), QPointF(-0.17, 0));
        m_painter.drawLine(QPointF(0.17, 0), QPointF(0.84, 0));
    }

    void band() {
        m_painter.save();
        QPainterPath disc;
        disc.addEllipse(QPointF(), 1, 1);
        m_painter.setClipPath(disc);
        m_painter.fillRect(QRectF(-1, -0.17, 2, 0.34), m_accent);
        m_painter.restore();
        ink(m_ink);
        finePrintRing(0.915, 0.042);
        text(name.left(4), -0.45, 0, {0.16, 0.15, 0.34});
        text(name.mid(4), 0.47, 0, {0.16, 0.15, 0.34});
        rows(-0.58, 4);
        rows(0.34, 5, 0.05, 0, 60);
    }

    void ringType() {
        ring(0.89, 0.20, m_accent);
        ink(m_paper);
        finePrintRing(0.885, 0.062);
        ink(m_ink);
        text(name, 0, -0.42, {0.145, 0.145, 0.34});
        sides(0, 0.50);
        rows(0.30, 5);
        ring(0.775, 0.008, m_ink);
    }

    void mini() {
        text(name, 0, -0.44, {0.085, 0.13, 0.75});
        text(m_speed, 0, 0.48, {0.06, 0.14, 0.5});
    }

    void bee() {
        m_painter.save();
        QPainterPath disc;
        disc.addEllipse(QPointF(), 1, 1);
        m_painter.setClipPath(disc);
        m_painter.rotate(24);
        for (int i = -4; i <= 4; ++i)
            m_painter.fillRect(QRectF(i * 0.26 - 0.065, -1.1, 0.13, 2.2), m_ink);
        m_painter.restore();
        plate(0.62, 0.018, 0.46);
    }

    void rays() {
        m_painter.setPen(Qt::NoPen);
        m_painter.setBrush(m_accent);
        for (int i = 0; i < 24; ++i)
            m_painter.drawPie(QRectF(-1, -1, 2, 2), i * 15 * 16, static_cast<int>(7.5 * 16));
        plate(0.60, 0.02, 0.44);
    }

    void rings() {
        ring(0.965, 0.07, m_ink);
        ring(0.86, 0.05, m_ink);
        ring(0.775, 0.022, m_ink);
        ink(m_accent);
        text(name, 0, -0.38, {0.135, 0.145, 0.34});
        sides(0, 0.46);
        rows(0.30, 4);
    }

    void wing() {
        text(name, 0, -0.44, {0.15, 0.145, 0.34});
        sides(-0.12);
        for (int i = 0; i < 3; ++i) {
            m_painter.setPen(
                QPen(i == 1 ? m_accent : m_ink, 0.075, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
            const double y = 0.20 + i * 0.17;
            const double reach = 0.56 - i * 0.11;
            m_painter.setBrush(Qt::NoBrush);
            const std::array points{QPointF(-reach, y - 0.04), QPointF(-0.16, y), QPointF(0, y + 0.13),
                                    QPointF(0.16, y), QPointF(reach, y - 0.04)};
            m_painter.drawPolyline(points.data(), static_cast<int>(points.size()));
        }
        ring(0.93, 0.008, m_ink);
    }

    void house() {
        finePrintRing(0.915, 0.042);
        m_painter.setPen(QPen(m_ink, 0.085, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
        const std::array roof{QPointF(-0.58, -0.16), QPointF(0, -0.66), QPointF(0.58, -0.16)};
        m_painter.drawPolyline(roof.data(), static_cast<int>(roof.size()));
        m_painter.fillRect(QRectF(0.27, -0.70, 0.10, 0.24), m_ink);
        ink(m_ink);
        text(name, 0, 0.27, {0.15, 0.145, 0.34});
        text(m_speed, -0.56, 0.02, {0.075});
        text(QStringLiteral("1"), 0.56, 0.02, {0.075});
        rows(0.47, 2);
        m_painter.fillRect(QRectF(-0.46, 0.66, 0.92, 0.065), m_ink);
    }

    void deck() {
        finePrintRing(0.915, 0.042);
        text(name, 0, -0.44, {0.15, 0.145, 0.34});
        for (int i = 0; i < 4; ++i) {
            const double y = 0.16 + i * 0.14;
            const double reach = std::sqrt(0.80 * 0.80 - y * y);
            m_painter.fillRect(QRectF(-reach, y, 2 * reach, 0.045 + 0.012 * i), m_accent);
        }
        ink(m_ink);
        sides(-0.12);
    }

    void juke() {
        ring(0.955, 0.016, m_ink);
        ring(0.50, 0.03, m_accent);
        ink(m_ink);
        drawStrokesOnCircle(m_painter, name, 0.73, 0, {0.15, 0.15, 0.34});
        drawStrokesOnCircle(m_painter, QStringLiteral("45"), 0.73, 180, {0.15, 0.15, 0.34}, true);
        for (const int degrees : {90, 270}) {
            drawStrokesOnCircle(m_painter, word(m_disc, degrees), 0.80, degrees, {0.055, 0.14, 0.36});
            drawStrokesOnCircle(m_painter, word(m_disc, degrees + 1) + u' ' + word(m_disc, degrees + 2), 0.69,
                                degrees, {0.045, 0.14, 0.36});
        }
    }

    void print() {
        ring(0.455, 0.005, m_ink);
        ring(0.905, 0.005, m_ink);
        ink(m_ink);
        drawStrokesOnCircle(m_painter, name, 0.80, 0, {0.092, 0.13, 0.36});
        drawStrokesOnCircle(m_painter, QStringLiteral("33 - 45 - 90"), 0.935, 0, {0.026, 0.13, 0.4});
        const auto list = [&](int first, int count) {
            QString line = word(m_disc, first);
            for (int i = 1; i < count; ++i)
                line += QStringLiteral(" - ") + word(m_disc, first + i);
            return line;
        };
        drawStrokesOnCircle(m_painter, list(80, 6), 0.665, 0, {0.03, 0.13, 0.4});
        drawStrokesOnCircle(m_painter, list(90, 4), 0.595, 0, {0.03, 0.13, 0.4});
        drawStrokesOnCircle(m_painter, list(100, 5), 0.93, 180, {0.026, 0.13, 0.4}, true);
        for (int i = 0; i < 5; ++i) {
            const double y = 0.54 + i * 0.055;
            text(word(m_disc, 110 + i), -0.14, y, {0.026, 0.14, 0.4});
            text(word(m_disc, 118 + i), 0.14, y, {0.026, 0.14, 0.4});
        }
    }

    void tapeHub() {
        ring(0.955, 0.03, m_accent);
        ring(0.90, 0.012, m_ink);
        ink(m_ink);
        drawStrokesOnCircle(m_painter, name, 0.735, 0, {0.135, 0.15, 0.34});
        ink(m_accent);
        drawStrokesOnCircle(m_painter, QStringLiteral("90"), 0.735, 180, {0.17, 0.17, 0.34}, true);
        ink(m_ink);
        for (const int degrees : {90, 270})
            drawStrokesOnCircle(m_painter, word(m_disc, degrees), 0.75, degrees, {0.06, 0.14, 0.36});
        ring(0.58, 0.01, m_ink);
    }

    QPainter& m_painter;
    const Disc& m_disc;
    QColor m_paper;
    QColor m_ink;
    QColor m_accent;
    QString m_speed;
};

} // namespace

float labelRadius(const Disc& disc) {
    switch (disc.label.style) {
    case LabelStyle::None:
        return 0;
    case LabelStyle::Print:
        return 1;
    case LabelStyle::TapeHub:
        return 0.29F;
    default:
        return disc.zones.label;
    }
}

QImage labelArt(const Disc& disc) {
    if (disc.label.style == LabelStyle::None)
        return {};
    QImage art(side, side, QImage::Format_ARGB32_Premultiplied);
    art.fill(Qt::transparent);
    QPainter painter(&art);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(side / 2.0, side / 2.0);
    const double unit = static_cast<double>(radiusInPixels * labelRadius(disc));
    painter.scale(unit, unit);
    LabelPainter(painter, disc).paint();
    painter.end();
    return art.convertToFormat(QImage::Format_ARGB32);
}

} // namespace tarnwick::painter
