#include "viewer/treatment/MeshFolder.h"

#include "document/DocumentMeshes.h"
#include "keloModel/TreatmentNote.h"
#include "tools/meshcheck/MeshCheck.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <string>

namespace viewer {
namespace {

QStringList toothNumbers()
{
    QStringList numbers;
    for (const auto &keys :
         {kelo::TreatmentNote::upperToothNameKeys(), kelo::TreatmentNote::lowerToothNameKeys()}) {
        for (const std::string &key : keys)
            numbers << QString::fromStdString(key);
    }
    return numbers;
}

/// The files of one tooth's set.
QStringList fileNamesOfTooth(const QString &number)
{
    return {QStringLiteral("_tooth_%1.obj").arg(number),
            QStringLiteral("bracket_%1.obj").arg(number),
            QStringLiteral("button_%1.obj").arg(number)};
}

QStringList gumFileNames()
{
    return {QStringLiteral("_upper_gums.obj"), QStringLiteral("_lower_gums.obj")};
}

/// Problems as lines; of many only the first.
class ProblemLines
{
public:
    void add(const kelo::MeshProblem &problem)
    {
        if (lines_.size() < static_cast<qsizetype>(kelo::mostListedProblems))
            lines_ << QString::fromStdString(kelo::sentenceOf(problem));
        else
            ++unlistedCount_;
    }
    void add(const QString &file, const std::string &reason) { add({nameOf(file), 0, reason}); }
    void addUnlisted(std::size_t count) { unlistedCount_ += count; }

    static std::string nameOf(const QString &file) { return QFile::encodeName(file).toStdString(); }

    QStringList all() const
    {
        QStringList lines = lines_;
        if (unlistedCount_ != 0) lines << QStringLiteral("and %1 more").arg(unlistedCount_);
        return lines;
    }

private:
    QStringList lines_;
    std::size_t unlistedCount_ = 0;
};

} // namespace

QStringList meshFileNames()
{
    QStringList names;
    for (const QString &number : toothNumbers())
        names << fileNamesOfTooth(number);
    return names << gumFileNames();
}

QStringList missingTeeth(const QString &folder)
{
    QStringList missing;
    for (const std::string &key :
         kelo::teethMissingInFolder(QFile::encodeName(folder).toStdString()))
        missing << QString::fromStdString(key);
    return missing;
}

QStringList meshFolderProblems(const QString &folder, qint64 mostBytes)
{
    const QDir directory(folder);
    ProblemLines problems;
    if (!directory.exists()) {
        problems.add(folder, "there is no such folder");
        return problems.all();
    }
    const QStringList missing = missingTeeth(folder);
    if (missing.size() == toothNumbers().size())
        problems.add(folder, "there is no tooth, bracket or button in this folder");
    QStringList names = gumFileNames();
    for (const QString &number : toothNumbers()) {
        if (!missing.contains(number)) names << fileNamesOfTooth(number);
    }
    qint64 byteCount = 0;
    for (const QString &name : names)
        byteCount += QFileInfo(directory.filePath(name)).size();
    if (byteCount > mostBytes) {
        problems.add(folder, "the meshes have " + std::to_string(byteCount) +
                                 " bytes together; a folder's may have " +
                                 std::to_string(mostBytes));
        return problems.all();
    }
    for (const QString &name : names) {
        const QString path = directory.filePath(name);
        if (!QFileInfo::exists(path)) {
            problems.add(path, "the file is missing");
            continue;
        }
        std::size_t unlistedCount = 0;
        for (const kelo::MeshProblem &problem : kelo::checkMeshFile(
                 ProblemLines::nameOf(path), kelo::Strictness::usual, &unlistedCount))
            problems.add(problem);
        problems.addUnlisted(unlistedCount);
    }
    return problems.all();
}

} // namespace viewer
