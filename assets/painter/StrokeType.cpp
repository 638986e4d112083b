#include "assets/painter/StrokeType.h"

#include <QHash>
#include <QtMath>

namespace tarnwick::painter {

namespace {

/// Letters stand in a box of height 1 with its top at y = 0.
struct Glyph {
    double width = 0;
    QPainterPath path;
};

void line(QPainterPath& path, std::initializer_list<QPointF> points) {
    bool first = true;
    for (const QPointF& point : points) {
        first ? path.moveTo(point) : path.lineTo(point);
        first = false;
    }
}

/// From `start` degrees, counted against the clock from the right, over `sweep`.
void arc(QPainterPath& path, QRectF box, double start, double sweep) {
    path.arcMoveTo(box, start);
    path.arcTo(box, start, sweep);
}

void bowl(QPainterPath& path, double top, double bottom, double width) {
    const double radius = (bottom - top) / 2;
    line(path, {{0, top}, {width - radius, top}});
    path.arcTo(QRectF(width - 2 * radius, top, 2 * radius, 2 * radius), 90, -180);
    path.lineTo(0, bottom);
}

QHash<QChar, Glyph> letters() {
    QHash<QChar, Glyph> result;
    const auto add = [&](char name, double width, const std::function<void(QPainterPath&)>& draw) {
        Glyph glyph{width, {}};
        draw(glyph.path);
        result.insert(QLatin1Char(name), glyph);
    };
    const auto lines = [&](char name, double width,
                           std::initializer_list<std::initializer_list<QPointF>> strokes) {
        add(name, width, [&](QPainterPath& path) {
            for (const auto& stroke : strokes)
                line(path, stroke);
        });
    };
    lines('T', 0.72, {{{0, 0}, {0.72, 0}}, {{0.36, 0}, {0.36, 1}}});
    lines('A', 0.84, {{{0, 1}, {0.42, 0}, {0.84, 1}}, {{0.14, 0.68}, {0.70, 0.68}}});
    lines('N', 0.74, {{{0, 1}, {0, 0}, {0.74, 1}, {0.74, 0}}});
    lines('W', 1.16, {{{0, 0}, {0.28, 1}, {0.58, 0.06}, {0.88, 1}, {1.16, 0}}});
    lines('I', 0, {{{0, 0}, {0, 1}}});
    lines('K', 0.66, {{{0, 0}, {0, 1}}, {{0.62, 0}, {0, 0.62}}, {{0.20, 0.42}, {0.66, 1}}});
    lines('L', 0.56, {{{0, 0}, {0, 1}, {0.56, 1}}});
    lines('M', 0.92, {{{0, 1}, {0, 0}, {0.46, 0.72}, {0.92, 0}, {0.92, 1}}});
    lines('F', 0.58, {{{0.58, 0}, {0, 0}, {0, 1}}, {{0, 0.49}, {0.48, 0.49}}});
    lines('V', 0.84, {{{0, 0}, {0.42, 1}, {0.84, 0}}});
    lines('1', 0.26, {{{0, 0.20}, {0.26, 0}, {0.26, 1}}});
    lines('4', 0.70, {{{0.52, 1}, {0.52, 0}, {0, 0.70}, {0.70, 0.70}}});
    lines('-', 0.34, {{{0, 0.54}, {0.34, 0.54}}});
    lines(' ', 0.20, {});
    add('R', 0.62, [](QPainterPath& path) {
        bowl(path, 0, 0.54, 0.60);
        line(path, {{0, 0}, {0, 1}});
        line(path, {{0.30, 0.54}, {0.64, 1}});
    });
    add('P', 0.62, [](QPainterPath& path) {
        bowl(path, 0, 0.56, 0.62);
        line(path, {{0, 0}, {0, 1}});
    });
    add('C', 0.80, [](QPainterPath& path) { arc(path, QRectF(0, 0, 1, 1), 48, 264); });
    add('3', 0.56, [](QPainterPath& path) {
        arc(path, QRectF(0.02, 0, 0.48, 0.48), 150, -240);
        arc(path, QRectF(0, 0.48, 0.56, 0.52), 90, -240);
    });
    add('5', 0.58, [](QPainterPath& path) {
        line(path, {{0.52, 0}, {0.09, 0}, {0.05, 0.44}});
        path.arcTo(QRectF(-0.03, 0.37, 0.62, 0.63), 125, -260);
    });
    add('9', 0.58, [](QPainterPath& path) {
        path.addEllipse(QRectF(0, 0, 0.58, 0.58));
        arc(path, QRectF(-0.30, -0.30, 0.88, 1.30), 0, -52);
    });
    add('0', 0.60, [](QPainterPath& path) { path.addEllipse(QRectF(0, 0, 0.60, 1)); });
    return result;
}

const Glyph& glyphOf(QChar character) {
    static const QHash<QChar, Glyph> table = letters();
    static const Glyph none;
    const auto found = table.constFind(character);
    return found == table.cend() ? none : *found;
}

/// Pairs that would gape.
double kerning(QChar left, QChar right) {
    const QString pair = QString(left) + right;
    if (pair == QLatin1String("TA") || pair == QLatin1String("AT") || pair == QLatin1String("AV"))
        return -0.20;
    if (pair == QLatin1String("WA") || pair == QLatin1String("AW") || pair == QLatin1String("LA"))
        return pair == QLatin1String("LA") ? -0.06 : -0.15;
    return 0;
}

/// Where each letter begins, and after them the whole width; in heights.
QList<double> places(const QString& text, double tracking) {
    QList<double> result;
    double x = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (i > 0)
            x += tracking + kerning(text[i - 1], text[i]);
        result.append(x);
        x += glyphOf(text[i]).width;
    }
    result.append(x);
    return result;
}

QPen penOf(const QPainter& painter, const StrokeType& type) {
    return {painter.pen().color(), type.height * type.weight, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
}

} // namespace

double strokeWidth(const QString& text, const StrokeType& type) {
    return places(text, type.tracking).last() * type.height;
}

QPainterPath strokePath(const QString& text, const StrokeType& type) {
    const QList<double> x = places(text, type.tracking);
    QPainterPath result;
    for (qsizetype i = 0; i < text.size(); ++i) {
        QTransform place;
        place.scale(type.height, type.height);
        place.translate(x[i] - x.last() / 2, -0.5);
        result.addPath(place.map(glyphOf(text[i]).path));
    }
    return result;
}

void drawStrokes(QPainter& painter, const QString& text, QPointF centre, const StrokeType& type) {
    painter.save();
    painter.translate(centre);
    painter.strokePath(strokePath(text, type), penOf(painter, type));
    painter.restore();
}

void drawStrokesOnCircle(QPainter& painter, const QString& text, double radius, double degrees,
                         const StrokeType& type, bool inwards) {
    const QList<double> x = places(text, type.tracking);
    for (qsizetype i = 0; i < text.size(); ++i) {
        const Glyph& glyph = glyphOf(text[i]);
        const double middle = (x[i] + glyph.width / 2 - x.last() / 2) * type.height;
        const double angle = qRadiansToDegrees(middle / radius);
        painter.save();
        painter.rotate(inwards ? degrees + 180 - angle : degrees + angle);
        painter.translate(0, inwards ? radius : -radius);
        painter.scale(type.height, type.height);
        painter.translate(-glyph.width / 2, -0.5);
        QPen pen = penOf(painter, type);
        pen.setWidthF(type.weight);
        painter.strokePath(glyph.path, pen);
        painter.restore();
    }
}

} // namespace tarnwick::painter
