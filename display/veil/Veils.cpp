#include "display/veil/Veils.h"

#include "display/panel/Legibility.h"
#include "display/pictures/Picture.h"
#include "display/veil/DiscProfile.h"
#include "display/veil/VeilPainter.h"

#include <algorithm>
#include <cmath>

namespace tarnwick {

namespace {

constexpr double step = 2;         // points between the blocks that are looked at
constexpr double block = 4;        // side of a block
constexpr double reserve = 1.1;    // times the contrast that is needed
constexpr double reach = 0.2;      // of the window's height: how far a veil fades out
constexpr double panelAlpha = 0.7; // of the black behind the rows of the list
constexpr double rowTint = 0.1;    // alpha of the first colour behind a row
constexpr double rowRatio = 4.5;
constexpr double shadowAlpha = 0.25; // of the cover's shadow at its edge
constexpr double shadowReach = 4;

/// A picture that fills a rectangle of the window, as the mean colours of its blocks.
class Blocks {
public:
    Blocks() = default;
    Blocks(const std::optional<images::Image>& picture, const QRectF& place) : m_place(place) {
        if (!picture || place.isEmpty())
            return;
        const QSize size(qMax(1, qRound(place.width() / step)), qMax(1, qRound(place.height() / step)));
        m_pixels = fitted(Catalogue::shared(), picture, size);
    }

    bool isEmpty() const { return m_pixels.isNull(); }

    /// Whether a block in the middle of which `point` lies shows some of the picture.
    bool reaches(const QPointF& point) const {
        const double half = block / 2;
        return !isEmpty() && m_place.adjusted(-half, -half, half, half).contains(point);
    }

    /// The mean of that block over `ground`.
    Colour at(const QPointF& point, const Colour& ground) const {
        const QPointF position = (point - m_place.topLeft()) / step;
        double red = 0;
        double green = 0;
        double blue = 0;
        for (int dy = -1; dy <= 0; ++dy) {
            for (int dx = -1; dx <= 0; ++dx) {
                const QRgb pixel = reinterpret_cast<const QRgb*>(m_pixels.constScanLine(std::clamp(
                    qRound(position.y()) + dy, 0,
                    m_pixels.height() - 1)))[std::clamp(qRound(position.x()) + dx, 0, m_pixels.width() - 1)];
                const double rest = 255 - qAlpha(pixel);
                red += qRed(pixel) + rest * ground.red;
                green += qGreen(pixel) + rest * ground.green;
                blue += qBlue(pixel) + rest * ground.blue;
            }
        }
        constexpr double whole = 4 * 255;
        return {red / whole, green / whole, blue / whole, 1};
    }

private:
    QRectF m_place;
    QImage m_pixels;
};

/// Finds what each surface needs, back to front.
class Maker {
public:
    explicit Maker(const VeilScene& scene)
        : m_scene(scene), m_base(scene.text == colours::black ? colours::white : colours::black),
          m_tint(scene.background.empty() ? m_base : scene.background.front()),
          m_veil(veilColour(m_tint, scene.text)),
          m_columns(static_cast<int>(std::ceil(scene.window.width() / step))),
          m_rows(static_cast<int>(std::ceil(scene.window.height() / step))),
          m_logo(scene.logo, QRectF(QPointF(), scene.window)),
          m_cassette(scene.cassette, scene.cassettePlace), m_cover(scene.cover, scene.coverPlace),
          m_background(scene.window), m_record(scene.window), m_front(scene.window) {
        gatherRatios();
        if (!scene.cassette && !scene.record.isNull())
            m_disc = profileOf(scene.record);
    }

    Veils make();

private:
    DiscProfile profileOf(const DiscImage& record) const;
    void gatherRatios();
    template <typename Need>
    void forEachBlock(VeilField& field, Need need);
    Colour backgroundAt(const QPointF& point) const;
    Colour veiledBackgroundAt(const QPointF& point) const {
        return mixed(backgroundAt(point), m_veil, m_background.at(point.x(), point.y()));
    }
    Colour shadeAt(const QPointF& point) const;
    double needOf(const Colour& under, double ratio, const Colour& over) const {
        return neededAlpha(m_scene.text, under, m_veil, ratio, over);
    }
    double rowAlpha() const;
    double distanceToRecord(const QPointF& point) const {
        return std::hypot(point.x() - m_scene.recordCentre.x(), point.y() - m_scene.recordCentre.y());
    }
    QRectF recordPlace() const {
        const double radius = m_scene.recordDiameter / 2;
        return {m_scene.recordCentre - QPointF(radius, radius), QSizeF(2 * radius, 2 * radius)};
    }

    const VeilScene& m_scene;
    const Colour m_base;
    const Colour m_tint;
    const Colour m_veil;
    const int m_columns;
    const int m_rows;
    std::vector<float> m_ratios; // by block; 0 where there is no line
    const Blocks m_logo;
    const Blocks m_cassette;
    const Blocks m_cover;
    DiscProfile m_disc;
    VeilField m_background;
    VeilField m_record;
    VeilField m_front;
};

DiscProfile Maker::profileOf(const DiscImage& record) const {
    const std::shared_ptr<const QImage> picture =
        record.render(static_cast<int>(m_scene.recordDiameter / step));
    if (!picture)
        return {};
    std::vector<Colour> grounds;
    for (const double fraction : {0.1, 0.5, 0.9}) {
        const Colour ground = backgroundAt({m_scene.recordCentre.x(), fraction * m_scene.window.height()});
        if (std::find(grounds.begin(), grounds.end(), ground) == grounds.end())
            grounds.push_back(ground);
    }
    return {*picture, m_scene.recordDiameter, m_scene.text, grounds};
}

void Maker::gatherRatios() {
    m_ratios.assign(static_cast<size_t>(m_columns) * static_cast<size_t>(m_rows), 0.0F);
    for (const VeilLine& line : m_scene.lines) {
        const int left = std::max(0, static_cast<int>(line.box.left() / step) - 1);
        const int top = std::max(0, static_cast<int>(line.box.top() / step) - 1);
        const int right = std::min(m_columns - 1, static_cast<int>(line.box.right() / step));
        const int bottom = std::min(m_rows - 1, static_cast<int>(line.box.bottom() / step));
        for (int row = top; row <= bottom; ++row) {
            for (int column = left; column <= right; ++column) {
                float& ratio = m_ratios[static_cast<size_t>(row) * static_cast<size_t>(m_columns) +
                                        static_cast<size_t>(column)];
                ratio = std::max(ratio, static_cast<float>(line.ratio * reserve));
            }
        }
    }
}

/// Calls `need` with the middle of each block under a line and its ratio, and gives `field` what it returns.
template <typename Need>
void Maker::forEachBlock(VeilField& field, Need need) {
    for (int row = 0; row < m_rows; ++row) {
        for (int column = 0; column < m_columns; ++column) {
            const double ratio = m_ratios[static_cast<size_t>(row) * static_cast<size_t>(m_columns) +
                                          static_cast<size_t>(column)];
            if (ratio <= 0)
                continue;
            const QPointF middle((column + 1) * step, (row + 1) * step);
            if (const double alpha = need(middle, ratio); alpha > 0)
                field.need(static_cast<int>(middle.x() / VeilField::cell),
                           static_cast<int>(middle.y() / VeilField::cell), alpha);
        }
    }
    field.spread(reach * m_scene.window.height());
}

Colour Maker::backgroundAt(const QPointF& point) const {
    if (!m_logo.isEmpty())
        return m_logo.at(point, m_base);
    return gradientAt(m_scene.background, m_base, point.y() / std::max(1.0, m_scene.window.height()));
}

/// The shadow that the cover throws to its right.
Colour Maker::shadeAt(const QPointF& point) const {
    const double distance = point.x() - block / 2 - m_scene.coverPlace.right();
    if (m_cover.isEmpty() || distance < -block || distance > shadowReach ||
        std::abs(point.y() - m_scene.coverPlace.center().y()) > m_scene.coverPlace.height() / 2 + shadowReach)
        return {0, 0, 0, 0};
    return {0, 0, 0, shadowAlpha * (1 - std::max(0.0, distance) / shadowReach)};
}

double Maker::rowAlpha() const {
    constexpr double stride = 8;
    const Colour over{m_tint.red, m_tint.green, m_tint.blue, rowTint};
    double alpha = 0;
    const auto consider = [&](const Colour& under) {
        alpha = std::max(alpha, needOf(mixed(under, colours::black, panelAlpha), rowRatio * reserve, over));
    };
    for (double y = m_scene.list.top(); y < m_scene.list.bottom(); y += stride) {
        const Colour ground = backgroundAt({m_scene.list.center().x(), y});
        consider(ground);
        if (!m_disc.isEmpty())
            consider(m_disc.worstOfAll(ground));
        for (double x = m_scene.list.left(); !m_cassette.isEmpty() && x < m_scene.list.right(); x += stride) {
            if (m_cassette.reaches({x, y}))
                consider(m_cassette.at({x, y}, ground));
        }
    }
    return alpha;
}

Veils Maker::make() {
    forEachBlock(m_background, [this](const QPointF& point, double ratio) {
        return needOf(backgroundAt(point), ratio, shadeAt(point));
    });
    forEachBlock(m_record, [this](const QPointF& point, double ratio) {
        const double distance = distanceToRecord(point);
        if (m_disc.reaches(distance))
            return needOf(m_disc.worst(distance, veiledBackgroundAt(point)), ratio, shadeAt(point));
        if (m_cassette.reaches(point))
            return needOf(m_cassette.at(point, veiledBackgroundAt(point)), ratio, shadeAt(point));
        return 0.0;
    });
    forEachBlock(m_front, [this](const QPointF& point, double ratio) {
        return m_cover.reaches(point)
                   ? needOf(m_cover.at(point, veiledBackgroundAt(point)), ratio, {0, 0, 0, 0})
                   : 0.0;
    });

    Veils veils;
    veils.colour = m_veil;
    const QRectF window(QPointF(), m_scene.window);
    constexpr double finestBackground = 2; // it has no outline, so that more pixels would show nothing more
    veils.background =
        paintVeil(m_background, m_veil, window, {}, std::min(m_scene.pixelRatio, finestBackground));
    if (!m_cassette.isEmpty()) {
        const QRectF place = m_scene.cassettePlace;
        veils.record =
            paintVeil(m_record, m_veil, place, {.picture = m_scene.cassette->pixels()}, m_scene.pixelRatio);
    } else if (!m_disc.isEmpty()) {
        veils.record = paintVeil(m_record, m_veil, recordPlace(), {.radius = m_disc.radius(), .round = true},
                                 m_scene.pixelRatio);
    }
    veils.cover =
        paintVeil(m_front, m_veil, m_scene.coverPlace, {.radius = m_scene.coverRadius}, m_scene.pixelRatio);
    if (!m_scene.list.isEmpty())
        veils.rowAlpha = rowAlpha();
    return veils;
}

} // namespace

Colour gradientAt(const std::vector<Colour>& background, const Colour& base, double fraction) {
    if (background.empty())
        return base;
    const double position = std::clamp(fraction, 0.0, 1.0) * static_cast<double>(background.size() - 1);
    const auto first = std::min(static_cast<size_t>(position), background.size() - 1);
    const size_t second = std::min(first + 1, background.size() - 1);
    const double part = position - static_cast<double>(first);
    Colour colour = mixed(background[first], background[second], part);
    colour.alpha = background[first].alpha + part * (background[second].alpha - background[first].alpha);
    return mixed(base, colour, colour.alpha);
}

Veils makeVeils(const VeilScene& scene) {
    if (scene.window.isEmpty())
        return {};
    return Maker(scene).make();
}

} // namespace tarnwick
