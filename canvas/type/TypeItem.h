#pragma once

#include "canvas/PictureItem.h"

#include <QColor>
#include <QFont>

namespace tarnwick {

/// A line of text, painted by the processor at device pixels with grey edges, so that it has the same ink in
/// every renderer. It is painted anew when something about it changes; while it is moved its picture moves.
///
/// It is as wide as the text and 1.21 times as high as its type is large, whatever the script. Its parent
/// stands on whole device pixels when it rests; the item itself may stand between two.
class TypeItem : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    /// Its size is in points, as `typeSize` reads it.
    Q_PROPERTY(QFont font READ font WRITE setFont NOTIFY fontChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)
    /// Device pixels of a point.
    Q_PROPERTY(double pixelRatio READ pixelRatio WRITE setPixelRatio NOTIFY pixelRatioChanged)
    /// The text ends with "…" where it is wider than the item.
    Q_PROPERTY(bool elides READ elides WRITE setElides NOTIFY elidesChanged)
    /// Figures and colons stand in cells of one width each, so that they keep their places whatever they are.
    Q_PROPERTY(bool inCells READ inCells WRITE setInCells NOTIFY inCellsChanged)
    /// How far colons stand above the baseline, points; for `inCells`.
    Q_PROPERTY(double raise READ raise WRITE setRaise NOTIFY raiseChanged)

public:
    /// Of the type's size: how high a line is, and how far below its top the baseline lies.
    static constexpr double lineHeight = 1.21;
    static constexpr double ascent = 0.96875;

    explicit TypeItem(QQuickItem* parent = nullptr);

    void setText(const QString& text) { assign(m_text, text, &TypeItem::textChanged); }
    void setFont(const QFont& font) { assign(m_font, font, &TypeItem::fontChanged); }
    void setColor(const QColor& color) { assign(m_color, color, &TypeItem::colorChanged); }
    void setPixelRatio(double ratio) { assign(m_pixelRatio, ratio, &TypeItem::pixelRatioChanged); }
    void setElides(bool elides) { assign(m_elides, elides, &TypeItem::elidesChanged); }
    void setInCells(bool cells) { assign(m_inCells, cells, &TypeItem::inCellsChanged); }
    void setRaise(double raise) { assign(m_raise, raise, &TypeItem::raiseChanged); }

    const QString& text() const { return m_text; }
    const QFont& font() const { return m_font; }
    const QColor& color() const { return m_color; }
    double pixelRatio() const { return m_pixelRatio; }
    bool elides() const { return m_elides; }
    bool inCells() const { return m_inCells; }
    double raise() const { return m_raise; }

    /// How often it was painted so far.
    int paintCount() const { return m_paintCount; }

Q_SIGNALS:
    void textChanged();
    void fontChanged();
    void colorChanged();
    void pixelRatioChanged();
    void elidesChanged();
    void inCellsChanged();
    void raiseChanged();

protected:
    void componentComplete() override;
    void geometryChange(const QRectF& now, const QRectF& before) override;
    void updatePolish() override;

private:
    /// A piece of the text and where it begins on its baseline, device pixels from the item's own beginning.
    struct Run {
        QString text;
        QPointF at;
    };

    template <typename T>
    void assign(T& field, const T& value, void (TypeItem::*changed)()) {
        if (field == value)
            return;
        field = value;
        m_isStale = true;
        measure();
        polish();
        Q_EMIT(this->*changed)();
    }

    void measure();
    std::vector<Run> runs(const QFont& deviceFont) const;
    void paint();

    PictureItem* const m_picture;
    QString m_text;
    QFont m_font;
    QColor m_color{Qt::black};
    double m_pixelRatio = 1;
    bool m_elides = false;
    bool m_inCells = false;
    double m_raise = 0;
    bool m_isStale = true;
    QPointF m_paintedOff; ///< how far the beginning lay from a whole device pixel when it was painted
    int m_paintCount = 0;
};

} // namespace tarnwick
