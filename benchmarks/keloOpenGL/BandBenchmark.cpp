// Elastic bands: their computation, and what they cost a frame. The rows to compare with are a
// single band, and the frame without bands.

#include "platform/gl.h"

#include "benchmarks/keloOpenGL/SampleScene.h"
#include "keloOpenGL/bands/RubberBand.h"
#include "keloOpenGL/keloOpenGL.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace {

using Keys = std::vector<std::string>;

kelo::Matrix identity()
{
    kelo::Matrix matrix;
    kelo::Matrix_loadIdentity(&matrix);
    return matrix;
}

/// A mouth that is open by 10 degrees leads 6-22 through two anchors.
constexpr double tenDegrees = 0.17453292519943295;

void statistics(benchmark::internal::Benchmark *row)
{
    row->Repetitions(7)->ReportAggregatesOnly(true);
    row->ComputeStatistics("min", [](const std::vector<double> &values) {
        return *std::min_element(values.begin(), values.end());
    });
    row->ComputeStatistics("max", [](const std::vector<double> &values) {
        return *std::max_element(values.begin(), values.end());
    });
}

/// Nodes, vertices and indices of closed bands over two hooks with two anchors each way.
void bandComputation(benchmark::State &state)
{
    const auto bandCount = static_cast<std::size_t>(state.range(0));
    const Keys keys{"6", "22"};
    const kelo::Matrix jaw = identity();
    std::vector<kelo::RubberBandNode> nodes;
    std::vector<kelo::RubberBandVertex> vertices;
    std::vector<std::uint32_t> indices;
    std::size_t nodeCount = 0;
    for (auto _ : state) {
        for (std::size_t i = 0; i < bandCount; ++i) {
            kelo::calculateRubberBandNodes(keys, true, jaw, jaw, tenDegrees, nodes);
            nodeCount = nodes.size();
            vertices.resize(nodeCount * kelo::rubberBandVerticesPerNode);
            indices.resize(nodeCount * kelo::rubberBandIndicesPerNode);
            kelo::writeRubberBandVertices(nodes, vertices.data());
            kelo::writeRubberBandIndices(nodeCount, indices.data());
            benchmark::DoNotOptimize(vertices.data());
            benchmark::DoNotOptimize(indices.data());
        }
    }
    if (nodeCount != 6) state.SkipWithError("not two hooks and twice two anchors");
    state.counters["per band"] = benchmark::Counter(static_cast<double>(bandCount),
                                                    benchmark::Counter::kIsIterationInvariantRate |
                                                        benchmark::Counter::kInvert);
}

/// Bands from everywhere to everywhere, as a clinician would never place them.
void placeBands(kelo::DXDocumentModel &document, long count)
{
    static const std::array<Keys, 8> sequences{{{"6", "30"},
                                                {"11", "19"},
                                                {"6", "25"},
                                                {"11", "22", "21"},
                                                {"13", "14", "19", "20"},
                                                {"3l", "30"},
                                                {"8", "24"},
                                                {"4", "29l"}}};
    auto size = std::make_shared<kelo::ElasticsSizeType>();
    size->elasticsColor = {0.9, 0.5, 0.2, 1.0};
    for (long i = 0; i < count; ++i)
        document.elasticModels().push_back(std::make_shared<kelo::ElasticModel>(
            nullptr, size, sequences[static_cast<std::size_t>(i) % sequences.size()]));
}

void frameWithBands(benchmark::State &state)
{
    const auto view =
        bare::makeSampleView(static_cast<int>(state.range(1)), static_cast<int>(state.range(2)));
    placeBands(*view->documentModel(), state.range(0));
    view->display();
    float degrees = 0.0f;
    for (auto _ : state) {
        degrees = degrees < 10.0f ? degrees + 0.5f : 0.0f;
        view->setWorldRotationAngle_axis(90.0 + degrees, -1.0, 0.0, 0.0);
        view->display();
        glFinish();
    }
}

void frames(benchmark::internal::Benchmark *row)
{
    row->ArgNames({"bands", "width", "height"});
    for (const int bandCount : {0, 40})
        row->Args({bandCount, 800, 600})->Args({bandCount, 1600, 1000});
    bare::withSpread(row);
}

BENCHMARK(bandComputation)->ArgName("bands")->Arg(1)->Arg(16)->Arg(64)->Arg(256)->Apply(statistics);
BENCHMARK(frameWithBands)->Apply(frames);

} // namespace
