#include "viewer/HeadlessRun.h"

#include "keloOpenGL/keloOpenGL.h"
#include "viewer/MeshFolder.h"
#include "viewer/OpenedTreatment.h"
#include "viewer/OutputFile.h"
#include "viewer/SceneExport.h"
#include "viewer/StateReport.h"

#include <QBuffer>
#include <QImage>

#include <cstdio>
#include <exception>

namespace viewer {
namespace {

QByteArray pictureAsPNG(kelo::DXOpenGL &view)
{
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    const QImage picture = view.grabImage();
    if (picture.isNull() || !picture.save(&buffer, "PNG")) return {};
    return png;
}

/// Writes to a file, or to standard output where the name is "-".
QString writeOutput(const QString &path, const QByteArray &content)
{
    if (path != QStringLiteral("-")) return writeWholeFile(path, content);
    const auto size = static_cast<std::size_t>(content.size());
    const bool written =
        std::fwrite(content.constData(), 1, size, stdout) == size && std::fflush(stdout) == 0;
    return written ? QString() : QStringLiteral("standard output: could not be written");
}

} // namespace

void tellUser(const QString &message)
{
    std::fprintf(stderr, "%s\n", message.toUtf8().constData());
}

bool meshesCanBeLoaded(const CommandLine &commandLine)
{
    if (commandLine.meshes.isEmpty()) return true;
    const QStringList problems = meshFolderProblems(commandLine.meshes);
    for (const QString &problem : problems)
        tellUser(problem);
    return problems.isEmpty();
}

ExitStatus writeOutputs(const CommandLine &commandLine, kelo::DXOpenGL &view,
                        const DelegateCallLog &callLog)
{
    QStringList failures;
    if (!commandLine.picture.isEmpty()) {
        const QByteArray png = pictureAsPNG(view);
        failures
            << (png.isEmpty()
                    ? QStringLiteral("%1: the view could not be drawn").arg(commandLine.picture)
                    : writeWholeFile(commandLine.picture, png));
    }
    if (!commandLine.exportedScene.isEmpty())
        failures << writeWholeFile(commandLine.exportedScene, sceneAsOBJ(view));
    if (!commandLine.state.isEmpty())
        failures << writeOutput(commandLine.state, stateAsJSON(view, callLog));
    failures.removeAll(QString());
    for (const QString &failure : failures)
        tellUser(failure);
    return failures.isEmpty() ? Done : BadInput;
}

ExitStatus runHeadless(const CommandLine &commandLine)
{
    kelo::OpenGLView::setSurfaceKind(kelo::SurfaceKind::Surfaceless);
    kelo::RunLoop::setMain(std::make_unique<kelo::VirtualRunLoop>());
    try {
        const auto view = kelo::makeView<kelo::DXOpenGL>(kelo::Rect{{0.0, 0.0}, commandLine.size});
        view->setSurfacelessScaleFactor(commandLine.scale);
        OpenedTreatment treatment(commandLine);
        for (const QString &sentence : treatment.sentences())
            tellUser(sentence);
        treatment.showIn(*view);
        const ExitStatus status = writeOutputs(commandLine, *view, treatment.callLog());
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

} // namespace viewer
