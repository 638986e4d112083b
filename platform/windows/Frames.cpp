#include "platform/windows/Frames.h"

#include <algorithm>
#include <limits>

namespace tarnwick::windows {

namespace {

/// This much of a window must be on a screen, in pixels each way, so that it can be seen and dragged.
constexpr int leastVisible = 64;

bool isReachable(const QRect& rectangle, const QRect& screen) {
    const QRect seen = rectangle & screen;
    return seen.width() >= std::min(leastVisible, rectangle.width()) &&
           seen.height() >= std::min(leastVisible, rectangle.height());
}

qint64 distanceSquared(const QRect& a, const QRect& b) {
    const QPoint between = a.center() - b.center();
    return qint64{between.x()} * between.x() + qint64{between.y()} * between.y();
}

/// The screen that holds most of the rectangle; when none holds any, the nearest one.
QRect screenOf(const QRect& rectangle, const QList<QRect>& screens) {
    const auto area = [&](const QRect& screen) {
        const QRect seen = rectangle & screen;
        return seen.isEmpty() ? qint64{0} : qint64{seen.width()} * seen.height();
    };
    return *std::max_element(screens.begin(), screens.end(), [&](const QRect& a, const QRect& b) {
        const qint64 first = area(a), second = area(b);
        return first != second ? first < second
                               : distanceSquared(rectangle, a) > distanceSquared(rectangle, b);
    });
}

QSize fitted(QSize size, QSize bounds) {
    if (size.width() <= bounds.width() && size.height() <= bounds.height())
        return size;
    return size.scaled(bounds, Qt::KeepAspectRatio);
}

} // namespace

QRectF frameFromRectangle(const QRect& rectangle, const QRect& firstScreen) {
    const int lowerEdge = firstScreen.y() + firstScreen.height();
    return {double(rectangle.x()), double(lowerEdge - rectangle.y() - rectangle.height()),
            double(rectangle.width()), double(rectangle.height())};
}

QRect rectangleFromFrame(const QRectF& frame, const QRect& firstScreen) {
    // A file may hold anything; what is no place on any screen is brought onto one later.
    const auto whole = [](double value) {
        constexpr double limit = 1 << 24;
        return value >= -limit && value <= limit ? qRound(value) : 0;
    };
    const int lowerEdge = firstScreen.y() + firstScreen.height();
    const QSize size(std::max(1, whole(frame.width())), std::max(1, whole(frame.height())));
    return {QPoint(whole(frame.x()), lowerEdge - whole(frame.y()) - size.height()), size};
}

QRect broughtOntoScreen(const QRect& rectangle, const QList<QRect>& screens) {
    const QRect whole = whollyOnScreen(rectangle, screens);
    if (!screens.isEmpty() && whole.size() == rectangle.size() &&
        isReachable(rectangle, screenOf(rectangle, screens)))
        return rectangle;
    return whole;
}

QRect whollyOnScreen(const QRect& rectangle, const QList<QRect>& screens) {
    if (screens.isEmpty())
        return rectangle;
    const QRect screen = screenOf(rectangle, screens);
    QRect result(rectangle.topLeft(), fitted(rectangle.size(), screen.size()));
    result.moveLeft(std::clamp(result.x(), screen.x(), screen.x() + screen.width() - result.width()));
    result.moveTop(std::clamp(result.y(), screen.y(), screen.y() + screen.height() - result.height()));
    return result;
}

QRect centred(QSize size, const QRect& bounds) {
    QRect result(QPoint(), fitted(size, bounds.size()));
    result.moveCenter(bounds.center());
    return result;
}

QSize inProportion(QSize size, QSize previous, QSize ratio, QSize bounds) {
    const auto heightFor = [&](int width) {
        return std::max(1, int(qint64{width} * ratio.height() / ratio.width()));
    };
    const auto widthFor = [&](int height) {
        return std::max(1, int(qint64{height} * ratio.width() / ratio.height()));
    };
    const bool widthLeads = std::abs(size.width() - previous.width()) * ratio.height() >=
                            std::abs(size.height() - previous.height()) * ratio.width();
    const QSize result = widthLeads ? QSize(size.width(), heightFor(size.width()))
                                    : QSize(widthFor(size.height()), size.height());
    return fitted(result, bounds);
}

} // namespace tarnwick::windows
