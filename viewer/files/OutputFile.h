#pragma once

#include <QByteArray>
#include <QString>

namespace viewer {

/// Writes a file that appears whole or not at all; a device or a pipe is written to as it is.
/// Returns what went wrong, as a sentence that names the file, or an empty string.
QString writeWholeFile(const QString &path, const QByteArray &content);

/// Writes to standard output, up to its last byte. Returns what went wrong, or an empty string.
QString writeToStandardOutput(const QByteArray &content);

/// The same as writeWholeFile for a picture or a page: where none could be made (no content), an
/// earlier file stays and the text is "PATH: PROBLEM".
QString writeWhatWasMade(const QString &path, const QByteArray &content, const QString &problem);

} // namespace viewer
