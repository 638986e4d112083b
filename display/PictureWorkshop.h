#pragma once

#include "assets/Catalogue.h"
#include "display/Picture.h"
#include "platform/dispatch/Dispatcher.h"

#include <QColor>
#include <QImage>
#include <QObject>
#include <QPointF>
#include <QtQmlIntegration>

#include <functional>
#include <memory>

namespace tarnwick {

/// How a picture is cut out and what shadow it throws. Lengths in device pixels.
struct PictureCut {
    QSize size;              ///< of the picture itself
    double cornerRadius = 0; ///< at least half the smaller side gives an ellipse
    double shadowOpacity = 0;
    double shadowRadius = 0;
    QPointF shadowOffset;

    /// What the shadow needs around the picture, on every side, and one clear pixel.
    int margin() const;

    friend bool operator==(const PictureCut&, const PictureCut&) = default;
};

/// Makes pictures for the screen off the main thread. Main thread only, except where it says otherwise.
class PictureWorkshop : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("There is one, and it is handed in")

public:
    using Paint = std::function<QImage()>;
    using Done = std::function<void(const QImage&)>;

    /// Both must outlive the workshop.
    PictureWorkshop(dispatch::Dispatcher& dispatcher, const Catalogue& catalogue);
    ~PictureWorkshop() override;

    /// Runs `paint` on another thread and then `done` on the main thread with what it returned.
    void make(Paint paint, Done done);

    /// Runs `task` on the main thread after `delay`.
    dispatch::WorkItem later(dispatch::Duration delay, dispatch::Task task);

    /// Whether nothing is being made.
    bool isIdle() const { return m_pending == 0; }

    dispatch::Dispatcher& dispatcher() { return m_dispatcher; }

    /// The picture at exactly `size` device pixels, premultiplied; the catalogue's are drawn in that size.
    /// Null when it is none or broken. Any thread, but not the main one: it may take long.
    static QImage fitted(const Catalogue& catalogue, const Picture& picture, QSize size);

    /// `picture`, which has the cut's size, cut out and with its shadow. Larger by the margin on every side.
    /// Any thread.
    static QImage cut(const QImage& picture, const PictureCut& how);

    const Catalogue& catalogue() const { return m_catalogue; }

private:
    dispatch::Dispatcher& m_dispatcher;
    const Catalogue& m_catalogue;
    std::shared_ptr<PictureWorkshop*> m_self = std::make_shared<PictureWorkshop*>(this);
    int m_pending = 0;
};

} // namespace tarnwick
