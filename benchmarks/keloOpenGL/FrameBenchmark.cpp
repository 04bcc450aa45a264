// Steady frames, first frames and loading, each beside the row to compare with. Rows are repeated,
// and the spread is next to the median.

#include "platform/gl.h"

#include "benchmarks/keloOpenGL/BareProgram.h"
#include "benchmarks/keloOpenGL/SampleScene.h"
#include "keloOpenGL/keloOpenGL.h"
#include "viewer/treatment/TreatmentLoader.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <unistd.h>

namespace {

using bare::bareScene;
using bare::makeSampleView;

struct PictureSize
{
    int width;
    int height;
};

PictureSize pictureSize(const benchmark::State &state)
{
    return {static_cast<int>(state.range(0)), static_cast<int>(state.range(1))};
}

bool showsTheScene(const std::array<unsigned char, 3> &pixel)
{
    // The background is more blue than red everywhere; the middle of the view shows a tooth.
    return pixel[0] >= pixel[2];
}

void steadyFrameBare(benchmark::State &state)
{
    const PictureSize size = pictureSize(state);
    const auto view = makeSampleView(size.width, size.height);
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
    const auto view = makeSampleView(pictureSize(state).width, pictureSize(state).height);
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

void firstFrameBare(benchmark::State &state)
{
    const PictureSize size = pictureSize(state);
    char path[] = "/tmp/kelo-scene-XXXXXX";
    const int file = mkstemp(path);
    if (file < 0 || !bare::writeScene(path, bareScene(*makeSampleView(size.width, size.height)))) {
        state.SkipWithError("the scene file could not be written");
        return;
    }
    close(file);
    for (auto _ : state) {
        if (!bare::runToItsEnd({KELO_BARE_FIRST_FRAME, path, std::to_string(size.width),
                                std::to_string(size.height)}))
            state.SkipWithError("the program failed");
    }
    std::remove(path);
}

void firstFrameView(benchmark::State &state)
{
    const PictureSize size = pictureSize(state);
    for (auto _ : state) {
        if (!bare::runToItsEnd(
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
        document = viewer::samplePatientDocument();
    std::size_t triangleCount = 0;
    for (const auto &model : document->models())
        triangleCount += model->indexCount() / 3;
    if (document->models().size() != 86) state.SkipWithError("not all meshes were loaded");
    state.counters["triangles"] = static_cast<double>(triangleCount);
}

void sizes(benchmark::internal::Benchmark *row)
{
    row->Args({800, 600})->Args({1600, 1000});
    bare::withSpread(row);
}

void loading(benchmark::internal::Benchmark *row)
{
    bare::withSpread(row);
}

BENCHMARK(steadyFrameBare)->Apply(sizes);
BENCHMARK(steadyFrameView)->Apply(sizes);
BENCHMARK(firstFrameBare)->Apply(sizes);
BENCHMARK(firstFrameView)->Apply(sizes);
BENCHMARK(readMeshFiles)->Apply(loading);
BENCHMARK(loadMeshFiles)->Apply(loading);

} // namespace
