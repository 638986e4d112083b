#pragma once

#include <QByteArray>
#include <QImage>

namespace tarnwick::players {

/// For photographs, whose noise costs a lossless format five megabytes: JPEG. Empty when that fails.
QByteArray encodePhotograph(const QImage& picture);

/// For flat colours, whose edges a lossy format would smear: PNG. Empty when that fails.
QByteArray encodeDrawing(const QImage& picture);

} // namespace tarnwick::players
