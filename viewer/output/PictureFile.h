#pragma once

#include <QByteArray>
#include <QString>

class QImage;

namespace kelo {
class DXOpenGL;
} // namespace kelo

namespace viewer {

/// A picture as a PNG file has it; empty where it cannot be had.
QByteArray pictureAsPNG(const QImage &picture);

/// Writes a picture of what the view shows. Returns what went wrong, or an empty string.
QString writePicture(kelo::DXOpenGL &view, const QString &file);

} // namespace viewer
