#include "viewer/files/OutputFile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cstdio>

namespace viewer {

namespace {

/// Where the disk is full, a write takes a part and tells nothing; only the next one says why.
bool writeAll(QIODevice &file, const QByteArray &content)
{
    qint64 written = 0;
    while (written < content.size()) {
        const qint64 count = file.write(content.constData() + written, content.size() - written);
        if (count <= 0) return false;
        written += count;
    }
    return true;
}

/// Writes to a device or a pipe, which is not to be replaced by a file.
bool writeDirectly(QFile &file, const QByteArray &content)
{
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && writeAll(file, content);
}

bool writeAndRename(QSaveFile &file, const QByteArray &content)
{
    return file.open(QIODevice::WriteOnly) && writeAll(file, content) && file.commit();
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

QString writeToStandardOutput(const QByteArray &content)
{
    const auto size = static_cast<std::size_t>(content.size());
    // What stdio keeps for later may have no room on the disk.
    const bool written =
        std::fwrite(content.constData(), 1, size, stdout) == size && std::fflush(stdout) == 0;
    return written ? QString() : QStringLiteral("standard output: could not be written");
}

QString writeWhatWasMade(const QString &path, const QByteArray &content, const QString &problem)
{
    if (content.isEmpty()) return QStringLiteral("%1: %2").arg(path, problem);
    return writeWholeFile(path, content);
}

} // namespace viewer
