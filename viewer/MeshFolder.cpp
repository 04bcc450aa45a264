#include "viewer/MeshFolder.h"

#include "keloModel/TreatmentNote.h"
#include "tools/meshcheck/MeshCheck.h"

#include <QDir>
#include <QFileInfo>

namespace viewer {
namespace {

QString problemText(const kelo::MeshProblem &problem)
{
    const QString file = QString::fromStdString(problem.file);
    const QString reason = QString::fromStdString(problem.reason);
    if (problem.line == 0) return QStringLiteral("%1: %2").arg(file, reason);
    return QStringLiteral("%1:%2: %3").arg(file).arg(problem.line).arg(reason);
}

} // namespace

QStringList meshFileNames()
{
    QStringList names;
    for (const auto &keys :
         {kelo::TreatmentNote::upperToothNameKeys(), kelo::TreatmentNote::lowerToothNameKeys()}) {
        for (const std::string &key : keys) {
            const QString number = QString::fromStdString(key);
            names << QStringLiteral("_tooth_%1.obj").arg(number)
                  << QStringLiteral("bracket_%1.obj").arg(number)
                  << QStringLiteral("button_%1.obj").arg(number);
        }
    }
    names << QStringLiteral("_upper_gums.obj") << QStringLiteral("_lower_gums.obj");
    return names;
}

QStringList meshFolderProblems(const QString &folder)
{
    const QDir directory(folder);
    if (!directory.exists()) return {QStringLiteral("%1: there is no such folder").arg(folder)};
    QStringList problems;
    for (const QString &name : meshFileNames()) {
        const QString path = directory.filePath(name);
        if (!QFileInfo::exists(path)) {
            problems << QStringLiteral("%1: the file is missing").arg(path);
            continue;
        }
        for (const kelo::MeshProblem &problem : kelo::checkMeshFile(path.toStdString()))
            problems << problemText(problem);
    }
    return problems;
}

} // namespace viewer
