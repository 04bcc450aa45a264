#include "benchmarks/keloOpenGL/SampleScene.h"

#include "viewer/treatment/TreatmentLoader.h"

#include <algorithm>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bare {
namespace {

Mesh bareMesh(const kelo::DXGLightweightModel &model)
{
    Mesh mesh;
    const auto *floats = reinterpret_cast<const float *>(model.vertices().data());
    mesh.vertices.assign(floats, floats + model.vertices().size() * 6);
    mesh.indexes.assign(model.indexes().begin(), model.indexes().end());
    const kelo::Color color = model.material()->color().value_or(kelo::Color::whiteColor());
    mesh.color = {static_cast<float>(color.red), static_cast<float>(color.green),
                  static_cast<float>(color.blue), 1.0f};
    mesh.shininess = static_cast<float>(model.material()->shininess());
    return mesh;
}

} // namespace

std::shared_ptr<kelo::DXOpenGL> makeSampleView(int width, int height)
{
    kelo::OpenGLView::setSurfaceKind(kelo::SurfaceKind::Surfaceless);
    auto view = kelo::makeView<kelo::DXOpenGL>(
        kelo::Rect{{0.0, 0.0}, {static_cast<double>(width), static_cast<double>(height)}});
    view->setDocumentModel(viewer::samplePatientDocument());
    return view;
}

Scene bareScene(const kelo::DXOpenGL &view)
{
    Scene scene;
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

EndedProgram runProgram(std::vector<std::string> arguments)
{
    std::vector<char *> pointers;
    for (std::string &argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    pid_t child = 0;
    int status = -1;
    rusage usage{};
    if (posix_spawn(&child, pointers[0], nullptr, nullptr, pointers.data(), environ) != 0 ||
        wait4(child, &status, 0, &usage) != child)
        return {};
    return {WIFEXITED(status) && WEXITSTATUS(status) == 0, usage.ru_maxrss};
}

void withSpread(benchmark::internal::Benchmark *row)
{
    row->Unit(benchmark::kMillisecond)->UseRealTime()->Repetitions(7)->ReportAggregatesOnly(true);
    row->ComputeStatistics("min", [](const std::vector<double> &values) {
        return *std::min_element(values.begin(), values.end());
    });
    row->ComputeStatistics("max", [](const std::vector<double> &values) {
        return *std::max_element(values.begin(), values.end());
    });
}

} // namespace bare
