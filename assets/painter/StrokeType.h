#pragma once

#include <QPainter>
#include <QPainterPath>
#include <QString>

namespace tarnwick::painter {

/// Capitals and figures of single strokes with round ends, so that labels and logos need no font.
/// The origin is the middle of the line, all lengths are in units of the drawing.
struct StrokeType {
    double height;
    double weight = 0.14;   ///< of the strokes, as a fraction of the height
    double tracking = 0.34; ///< between letters, as a fraction of the height
};

/// How wide `text` is.
double strokeWidth(const QString& text, const StrokeType& type);

/// The strokes of `text`, centred round (0, 0).
QPainterPath strokePath(const QString& text, const StrokeType& type);

/// Draws `text` centred round `centre`.
void drawStrokes(QPainter& painter, const QString& text, QPointF centre, const StrokeType& type);

/// Draws `text` along the circle of `radius` round the origin, its middle at `degrees` clockwise from
/// the top, readable from the inside when `inwards`.
void drawStrokesOnCircle(QPainter& painter, const QString& text, double radius, double degrees,
                         const StrokeType& type, bool inwards = false);

} // namespace tarnwick::painter
