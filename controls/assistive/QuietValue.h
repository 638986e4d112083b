#pragma once

#include <QQuickItem>

namespace tarnwick {

/// Something with a value that assistive technology may ask for and set, and whose changes are not announced,
/// like a position that goes on by itself.
class QuietValue : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    /// As assistive technology reads and writes it, so it has no signal.
    Q_PROPERTY(double value READ current WRITE ask)
    Q_PROPERTY(double minimumValue READ minimum CONSTANT)
    Q_PROPERTY(double maximumValue MEMBER m_maximum NOTIFY maximumChanged)
    Q_PROPERTY(double stepSize MEMBER m_step NOTIFY stepChanged)
    /// What the value is.
    Q_PROPERTY(double current MEMBER m_current NOTIFY currentChanged)

public:
    explicit QuietValue(QQuickItem* parent = nullptr) : QQuickItem(parent) {}

    double minimum() const { return 0; }
    double current() const { return m_current; }
    void ask(double value) { Q_EMIT asked(value); }

Q_SIGNALS:
    void maximumChanged();
    void stepChanged();
    void currentChanged();
    /// It shall be `value`; who knows how makes it so.
    void asked(double value);

private:
    double m_maximum = 1;
    double m_step = 0.1;
    double m_current = 0;
};

} // namespace tarnwick
