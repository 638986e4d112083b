#pragma once

#include <QString>
#include <QStringList>

namespace tarnwick::launchctl {

/// A command line as the value of a desktop entry's Exec key: every argument arrives as it is.
QString execValue(const QStringList& arguments);

/// A text as the value of a desktop entry's key of type string.
QString stringValue(QString text);

} // namespace tarnwick::launchctl
