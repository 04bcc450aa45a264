#pragma once

#include <QString>
#include <QStringList>

namespace viewer {

/// The 86 files that a folder of meshes must hold: 28 teeth, 28 brackets, 28 buttons, two gums.
QStringList meshFileNames();

/// Everything that is wrong with a folder of meshes, one line each: the file, the line where there
/// is one, and the reason. Empty when all of it can be loaded.
QStringList meshFolderProblems(const QString &folder);

} // namespace viewer
