#include "keloOpenGL/keloOpenGL.h"
#include "viewer/CommandLine.h"
#include "viewer/HeadlessRun.h"
#include "viewer/MainWindow.h"
#include "viewer/OpenedTreatment.h"

#include <QApplication>
#include <QProgressDialog>

#include <cstdio>
#include <exception>
#include <memory>

namespace {

/// Loading that takes longer than this shows how far it is.
constexpr int progressDelayInMilliseconds = 500;

/// Qt's messages as they are, but for one about a folder of desktop sessions: a night job has no
/// session, and nothing here needs the folder.
void passOnMessage(QtMsgType, const QMessageLogContext &, const QString &message)
{
    if (!message.startsWith(QStringLiteral("QStandardPaths: XDG_RUNTIME_DIR not set")))
        viewer::tellUser(message);
}

bool hasDisplay()
{
    return !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
           !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

viewer::LoadingProgress progressIn(QProgressDialog &dialog)
{
    return [&dialog](std::size_t doneCount, std::size_t fileCount) {
        dialog.setMaximum(static_cast<int>(fileCount));
        dialog.setValue(static_cast<int>(doneCount));
    };
}

viewer::ExitStatus runInWindow(QApplication &application, const viewer::CommandLine &commandLine)
{
    try {
        viewer::MainWindow window(QSize(static_cast<int>(commandLine.size.width),
                                        static_cast<int>(commandLine.size.height)));
        window.show();
        QProgressDialog progress(QObject::tr("Loading the meshes…"), QString(), 0, 0, &window);
        progress.setWindowModality(Qt::WindowModal);
        progress.setMinimumDuration(progressDelayInMilliseconds);
        const auto treatment =
            std::make_shared<viewer::OpenedTreatment>(commandLine, progressIn(progress));
        progress.reset();
        window.showTreatment(treatment);
        if (application.exec() != 0) return viewer::BadInput;
        return viewer::writeOutputs(commandLine, window.view(), treatment->callLog());
    } catch (const kelo::OpenGLUnavailable &unavailable) {
        viewer::tellUser(QString::fromUtf8(unavailable.what()));
        return viewer::NoOpenGL;
    } catch (const std::exception &failure) {
        viewer::tellUser(QString::fromUtf8(failure.what()));
        return viewer::BadInput;
    }
}

} // namespace

int main(int argc, char **argv)
{
    qInstallMessageHandler(passOnMessage);
    const bool headless = viewer::asksForHeadless(argc, argv);
    if (headless)
        qputenv("QT_QPA_PLATFORM", "offscreen");
    else if (!hasDisplay()) {
        viewer::tellUser(
            QStringLiteral("There is no display to open a window on; --headless needs none."));
        return viewer::WrongUse;
    }
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("treatment-viewer"));
    QApplication::setOrganizationName(QStringLiteral("keloOpenGL"));

    const viewer::ParsedCommandLine parsed = viewer::parseCommandLine(QApplication::arguments());
    if (parsed.endsWith) {
        std::fputs(parsed.message.toUtf8().constData(),
                   *parsed.endsWith == viewer::Done ? stdout : stderr);
        return *parsed.endsWith;
    }
    if (!viewer::meshesCanBeLoaded(parsed.commandLine)) return viewer::BadInput;
    return headless ? viewer::runHeadless(parsed.commandLine)
                    : runInWindow(application, parsed.commandLine);
}
