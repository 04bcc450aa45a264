#include "viewer/OutputFile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace viewer {

namespace {

/// Writes to a device or a pipe, which is not to be replaced by a file.
bool writeDirectly(QFile &file, const QByteArray &content)
{
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
           file.write(content) == content.size();
}

bool writeAndRename(QSaveFile &file, const QByteArray &content)
{
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() &&
           file.commit();
}

QString failure(const QString &path, const QFileDevice &file)
{
    return QStringLiteral("%1: could not be written: %2").arg(path, file.errorString());
}

} // namespace

QString writeWholeFile(const QString &path, const QByteArray &content)
{
    const QFileInfo existing(path);
    if (existing.exists() && !existing.isFile() && !existing.isDir()) {
        QFile device(path);
        return writeDirectly(device, content) ? QString() : failure(path, device);
    }
    QSaveFile file(path);
    return writeAndRename(file, content) ? QString() : failure(path, file);
}

} // namespace viewer
