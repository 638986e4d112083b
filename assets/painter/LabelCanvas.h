#pragma once

#include "assets/painter/DiscTable.h"
#include "assets/painter/StrokeType.h"

#include <QColor>
#include <QPainter>
#include <QString>

#include <cstdint>

namespace tarnwick::painter {

/// What all labels are made of: circles, type and fine print. The unit is the label's radius, the origin its
/// middle, so that a style fits every size. Type is drawn with the painter's pen.
class LabelCanvas {
public:
    /// `painter` is scaled to that unit and outlives this object.
    LabelCanvas(QPainter& painter, const Disc& disc);

    void setPen(const QColor& colour) { m_painter.setPen(colour); }

    /// A filled circle. Leaves no pen.
    void circle(double radius, const QColor& colour);
    /// Its line is `width` wide and the pen afterwards.
    void ring(double radius, double width, const QColor& colour);
    /// A line of type centred round (x, y).
    void text(const QString& what, double x, double y, const StrokeType& type);
    /// As `drawStrokesOnCircle`.
    void textOnCircle(const QString& what, double radius, double degrees, const StrokeType& type,
                      bool inwards = false);

    /// Fine print all the way round.
    void finePrintRing(double radius, double height);
    /// `count` lines of fine print round `x`, the words from number `first` on.
    void rows(double top, int count, double height = 0.05, double x = 0, int first = 44);
    /// The speed to the left of the hole, the side's number to the right, `x` away from it.
    void sides(double y, double x = 0.56);
    /// A round plate in the middle that bears the type where the rest is a pattern.
    void plate(double radius, double edge, double nameRadius);

    /// Whether the paper is so dark that its edge is lost on a dark disc.
    bool isDark() const;
    /// Of dark paper: how it looks from its side, where light falls on it.
    QColor edge() const;
    /// The paper's colour or the ink's, whichever can be read better on `ground`.
    const QColor& readableOn(const QColor& ground) const;

    QPainter& painter() { return m_painter; }
    const QColor& paper() const { return m_paper; }
    const QColor& ink() const { return m_ink; }
    const QColor& accent() const { return m_accent; }
    /// In revolutions a minute, as printed.
    const QString& speed() const { return m_speed; }
    /// Of the company.
    static QString name() { return QStringLiteral("TARNWICK"); }
    /// A word of the fine print; neighbours are never the same.
    QString word(int index) const;

private:
    QPainter& m_painter;
    std::uint32_t m_seed;
    QColor m_paper;
    QColor m_ink;
    QColor m_accent;
    QString m_speed;
};

} // namespace tarnwick::painter
