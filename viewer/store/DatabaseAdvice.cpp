#include "viewer/store/DatabaseAdvice.h"

#include <QCoreApplication>

namespace viewer {
namespace {

struct AdviceText
{
    Q_DECLARE_TR_FUNCTIONS(DatabaseAdvice)
};

} // namespace

QString adviceOn(StoreProblem problem)
{
    switch (problem) {
    case StoreProblem::Locked:
        return AdviceText::tr("Close the other program that works with the database, then try "
                              "again.");
    case StoreProblem::ReadOnly:
        return AdviceText::tr("Ask for permission to write to the file and its folder.");
    case StoreProblem::DiskFull:
        return AdviceText::tr("Make room on the disk, then try again.");
    case StoreProblem::NotReachable:
        return AdviceText::tr("Check that the folder is there, that you may read and write the "
                              "file, and that there is room on the disk, then try again.");
    case StoreProblem::Damaged:
    case StoreProblem::BadRecord:
        return AdviceText::tr("Keep a copy of the file as it is, and put the last backup in its "
                              "place.");
    case StoreProblem::NotADatabase:
    case StoreProblem::Foreign:
        return AdviceText::tr("Start the program with another file: --database FILE.");
    case StoreProblem::NewerVersion:
        return AdviceText::tr("Install the newer version of this program.");
    case StoreProblem::NoSuchRecord:
    case StoreProblem::Other:
        break;
    }
    return AdviceText::tr("Nothing was changed in the file.");
}

bool isWorthAnotherTry(StoreProblem problem)
{
    switch (problem) {
    case StoreProblem::Locked:
    case StoreProblem::ReadOnly:
    case StoreProblem::DiskFull:
    case StoreProblem::NotReachable:
        return true;
    default:
        return false;
    }
}

} // namespace viewer
