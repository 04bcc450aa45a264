#include "keloOpenGL/keloOpenGL.h"
#include "viewer/app/HeadlessRun.h"
#include "viewer/app/WindowSystem.h"
#include "viewer/files/OutputFile.h"
#include "viewer/output/PictureFile.h"
#include "viewer/script/ScriptRun.h"
#include "viewer/settings/CommandLine.h"
#include "viewer/settings/Theme.h"
#include "viewer/settings/Translation.h"
#include "viewer/store/DatabaseAdvice.h"
#include "viewer/text/ShownText.h"
#include "viewer/treatment/OpenedTreatment.h"
#include "viewer/windows/InterfaceFiles.h"
#include "viewer/windows/OpenTreatments.h"
#include "viewer/windows/PlainBox.h"
#include "viewer/windows/TreatmentWindow.h"

#include <QApplication>
#include <QLocale>
#include <QMessageBox>

#include <algorithm>
#include <exception>
#include <memory>
#include <optional>
#include <utility>

namespace {

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

/// Opens what the command line names. Where the database cannot be used the user is told why and
/// what can be done, and may try again; a script gets the sentence alone, as an exception.
viewer::TreatmentDocument &openFirst(viewer::OpenTreatments &all, bool mayAsk)
{
    for (;;) {
        try {
            return all.openFirst();
        } catch (const viewer::UnusableDatabase &failure) {
            if (!mayAsk) throw;
            QMessageBox box(QMessageBox::Critical, QApplication::applicationDisplayName(),
                            QString(), QMessageBox::Close);
            viewer::setPlainText(box, QString::fromUtf8(failure.what()),
                                 viewer::adviceOn(failure.problem()));
            if (viewer::isWorthAnotherTry(failure.problem())) box.addButton(QMessageBox::Retry);
            if (box.exec() != QMessageBox::Retry) throw;
        }
    }
}

/// Stores what every open treatment has not stored yet; what cannot be stored is reported.
void storeAll(const viewer::OpenTreatments &all)
{
    for (const auto &document : all.documents()) {
        const QString problem = document->treatment()->storeWithoutAsking();
        if (!problem.isEmpty()) viewer::tellUser(problem);
    }
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
        viewer::TreatmentDocument &first = openFirst(all, commandLine.script.isEmpty());
        const viewer::StoredAtLossOfDisplay stored([&all] { storeAll(all); });
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

/// What a command line that ends at once says: on standard output, or for wrong use on standard
/// error.
viewer::ExitStatus tell(const viewer::ParsedCommandLine &parsed)
{
    if (parsed.endsWith != viewer::Done) {
        viewer::tellUser(parsed.message.trimmed());
        return parsed.endsWith.value_or(viewer::WrongUse);
    }
    const QString problem = viewer::writeToStandardOutput(parsed.message.toUtf8());
    if (problem.isEmpty()) return viewer::Done;
    viewer::tellUser(problem);
    return viewer::BadInput;
}

} // namespace

int main(int argc, char **argv)
{
    viewer::watchQtMessages();
    if (const QString problem = viewer::problemOfArguments(argc, argv); !problem.isEmpty()) {
        viewer::tellUser(problem);
        return viewer::WrongUse;
    }
    if (viewer::asksForText(argc, argv)) {
        const QCoreApplication application(argc, argv);
        const viewer::ParsedCommandLine parsed =
            viewer::parseCommandLine(QCoreApplication::arguments());
        if (parsed.endsWith) return tell(parsed); // else it was the value of another option
    }
    const bool headless = viewer::asksForHeadless(argc, argv);
    if (headless) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        // Fonts are looked for by language too: a picture is the same wherever it is made.
        qputenv("FC_LANG", "en");
    } else if (!hasDisplay()) {
        viewer::tellUser(
            QStringLiteral("There is no display to open a window on; --headless needs none."));
        return viewer::NoOpenGL;
    }
    std::optional<viewer::StartOfWindowSystem> start(std::in_place);
    QApplication application(argc, argv);
    start.reset();
    QApplication::setApplicationName(QStringLiteral("treatment-viewer"));
    QApplication::setOrganizationName(QStringLiteral("keloOpenGL"));
    QApplication::setApplicationVersion(viewer::version());

    viewer::installTranslations(QLocale());

    const viewer::ParsedCommandLine parsed = viewer::parseCommandLine(QApplication::arguments());
    if (parsed.endsWith) return tell(parsed);
    if (!viewer::meshesCanBeLoaded(parsed.commandLine)) return viewer::BadInput;
    return headless ? viewer::runHeadless(parsed.commandLine)
                    : runInWindow(application, parsed.commandLine);
}
