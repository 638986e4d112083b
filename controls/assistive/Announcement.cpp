#include "controls/assistive/Announcement.h"

#include <QAccessible>

namespace tarnwick {

void Announcement::setText(const QString& text) {
    if (m_text == text)
        return;
    m_text = text;
    Q_EMIT textChanged();
    if (!m_text.isEmpty()) // after its name has followed
        QMetaObject::invokeMethod(this, &Announcement::tell, Qt::QueuedConnection);
}

/// Screen readers tell a notification when it comes up.
void Announcement::tell() {
    QAccessibleEvent shown(this, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&shown);
}

} // namespace tarnwick
