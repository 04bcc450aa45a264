// Opens the viewer's window on the sample patient, or a bare one, and tells how long after the
// start of the process, in milliseconds, each phase had ended: first_window START viewer|bare.
// START is what CLOCK_MONOTONIC said, in nanoseconds, when the process was started.

#include "platform/gl.h"

#include "keloOpenGL/keloOpenGL.h"
#include "viewer/settings/Theme.h"
#include "viewer/settings/Translation.h"
#include "viewer/windows/InterfaceFiles.h"
#include "viewer/windows/OpenTreatments.h"
#include "viewer/windows/TreatmentWindow.h"

#include <QApplication>
#include <QLocale>
#include <QMainWindow>
#include <QMenuBar>
#include <QWindow>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <unistd.h>

namespace {

long long startInNanoseconds = 0;

void ended(const char *phase)
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    const long long nanoseconds = now.tv_sec * 1'000'000'000LL + now.tv_nsec;
    std::printf("%s %.3f\n", phase, static_cast<double>(nanoseconds - startInNanoseconds) / 1e6);
}

void showBareWindow()
{
    QMainWindow window;
    window.menuBar()->addMenu(QStringLiteral("File"));
    window.resize(1024, 768);
    window.show();
    while (!window.windowHandle()->isExposed())
        QApplication::processEvents(QEventLoop::WaitForMoreEvents, 10);
    ended("window");
}

void showViewer()
{
    viewer::installTranslations(QLocale());
    viewer::addViewerInterfaceFiles();
    viewer::followThemePreference();
    viewer::CommandLine commandLine;
    commandLine.database = QStringLiteral(":memory:");
    viewer::OpenTreatments all(commandLine);
    viewer::TreatmentDocument document(commandLine, {}, all);
    ended("treatment");
    document.showWindows();
    kelo::DXOpenGL &view = document.mainWindow()->view();
    while (!view.isExposed())
        QApplication::processEvents(QEventLoop::WaitForMoreEvents, 10);
    ended("window");
    view.display();
    glFinish();
    ended("frame");
    std::fflush(stdout);
    _exit(0); // taking things down is no part of it
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 3) return 1;
    startInNanoseconds = std::atoll(argv[1]);
    ended("process");
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("first-window"));
    QApplication::setOrganizationName(QStringLiteral("keloOpenGL-benchmarks"));
    ended("application");
    if (std::strcmp(argv[2], "bare") == 0)
        showBareWindow();
    else
        showViewer();
    std::fflush(stdout);
    _exit(0);
}
