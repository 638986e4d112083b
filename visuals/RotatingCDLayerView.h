#pragma once

#include "visuals/RotatingCDNSView.h"

namespace tarnwick {

/// The clock's name in QML, which the facility knows nothing of.
struct ClockInQml {
    Q_GADGET
    QML_FOREIGN(tarnwick::animation::Clock)
    QML_ANONYMOUS
};

/// The spinning disc as views use it: it turns while music plays and turning is wanted.
class RotatingCDLayerView : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tarnwick::DiscImage nsImage READ nsImage WRITE setNsImage NOTIFY changed)
    /// The side length, points. The item takes it as its own width and height.
    Q_PROPERTY(double size READ side WRITE setSide NOTIFY changed)
    Q_PROPERTY(bool isPlaying READ isPlaying WRITE setIsPlaying NOTIFY changed)
    Q_PROPERTY(bool rotateCDDuringPlayback READ rotateCDDuringPlayback WRITE setRotateCDDuringPlayback NOTIFY
                   changed)
    /// The clock it turns by; none is the system's.
    Q_PROPERTY(tarnwick::animation::Clock* clock READ clock WRITE setClock NOTIFY changed)

public:
    explicit RotatingCDLayerView(QQuickItem* parent = nullptr);

    void setNsImage(const DiscImage& image);
    void setSide(double side);
    void setIsPlaying(bool playing);
    void setRotateCDDuringPlayback(bool rotate);
    void setClock(animation::Clock* clock);

    const DiscImage& nsImage() const { return m_nsImage; }
    double side() const { return m_side; }
    bool isPlaying() const { return m_isPlaying; }
    bool rotateCDDuringPlayback() const { return m_rotateCDDuringPlayback; }
    animation::Clock* clock() const { return m_clock; }

    /// The view that it owns.
    RotatingCDNSView* view() const { return m_view; }

Q_SIGNALS:
    void changed();
    /// Something to tell on standard output.
    void logLine(const QString& line);

protected:
    void componentComplete() override;
    void geometryChange(const QRectF& now, const QRectF& before) override;

private:
    void apply();

    RotatingCDNSView* m_view;
    DiscImage m_nsImage;
    double m_side = 0;
    bool m_isPlaying = false;
    bool m_rotateCDDuringPlayback = false;
    QPointer<animation::Clock> m_clock;
};

} // namespace tarnwick
