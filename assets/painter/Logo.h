#pragma once

#include <QByteArray>
#include <QString>

namespace tarnwick::painter {

/// The logo of a file format: its name in capitals in a frame with round corners, in one colour (as SVG
/// names it). The picture is the frame, nothing stands round it.
QByteArray logoSvg(const QString& format, const QString& colour);

} // namespace tarnwick::painter
