#pragma once

#include "tests/viewer/support/RunProgram.h"

#include <csignal>
#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/resource.h>

namespace viewer::test {

/// What a program may not do that the one which starts it may.
enum class Limit { None, Permissions, FileSize };

/// The program with a limit of the system on it, without a display.
inline Ended runLimited(Limit limit, const QStringList &arguments)
{
    QProcess process;
    process.setProcessEnvironment(bareEnvironment());
    process.setChildProcessModifier([limit] {
        if (limit == Limit::Permissions) {
            // Permissions do not hold for an administrator but by these; others have them not.
            ::prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE, 0, 0, 0);
            ::prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH, 0, 0, 0);
        } else if (limit == Limit::FileSize) {
            // No file grows, as on a disk without room. The signal would end the program.
            const rlimit none{0, 0};
            ::setrlimit(RLIMIT_FSIZE, &none);
            std::signal(SIGXFSZ, SIG_IGN);
        }
    });
    return ended(process, arguments);
}

} // namespace viewer::test
