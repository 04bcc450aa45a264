#include "viewer/app/HeadlessRun.h"

#include "keloOpenGL/keloOpenGL.h"
#include "viewer/files/OutputFile.h"
#include "viewer/output/PictureFile.h"
#include "viewer/output/SceneExport.h"
#include "viewer/output/StateReport.h"
#include "viewer/page/PrintRequest.h"
#include "viewer/script/ScriptPlayer.h"
#include "viewer/script/ScriptRun.h"
#include "viewer/text/ShownText.h"
#include "viewer/treatment/MeshFolder.h"
#include "viewer/treatment/OpenedTreatment.h"

#include <QDir>

#include <algorithm>
#include <exception>

namespace viewer {
namespace {

/// Writes to a file, or to standard output where the name is "-".
QString writeOutput(const QString &path, const QByteArray &content)
{
    return path == QStringLiteral("-") ? writeToStandardOutput(content)
                                       : writeWholeFile(path, content);
}

/// Makes the folders that treatments are printed into where there are none. Returns what went
/// wrong, or an empty string.
QString makeFolders(const CommandLine &commandLine)
{
    if (!printsIntoFolder(commandLine)) return {};
    for (const QString &folder : {commandLine.print, commandLine.printImages}) {
        if (!folder.isEmpty() && !QDir().mkpath(folder))
            return folder + QStringLiteral(": the folder could not be made");
    }
    return {};
}

/// The page, or the pictures and lists, of one print request.
QStringList writePrints(const CommandLine &commandLine, kelo::DXOpenGL &view,
                        const OpenedTreatment &treatment)
{
    const auto request = printRequestOf(view);
    if (!request) return {couldNotBePrinted(commandLine)};
    QStringList failures;
    if (!commandLine.print.isEmpty()) {
        const TreatmentPage page = sharpTreatmentPage(*request, view, treatment, commandLine.page);
        failures << writeTreatmentPage(page, commandLine.page.layout, commandLine.print);
    }
    if (!commandLine.printImages.isEmpty())
        failures << writePrintImages(*request, commandLine.printImages);
    return failures;
}

} // namespace

QString couldNotBePrinted(const CommandLine &commandLine)
{
    QString name = commandLine.file;
    if (name.isEmpty()) name = commandLine.print;
    if (name.isEmpty()) name = commandLine.printImages;
    return QStringLiteral("%1: the treatment could not be printed").arg(name);
}

bool meshesCanBeLoaded(const CommandLine &commandLine)
{
    if (commandLine.meshes.isEmpty()) return true;
    const QStringList problems = meshFolderProblems(commandLine.meshes);
    for (const QString &problem : problems)
        tellUser(problem);
    return problems.isEmpty();
}

QString writeState(const kelo::DXOpenGL &view, const OpenedTreatment &treatment,
                   const kelo::Menu *openMenu, const QString &file)
{
    return writeOutput(file, stateAsJSON(view, treatment.callLog(), openMenu));
}

ExitStatus writeOutputs(const CommandLine &commandLine, kelo::DXOpenGL &view,
                        const OpenedTreatment &treatment, const kelo::Menu *openMenu)
{
    QStringList failures;
    if (!commandLine.picture.isEmpty()) failures << writePicture(view, commandLine.picture);
    if (!commandLine.print.isEmpty() || !commandLine.printImages.isEmpty()) {
        // A window too may print into a folder.
        const QString problem = makeFolders(commandLine);
        failures << (problem.isEmpty() ? writePrints(runsOf(commandLine).front(), view, treatment)
                                       : QStringList{problem});
    }
    if (!commandLine.exportedScene.isEmpty())
        failures << writeWholeFile(commandLine.exportedScene, sceneAsOBJ(view));
    if (!commandLine.state.isEmpty())
        failures << writeState(view, treatment, openMenu, commandLine.state);
    failures.removeAll(QString());
    for (const QString &failure : failures)
        tellUser(failure);
    return failures.isEmpty() ? Done : BadInput;
}

namespace {

/// Whether a run needs pictures: for its outputs, or for a script, whose clicks are picked in one.
/// A state and an exported scene are computed.
bool needsDrawing(const CommandLine &commandLine)
{
    for (const QString &output :
         {commandLine.picture, commandLine.print, commandLine.printImages, commandLine.script}) {
        if (!output.isEmpty()) return true;
    }
    return false;
}

/// One treatment from opening to the last output.
ExitStatus runTreatment(const CommandLine &commandLine)
{
    auto loop = std::make_unique<kelo::VirtualRunLoop>();
    kelo::VirtualRunLoop &clock = *loop;
    kelo::RunLoop::setMain(std::move(loop));
    try {
        const ParsedScript script =
            readScript(commandLine.script); // wrong ones are reported at once
        const auto view = kelo::makeView<kelo::DXOpenGL>(kelo::Rect{{0.0, 0.0}, commandLine.size});
        view->setSurfacelessScaleFactor(commandLine.scale);
        OpenedTreatment treatment(commandLine);
        for (const QString &sentence : treatment.sentences())
            tellUser(sentence);
        kelo::DXOpenGLDelegate delegate;
        treatment.callLog().logCallsOf(delegate);
        view->setDelegate(&delegate);
        treatment.showIn(*view);

        ScriptPlayer player(*view, clock);
        player.writePicture = [&](const QString &file) { return writePicture(*view, file); };
        player.writeState = [&](const QString &file) {
            return writeState(*view, treatment, player.openMenu().get(), file);
        };
        playScript(script, commandLine.script, player);
        const ExitStatus status =
            writeOutputs(commandLine, *view, treatment, player.openMenu().get());
        view->setDelegate(nullptr);
        const StoreOutcome closed = treatment.session().close();
        if (closed) return status;
        tellUser(closed.sentence());
        return BadInput;
    } catch (const kelo::OpenGLUnavailable &unavailable) {
        tellUser(QString::fromUtf8(unavailable.what()));
        return NoOpenGL;
    } catch (const std::exception &failure) {
        tellUser(QString::fromUtf8(failure.what()));
        return BadInput;
    }
}

} // namespace

ExitStatus runHeadless(const CommandLine &commandLine)
{
    kelo::OpenGLView::setSurfaceKind(needsDrawing(commandLine) ? kelo::SurfaceKind::Surfaceless
                                                               : kelo::SurfaceKind::Undrawn);
    if (const QString problem = makeFolders(commandLine); !problem.isEmpty()) {
        tellUser(problem);
        return BadInput;
    }
    ExitStatus worst = Done;
    for (const CommandLine &run : runsOf(commandLine)) {
        // What goes wrong with one treatment is reported, and the next one is printed.
        worst = std::max(worst, runTreatment(run));
        if (worst == NoOpenGL) break; // nor will there be any for the others
    }
    return worst;
}

} // namespace viewer
