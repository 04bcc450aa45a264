#include "viewer/OutputFile.h"

#include <QSaveFile>

namespace viewer {

QString writeWholeFile(const QString &path, const QByteArray &content)
{
    QSaveFile file(path);
    const bool written = file.open(QIODevice::WriteOnly) &&
                         file.write(content) == content.size() && file.commit();
    if (written)
        return {};
    return QStringLiteral("%1: could not be written: %2").arg(path, file.errorString());
}

} // namespace viewer
