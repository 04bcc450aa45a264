// A print request beside three bare frames of the same buffers, and a whole printing run of the
// viewer from the start of its process, with its peak memory.

#include "platform/gl.h"

#include "benchmarks/keloOpenGL/BareProgram.h"
#include "benchmarks/keloOpenGL/SampleScene.h"
#include "keloOpenGL/keloOpenGL.h"

#include <benchmark/benchmark.h>

#include <QTemporaryDir>

#include <algorithm>
#include <array>

namespace {

constexpr int width = 800;
constexpr int height = 400;
constexpr float diagonal = 0.57735026f;
constexpr std::array<std::array<float, 4>, 3> rotations{{
    {120.0f, -diagonal, diagonal, diagonal},
    {90.0f, -1.0f, 0.0f, 0.0f},
    {120.0f, -diagonal, -diagonal, -diagonal},
}};

/// The printed window: that of a target of 800 x 400, at twice the zoom.
bare::Scene printedScene(const kelo::DXOpenGL &view)
{
    bare::Scene scene = bare::bareScene(view);
    for (double &limit : scene.window)
        limit /= 2.0;
    return scene;
}

void threeFramesBare(benchmark::State &state)
{
    const auto view = bare::makeSampleView(width, height);
    view->display();
    const bare::Scene scene = printedScene(*view);
    bare::Program program(width, height);
    if (!program.isUsable()) {
        state.SkipWithError("no OpenGL");
        return;
    }
    program.upload(scene);
    for (auto _ : state) {
        for (const auto &rotation : rotations)
            program.drawTurned(rotation);
    }
}

void printRequest(benchmark::State &state)
{
    const auto view = bare::makeSampleView(width, height);
    view->display();
    kelo::DXOpenGLDelegate delegate;
    int receivedRows = 0;
    delegate.printImagesLeft_front_right_forDate_elasticsLeft_front_right =
        [&receivedRows](const QImage &left, const QImage &front, const QImage &right, auto &&...) {
            receivedRows = left.height() + front.height() + right.height();
        };
    view->setDelegate(&delegate);
    view->submitPrintRequest(); // as every frame that is measured, not the first one
    for (auto _ : state)
        view->submitPrintRequest();
    if (receivedRows != 3 * height) state.SkipWithError("nothing was printed");
    view->setDelegate(nullptr);
}

void printedPageFromProcessStart(benchmark::State &state)
{
    const QTemporaryDir folder;
    const std::string page = folder.filePath("page.pdf").toStdString();
    long peakKilobytes = 0;
    for (auto _ : state) {
        const auto ended = bare::runProgram({KELO_VIEWER_PROGRAM, "--headless", "--print", page});
        if (!ended.hasSucceeded) state.SkipWithError("the program failed");
        peakKilobytes = std::max(peakKilobytes, ended.peakKilobytes);
    }
    state.counters["peak MiB"] = static_cast<double>(peakKilobytes) / 1024.0;
}

BENCHMARK(threeFramesBare)->Apply(bare::withSpread);
BENCHMARK(printRequest)->Apply(bare::withSpread);
BENCHMARK(printedPageFromProcessStart)->Apply(bare::withSpread);

} // namespace
