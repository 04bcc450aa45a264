#include "keloOpenGL/keloOpenGL.h"
#include "viewer/CommandLine.h"
#include "viewer/HeadlessRun.h"
#include "viewer/MainWindow.h"
#include "viewer/OpenedTreatment.h"
#include "viewer/ScriptRun.h"

#include <QApplication>
#include <QProgressDialog>

#include <cstdio>
#include <exception>
#include <memory>
#include <optional>

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

/// A script moves the clock itself, in a window too; without one time is real.
kelo::VirtualRunLoop *clockOfScript(const viewer::CommandLine &commandLine)
{
    if (commandLine.script.isEmpty()) return nullptr;
    auto loop = std::make_unique<kelo::VirtualRunLoop>();
    kelo::VirtualRunLoop *const clock = loop.get();
    kelo::RunLoop::setMain(std::move(loop));
    return clock;
}

void playInWindow(const viewer::ParsedScript &script, const QString &file, kelo::DXOpenGL &view,
                  const viewer::OpenedTreatment &treatment, kelo::VirtualRunLoop &clock)
{
    QApplication::processEvents(); // the window is there before the first command
    viewer::ScriptPlayer player(view, clock);
    player.writePicture = [&view](const QString &to) { return viewer::writePicture(view, to); };
    player.writeState = [&](const QString &to) {
        return viewer::writeState(view, treatment, player.openMenu().get(), to);
    };
    viewer::playScript(script, file, player);
}

viewer::ExitStatus runInWindow(QApplication &application, const viewer::CommandLine &commandLine)
{
    try {
        const viewer::ParsedScript script = viewer::readScript(commandLine.script);
        kelo::VirtualRunLoop *const clock = clockOfScript(commandLine);
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
        std::optional<viewer::RealTime> realTime;
        if (clock) {
            playInWindow(script, commandLine.script, window.view(), *treatment, *clock);
            realTime.emplace(*clock);
        }
        if (application.exec() != 0) return viewer::BadInput;
        return viewer::writeOutputs(commandLine, window.view(), *treatment);
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
