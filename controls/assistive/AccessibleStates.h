#pragma once

#include <QObject>

namespace tarnwick {

/// Tells assistive technology what the toolkit's own view of an item leaves out: that a control is disabled,
/// that it is expanded, and what it has to say just now. For controls of the toolkit, and for every item that
/// has one of these properties:
///
/// - `isExpanded`: true or false for what opens something; undefined for what does not;
/// - `spokenNow`: a text that is told when it is asked for, and whose changes are not announced.
///
/// There is one; it is made by `install`.
class AccessibleStates : public QObject {
    Q_OBJECT

public:
    /// From now on; what assistive technology has asked about before stays as it was. Once is enough.
    static void install();

private Q_SLOTS:
    void tellEnabled();
    void tellExpanded();

private:
    friend class ToldControl;
    void follow(QObject& item);
};

} // namespace tarnwick
