#pragma once

#include <QByteArray>
#include <QString>

namespace viewer {

/// Writes a file that appears whole or not at all; a device or a pipe is written to as it is.
/// Returns what went wrong, as a sentence that names the file, or an empty text.
QString writeWholeFile(const QString &path, const QByteArray &content);

} // namespace viewer
