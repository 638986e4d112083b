#pragma once

#include <QQuickItem>

namespace tarnwick {

/// Something that happens and is told once by assistive technology, in one sentence. It is not to be seen;
/// the looks give it the role of a notification, and its text as its name.
class Announcement : public QQuickItem {
    Q_OBJECT
    QML_NAMED_ELEMENT(AnnouncementItem)
    /// Told when it changes; "" for nothing.
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)

public:
    explicit Announcement(QQuickItem* parent = nullptr) : QQuickItem(parent) {}

    const QString& text() const { return m_text; }
    void setText(const QString& text);

Q_SIGNALS:
    void textChanged();

private:
    void tell();

    QString m_text;
};

} // namespace tarnwick
