#pragma once

#include <QByteArray>
#include <QString>

namespace viewer {

/// What a file holds, or why it was not read; never both.
struct InputFile
{
    QByteArray content;
    QString problem; ///< a sentence that names the file; empty when all is well
};

/// Reads a regular file of at most `mostBytes` bytes. Whatever else has a name (a folder, a pipe, a
/// device) may never end, and is refused before it is opened.
InputFile readInputFile(const QString &path, qint64 mostBytes);

/// The same for standard input, which may be a pipe.
InputFile readStandardInput(qint64 mostBytes);

} // namespace viewer
