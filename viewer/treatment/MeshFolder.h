#pragma once

#include <QString>
#include <QStringList>
#include <QtGlobal>

namespace viewer {

/// The 86 files that a folder of meshes must hold: 28 teeth, 28 brackets, 28 buttons, two gums.
QStringList meshFileNames();

/// The teeth of which the folder has no file at all: neither the tooth nor its bracket nor its
/// button. They are teeth that the patient does not have.
QStringList missingTeeth(const QString &folder);

/// The most bytes that the files of a folder may have together: three times what 86 scans of 4 MB
/// have, and far less than what a machine's memory holds.
inline constexpr qint64 mostMeshFolderBytes = 1024 * 1024 * 1024;

/// Everything that is wrong with a folder of meshes, one line each: the file, the line where there
/// is one, and the reason. At most 100 lines, then "and N more". Empty when all of it can be
/// loaded. Files are missing only where others of the same tooth are there (see missingTeeth).
QStringList meshFolderProblems(const QString &folder, qint64 mostBytes = mostMeshFolderBytes);

} // namespace viewer
