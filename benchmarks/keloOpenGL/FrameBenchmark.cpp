// Steady frames, first frames and loading, each beside the row to compare with. Rows are repeated,
// and the spread stands beside the median.

#include "platform/gl.h"

#include "benchmarks/keloOpenGL/BareProgram.h"
#include "keloOpenGL/keloOpenGL.h"
#include "viewer/TreatmentLoader.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace {

struct PictureSize
{
    int width;
    int height;
};

PictureSize pictureSize(const benchmark::State &state)
{
    return {static_cast<int>(state.range(0)), static_cast<int>(state.range(1))};
}

std::shared_ptr<kelo::DXOpenGL> makeSampleView(PictureSize size)
{
    kelo::OpenGLView::setSurfaceKind(kelo::SurfaceKind::Surfaceless);
    auto view = kelo::makeView<kelo::DXOpenGL>(kelo::Rect{
        {0.0, 0.0}, {static_cast<double>(size.width), static_cast<double>(size.height)}});
    view->setDocumentModel(viewer::loadTreatment(QString()));
    return view;
}

bare::Mesh bareMesh(const kelo::DXGLightweightModel &model)
{
    bare::Mesh mesh;
    const auto *floats = reinterpret_cast<const float *>(model.vertices().data());
    mesh.vertices.assign(floats, floats + model.vertices().size() * 6);
    mesh.indexes.assign(model.indexes().begin(), model.indexes().end());
    const kelo::Color color = model.material()->color().value_or(kelo::Color::whiteColor());
    mesh.color = {static_cast<float>(color.red), static_cast<float>(color.green),
                  static_cast<float>(color.blue), 1.0f};
    mesh.shininess = static_cast<float>(model.material()->shininess());
    return mesh;
}

/// The scene as the view would draw it, with its visible models in its own order.
bare::Scene bareScene(const kelo::DXOpenGL &view)
{
    bare::Scene scene;
    for (const auto &models :
         {view.documentModel()->upperModels(), view.documentModel()->lowerModels()}) {
        for (const auto &model : models)
            scene.meshes.push_back(bareMesh(*model));
    }
    const kelo::WindowLimits window = view.windowLimits();
    scene.window = {window.xMin, window.xMax, window.yMin, window.yMax, view.zMin(), view.zMax()};
    scene.center = {view.rotationCenter().x, view.rotationCenter().y, view.rotationCenter().z};
    scene.rotation = view.worldRotation();
    return scene;
}

bool showsTheScene(const std::array<unsigned char, 3> &pixel)
{
    // The background is more blue than red everywhere; the middle of the view shows a tooth.
    return pixel[0] >= pixel[2];
}

void steadyFrameBare(benchmark::State &state)
{
    const PictureSize size = pictureSize(state);
    const auto view = makeSampleView(size);
    view->display();
    bare::Program program(size.width, size.height);
    if (!program.isUsable()) {
        state.SkipWithError("no OpenGL");
        return;
    }
    program.upload(bareScene(*view));
    program.draw(0.0f);
    float degrees = 0.0f;
    for (auto _ : state)
        program.draw(degrees = degrees < 10.0f ? degrees + 0.5f : 0.0f);
    if (!showsTheScene(program.middlePixel())) state.SkipWithError("nothing was drawn");
}

void steadyFrameView(benchmark::State &state)
{
    const auto view = makeSampleView(pictureSize(state));
    view->display();
    float degrees = 0.0f;
    for (auto _ : state) {
        degrees = degrees < 10.0f ? degrees + 0.5f : 0.0f;
        view->setWorldRotationAngle_axis(90.0 + degrees, -1.0, 0.0, 0.0);
        view->display();
        glFinish();
    }
    std::array<unsigned char, 3> pixel{};
    glReadPixels(static_cast<int>(state.range(0)) / 2, static_cast<int>(state.range(1)) / 2, 1, 1,
                 GL_RGB, GL_UNSIGNED_BYTE, pixel.data());
    if (!showsTheScene(pixel)) state.SkipWithError("nothing was drawn");
}

bool runToItsEnd(std::vector<std::string> arguments)
{
    std::vector<char *> pointers;
    for (std::string &argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    pid_t child = 0;
    int status = -1;
    return posix_spawn(&child, pointers[0], nullptr, nullptr, pointers.data(), environ) == 0 &&
           waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

void firstFrameBare(benchmark::State &state)
{
    const PictureSize size = pictureSize(state);
    char path[] = "/tmp/kelo-scene-XXXXXX";
    const int file = mkstemp(path);
    if (file < 0 || !bare::writeScene(path, bareScene(*makeSampleView(size)))) {
        state.SkipWithError("the scene file could not be written");
        return;
    }
    close(file);
    for (auto _ : state) {
        if (!runToItsEnd({KELO_BARE_FIRST_FRAME, path, std::to_string(size.width),
                          std::to_string(size.height)}))
            state.SkipWithError("the program failed");
    }
    std::remove(path);
}

void firstFrameView(benchmark::State &state)
{
    const PictureSize size = pictureSize(state);
    for (auto _ : state) {
        if (!runToItsEnd(
                {KELO_VIEW_FIRST_FRAME, std::to_string(size.width), std::to_string(size.height)}))
            state.SkipWithError("the program failed");
    }
}

/// The baseline of loading: the bytes of the 86 files, read and thrown away.
void readMeshFiles(benchmark::State &state)
{
    const auto bundle = kelo::ResourceBundle::bundleWithIdentifier(kelo::keloOpenGLBundleKey);
    std::vector<std::string> names = {"_upper_gums", "_lower_gums"};
    for (const auto &keys :
         {kelo::TreatmentNote::upperToothNameKeys(), kelo::TreatmentNote::lowerToothNameKeys()}) {
        for (const std::string &key : keys) {
            for (const char *kind : {"_tooth_", "bracket_", "button_"})
                names.push_back(kind + key);
        }
    }
    std::vector<char> block(1 << 20);
    std::size_t byteCount = 0;
    for (auto _ : state) {
        byteCount = 0;
        for (const std::string &name : names) {
            std::FILE *file =
                std::fopen(bundle->pathForResource_ofType(name, "obj").value().c_str(), "rb");
            while (const std::size_t count = std::fread(block.data(), 1, block.size(), file))
                byteCount += count;
            std::fclose(file);
        }
        benchmark::DoNotOptimize(block.data());
    }
    state.counters["bytes"] = static_cast<double>(byteCount);
}

void loadMeshFiles(benchmark::State &state)
{
    std::shared_ptr<kelo::DXDocumentModel> document;
    for (auto _ : state)
        document = viewer::loadTreatment(QString());
    std::size_t triangleCount = 0;
    for (const auto &model : document->models())
        triangleCount += model->indexCount() / 3;
    if (document->models().size() != 86) state.SkipWithError("not all meshes were loaded");
    state.counters["triangles"] = static_cast<double>(triangleCount);
}

void sizes(benchmark::internal::Benchmark *row)
{
    row->Args({800, 600})->Args({1600, 1000})->Unit(benchmark::kMillisecond)->UseRealTime();
    row->Repetitions(7)->ReportAggregatesOnly(true);
    row->ComputeStatistics("min", [](const std::vector<double> &values) {
        return *std::min_element(values.begin(), values.end());
    });
    row->ComputeStatistics("max", [](const std::vector<double> &values) {
        return *std::max_element(values.begin(), values.end());
    });
}

void loading(benchmark::internal::Benchmark *row)
{
    row->Unit(benchmark::kMillisecond)->UseRealTime()->Repetitions(7)->ReportAggregatesOnly(true);
}

BENCHMARK(steadyFrameBare)->Apply(sizes);
BENCHMARK(steadyFrameView)->Apply(sizes);
BENCHMARK(firstFrameBare)->Apply(sizes);
BENCHMARK(firstFrameView)->Apply(sizes);
BENCHMARK(readMeshFiles)->Apply(loading);
BENCHMARK(loadMeshFiles)->Apply(loading);

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
