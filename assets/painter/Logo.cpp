#include "assets/painter/Logo.h"

#include "assets/painter/StrokeType.h"

namespace tarnwick::painter {

namespace {

// In hundredths of the size of the text that the logo stands among.
constexpr double height = 172;
constexpr double stroke = 9;
constexpr double corner = 28;
constexpr double padding = 44;
constexpr StrokeType type{74, 0.20, 0.40};

QByteArray number(double value) { return QByteArray::number(value, 'f', 2); }

/// The `d` of an SVG path.
QByteArray pathData(const QPainterPath& path) {
    QByteArray data;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        const char* command = " ";
        if (element.type == QPainterPath::MoveToElement)
            command = "M";
        else if (element.type == QPainterPath::LineToElement)
            command = "L";
        else if (element.type == QPainterPath::CurveToElement)
            command = "C";
        data += command + number(element.x) + ' ' + number(element.y);
    }
    return data;
}

} // namespace

QByteArray logoSvg(const QString& format, const QString& colour) {
    const double width = std::ceil(strokeWidth(format, type) + type.height * type.weight + 2 * padding);
    QPainterPath text = strokePath(format, type);
    text.translate(width / 2, height / 2);
    QByteArray svg = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + number(width) + "\" height=\"" +
                     number(height) + "\" viewBox=\"0 0 " + number(width) + ' ' + number(height) +
                     "\">\n<g fill=\"none\" stroke=\"" + colour.toLatin1() +
                     "\" stroke-linecap=\"round\" stroke-linejoin=\"round\">\n";
    svg += "<rect x=\"" + number(stroke / 2) + "\" y=\"" + number(stroke / 2) + "\" width=\"" +
           number(width - stroke) + "\" height=\"" + number(height - stroke) + "\" rx=\"" + number(corner) +
           "\" stroke-width=\"" + number(stroke) + "\"/>\n";
    svg +=
        "<path stroke-width=\"" + number(type.height * type.weight) + "\" d=\"" + pathData(text) + "\"/>\n";
    return svg + "</g>\n</svg>\n";
}

} // namespace tarnwick::painter
