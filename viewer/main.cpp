#include "keloOpenGL/keloOpenGL.h"
#include "viewer/CommandLine.h"
#include "viewer/HeadlessRun.h"
#include "viewer/InterfaceFiles.h"
#include "viewer/OpenTreatments.h"
#include "viewer/OpenedTreatment.h"
#include "viewer/ScriptRun.h"
#include "viewer/ShownText.h"
#include "viewer/Theme.h"
#include "viewer/Translation.h"
#include "viewer/TreatmentWindow.h"

#include <QApplication>
#include <QLocale>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <memory>
#include <optional>

namespace {

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

/// A script moves the clock itself, in a window too; without one time is real.
kelo::VirtualRunLoop *clockOfScript(const viewer::CommandLine &commandLine)
{
    if (commandLine.script.isEmpty()) return nullptr;
    auto loop = std::make_unique<kelo::VirtualRunLoop>();
    kelo::VirtualRunLoop *const clock = loop.get();
    kelo::RunLoop::setMain(std::move(loop));
    return clock;
}

void playInWindow(const viewer::ParsedScript &script, const QString &file,
                  viewer::ScriptPlayer &player, kelo::DXOpenGL &view,
                  viewer::OpenedTreatment &treatment)
{
    QApplication::processEvents(); // the window is there before the first command
    const viewer::Unattended unattended(view, treatment.callLog());
    player.writePicture = [&view](const QString &to) { return viewer::writePicture(view, to); };
    player.writeState = [&](const QString &to) {
        return viewer::writeState(view, treatment, player.openMenu().get(), to);
    };
    viewer::playScript(script, file, player);
    player.handOver();
}

viewer::ExitStatus runInWindow(QApplication &application, const viewer::CommandLine &commandLine)
{
    try {
        const viewer::ParsedScript script = viewer::readScript(commandLine.script);
        kelo::VirtualRunLoop *const clock = clockOfScript(commandLine);
        viewer::addViewerInterfaceFiles();
        viewer::followThemePreference();
        viewer::OpenTreatments all(commandLine);
        if (all.isShownElsewhere()) return viewer::Done;
        viewer::TreatmentDocument &first = all.openFirst();
        // These outlive the window, which the user closes first.
        const auto view = first.mainWindow()->sharedView();
        const auto treatment = first.treatment();
        std::optional<viewer::ScriptPlayer> player;
        std::optional<viewer::RealTime> realTime;
        if (clock) {
            player.emplace(*view, *clock);
            playInWindow(script, commandLine.script, *player, *view, *treatment);
            realTime.emplace(*clock);
        }
        // During a `wait` the user may have closed the window already.
        const auto &documents = all.documents();
        const bool isOpen = std::any_of(documents.begin(), documents.end(),
                                        [](const auto &one) { return !one->isClosed(); });
        if (isOpen && application.exec() != 0) return viewer::BadInput;
        return viewer::writeOutputs(commandLine, *view, *treatment,
                                    player ? player->openMenu().get() : nullptr);
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
    QApplication::setApplicationVersion(viewer::version());

    viewer::installTranslations(QLocale());

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
