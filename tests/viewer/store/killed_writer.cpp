// Writes numbered reports to a treatment store as fast as it can, and says each number on standard
// output once its transaction stands: killed_writer DATABASE TREATMENT FIRST LAST. Made to be
// killed. Ends with status 3 and the sentence on standard error when the store refuses.

#include "tests/viewer/store/TreatmentStoreReports.h"
#include "viewer/store/TreatmentStore.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <unistd.h>

namespace {

int refuse(const QString &sentence)
{
    std::fprintf(stderr, "%s\n", sentence.toUtf8().constData());
    return 3;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    if (argc != 5) return 1;
    const auto store = viewer::TreatmentStore::open(QString::fromUtf8(argv[1]));
    if (!store) return refuse(store.sentence());
    const qint64 treatmentID = std::atoll(argv[2]);
    const int last = std::atoi(argv[4]);
    for (int number = std::atoi(argv[3]); number <= last; ++number) {
        const auto written =
            store.value()->write(treatmentID, viewer::test::reportOfNumber(number));
        if (!written) return refuse(written.sentence());
        const std::string line = std::to_string(number) + '\n';
        if (::write(STDOUT_FILENO, line.data(), line.size()) < 0) return 2;
    }
    return 0;
}
