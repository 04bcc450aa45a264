#include "viewer/files/InputFile.h"

#include "viewer/files/Limits.h"

#include <QFile>
#include <QFileInfo>

#include <cstdio>

namespace viewer {
namespace {

InputFile refused(const QString &name, const QString &reason)
{
    return {{}, QStringLiteral("%1: %2").arg(name, reason)};
}

InputFile tooLarge(const QString &name, qint64 mostBytes)
{
    return refused(name, QStringLiteral("is larger than %1 MiB").arg(mostBytes / mebibyte));
}

InputFile contentOf(QFile &file, const QString &name, qint64 mostBytes)
{
    // Sizes are promises: a file may grow, and those that the system makes up say 0.
    QByteArray content = file.read(mostBytes + 1);
    if (file.error() != QFileDevice::NoError)
        return refused(name, QStringLiteral("could not be read: %1").arg(file.errorString()));
    if (content.size() > mostBytes) return tooLarge(name, mostBytes);
    return {std::move(content), {}};
}

} // namespace

InputFile readInputFile(const QString &path, qint64 mostBytes)
{
    const QFileInfo existing(path);
    if (existing.exists() && !existing.isFile())
        return refused(path, QStringLiteral("is no regular file"));
    if (existing.size() > mostBytes) return tooLarge(path, mostBytes);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return refused(path, QStringLiteral("could not be read: %1").arg(file.errorString()));
    return contentOf(file, path, mostBytes);
}

InputFile readStandardInput(qint64 mostBytes)
{
    const QString name = QStringLiteral("standard input");
    QFile file;
    if (!file.open(stdin, QIODevice::ReadOnly))
        return refused(name, QStringLiteral("could not be read: %1").arg(file.errorString()));
    return contentOf(file, name, mostBytes);
}

} // namespace viewer
