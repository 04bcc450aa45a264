#include "models/OBJReader.h"
#include "tests/models/OBJReaderMesh.h"

#include <benchmark/benchmark.h>
#include <tiny_obj_loader.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <unistd.h>
#include <vector>

// Reading a mesh of a million triangles: the bytes alone (baseline), this reader, and a reader of
// the same format that is in wide use.

namespace kelo {
namespace {

struct Input
{
    test::TorusMesh mesh;
    std::size_t size = 0;
    test::TemporaryFile file;

    Input() : file(remembered(mesh.text())) {}

    const std::string &remembered(const std::string &text)
    {
        size = text.size();
        return text;
    }
};

const Input &input()
{
    static const Input made;
    return made;
}

void countBytes(benchmark::State &state)
{
    state.SetBytesProcessed(std::int64_t(state.iterations()) * std::int64_t(input().size));
}

void readBytes(benchmark::State &state)
{
    input(); // made before the clock runs
    std::vector<char> buffer(256 * 1024);
    std::size_t total = 0;
    for (auto _ : state) {
        total = 0;
        const int file = ::open(input().file.path.c_str(), O_RDONLY);
        for (ssize_t got; (got = ::read(file, buffer.data(), buffer.size())) > 0;)
            total += std::size_t(got);
        ::close(file);
        benchmark::DoNotOptimize(buffer.data());
    }
    if (total != input().size) state.SkipWithError("the bytes were not read");
    countBytes(state);
}

/// The file's numbers have six decimals; floats of this size add less than another 2e-6.
bool isNear(float read, double exact)
{
    return std::abs(read - exact) < 3e-6;
}

void readWithLoadOBJFile(benchmark::State &state)
{
    const test::TorusMesh &mesh = input().mesh;
    OBJVertex *vertices = nullptr;
    std::uint32_t *indexes = nullptr;
    std::uint32_t vertexCount = 0, indexCount = 0;
    bool read = true;
    for (auto _ : state) {
        std::free(vertices);
        std::free(indexes);
        read = read && loadOBJFile(input().file.path.c_str(), &vertices, &vertexCount, &indexes,
                                   &indexCount);
    }
    bool right =
        read && vertexCount == mesh.vertexCount() && indexCount == 3 * mesh.triangleCount();
    for (unsigned i = 0; right && i < mesh.segments; ++i) {
        for (unsigned j = 0; right && j < mesh.sides; ++j) {
            double exact[6];
            mesh.vertex(i, j, exact);
            const std::size_t at = std::size_t(i) * mesh.sides + j;
            for (int axis = 0; axis < 3; ++axis)
                right = right && isNear(vertices[at].position[axis], exact[axis]) &&
                        isNear(vertices[at].normal[axis], exact[axis + 3]);
            right = right && indexes[6 * at] == at;
        }
    }
    if (!right) state.SkipWithError("the mesh was not read as written");
    std::free(vertices);
    std::free(indexes);
    countBytes(state);
}

void readWithTinyobjloader(benchmark::State &state)
{
    const test::TorusMesh &mesh = input().mesh;
    tinyobj::ObjReaderConfig configuration;
    configuration.triangulate = true;
    bool right = true;
    for (auto _ : state) {
        tinyobj::ObjReader reader;
        right = right && reader.ParseFromFile(input().file.path, configuration) &&
                reader.GetAttrib().vertices.size() == 3 * mesh.vertexCount() &&
                reader.GetShapes().size() == 1 &&
                reader.GetShapes()[0].mesh.indices.size() == 3 * mesh.triangleCount();
    }
    if (!right) state.SkipWithError("the mesh was not read as written");
    countBytes(state);
}

void report(benchmark::internal::Benchmark *row)
{
    row->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
    row->Repetitions(7)->ReportAggregatesOnly();
    row->ComputeStatistics("min", [](const std::vector<double> &times) {
        return *std::min_element(times.begin(), times.end());
    });
}

BENCHMARK(readBytes)->Apply(report);
BENCHMARK(readWithLoadOBJFile)->Apply(report);
BENCHMARK(readWithTinyobjloader)->Apply(report);

} // namespace
} // namespace kelo
