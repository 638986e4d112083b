#include "visuals/DiscImage.h"

#include <QPainter>
#include <QPainterPath>

namespace tarnwick {

namespace {

/// `picture` stretched to `size`. The scaler wants premultiplied pixels and would convert by itself, but
/// after scaling, where clear pixels have already bled into their neighbours.
QImage stretched(const QImage& picture, QSize size) {
    return picture.convertToFormat(QImage::Format_ARGB32_Premultiplied)
        .scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

/// Fills `shape` of `target` with `picture`, whose top left corner lies at `origin`.
void fillWith(QImage& target, const QPainterPath& shape, const QImage& picture, QPointF origin) {
    QPainter painter(&target);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setPen(Qt::NoPen);
    QBrush brush(picture);
    brush.setTransform(QTransform::fromTranslate(origin.x(), origin.y()));
    painter.setBrush(brush);
    painter.drawPath(shape);
}

QPainterPath circle(QPointF centre, double radius) {
    QPainterPath path;
    path.addEllipse(centre, radius, radius);
    return path;
}

} // namespace

struct DiscImage::Content {
    virtual ~Content() = default;
    virtual QString name() const { return {}; }
    virtual std::shared_ptr<const QImage> render(int side) const = 0;
    virtual bool equals(const Content& other) const = 0;
};

namespace {

using Rendered = std::shared_ptr<const QImage>;

} // namespace

DiscImage DiscImage::named(const Catalogue& catalogue, const QString& name) {
    struct Named : Content {
        Named(const Catalogue& c, QString n) : catalogue(c), title(std::move(n)) {}
        QString name() const override { return title; }
        Rendered render(int side) const override { return catalogue.picture(title, QSize(side, side)); }
        bool equals(const Content& other) const override {
            const auto* same = dynamic_cast<const Named*>(&other);
            return same && same->title == title;
        }
        const Catalogue& catalogue;
        const QString title;
    };
    return catalogue.contains(name) ? DiscImage(std::make_shared<Named>(catalogue, name)) : DiscImage();
}

DiscImage DiscImage::of(const images::Image& picture) {
    struct Foreign : Content {
        explicit Foreign(images::Image p) : picture(std::move(p)) {}
        Rendered render(int side) const override {
            const QImage pixels = picture.pixels();
            if (pixels.isNull())
                return nullptr;
            QImage disc(side, side, QImage::Format_ARGB32_Premultiplied);
            disc.fill(Qt::transparent);
            fillWith(disc, circle({side / 2.0, side / 2.0}, side / 2.0 - 1), stretched(pixels, disc.size()),
                     {});
            return std::make_shared<const QImage>(disc);
        }
        bool equals(const Content& other) const override {
            const auto* same = dynamic_cast<const Foreign*>(&other);
            return same && same->picture == picture;
        }
        const images::Image picture;
    };
    return DiscImage(std::make_shared<Foreign>(picture));
}

DiscImage DiscImage::printed(const DiscImage& base, const images::Image& cover, const RecordPrint& print) {
    struct Printed : Content {
        Printed(DiscImage b, images::Image c, const RecordPrint& p)
            : base(std::move(b)), cover(std::move(c)), print(p) {}
        Rendered render(int side) const override {
            const Rendered disc = base.render(side);
            if (!disc)
                return nullptr;
            const QImage pixels = cover.pixels();
            const double scale = side / print.side;
            const double outer = side / 2.0 - print.inset * scale;
            if (pixels.isNull() || outer <= 0)
                return disc;
            const QPointF centre(side / 2.0, side / 2.0);
            QPainterPath ring = circle(centre, outer);
            ring.addPath(circle(centre, print.holeRadius * scale));
            const int extent = qCeil(2 * outer);
            QImage result = *disc;
            fillWith(result, ring, stretched(pixels, {extent, extent}),
                     {side / 2.0 - extent / 2.0, side / 2.0 - extent / 2.0});
            return std::make_shared<const QImage>(result);
        }
        bool equals(const Content& other) const override {
            const auto* same = dynamic_cast<const Printed*>(&other);
            return same && same->base == base && same->cover == cover && same->print == print;
        }
        const DiscImage base;
        const images::Image cover;
        const RecordPrint print;
    };
    return base.isNull() ? DiscImage() : DiscImage(std::make_shared<Printed>(base, cover, print));
}

QString DiscImage::name() const { return m_content ? m_content->name() : QString(); }

std::shared_ptr<const QImage> DiscImage::render(int side) const {
    return m_content && side >= smallestSide ? m_content->render(side) : nullptr;
}

DiscImage DiscImage::with(const std::shared_ptr<const QImage>& rendering) const {
    DiscImage disc = *this;
    disc.m_rendering = rendering;
    return disc;
}

std::shared_ptr<const QImage> DiscImage::rendering(int side) const {
    auto rendering = m_rendering.lock();
    return rendering && rendering->width() == side ? rendering : nullptr;
}

bool DiscImage::operator==(const DiscImage& other) const {
    if (m_content == other.m_content)
        return true;
    return m_content && other.m_content && m_content->equals(*other.m_content);
}

} // namespace tarnwick
