// The hot operations of the geometry room beside the same operation of glm, the baseline.
//
// Every row works through 64 inputs in turn, so that no call can be hoisted out of the loop, and
// writes every result to memory. After the timing the results are compared with glm's; a row whose
// results are wrong is reported as an error and gives no time. Each row is repeated, and the
// repetitions of all rows are shuffled among each other with
// --benchmark_enable_random_interleaving=true, so that a slow second of the machine does not fall
// on one side only.
#include "geometry/Matrix.h"
#include "geometry/Quaternion.h"

#include <algorithm>
#include <array>
#include <benchmark/benchmark.h>
#include <cmath>
#include <cstddef>
#include <random>
#include <vector>

#include <glm/glm.hpp>
#include <glm/gtc/quaternion.hpp>

namespace {

constexpr std::size_t inputCount = 64;
constexpr std::size_t repetitionCount = 15;

/// Two libraries' roundings of the same well-conditioned operation on numbers around 1.
constexpr float tolerance = 1e-4f;

using Matrices = std::array<kelo::Matrix, inputCount>;
using Quaternions = std::array<kelo::Quaternion, inputCount>;
using BaselineMatrices = std::array<glm::mat4, inputCount>;
using BaselineQuaternions = std::array<glm::quat, inputCount>;

glm::mat4 baselineOf(const kelo::Matrix &m)
{
    glm::mat4 baseline;
    for (std::size_t i = 0; i < 16; ++i)
        baseline[static_cast<int>(i / 4)][static_cast<int>(i % 4)] = m.m[i];
    return baseline;
}

glm::quat baselineOf(const kelo::Quaternion &q)
{
    return glm::quat(q.w, q.x, q.y, q.z);
}

template<class Baseline, class Value>
std::array<Baseline, inputCount> baselinesOf(const std::array<Value, inputCount> &values)
{
    std::array<Baseline, inputCount> baselines;
    std::transform(values.begin(), values.end(), baselines.begin(),
                   [](const Value &value) { return baselineOf(value); });
    return baselines;
}

/// Placements as a view makes them: a rotation, a scale and a translation.
Matrices someMatrices(unsigned seed)
{
    std::mt19937 generator(seed);
    std::uniform_real_distribution<float> coordinate(-1.0f, 1.0f);
    std::uniform_real_distribution<float> factor(0.5f, 2.0f);
    Matrices matrices;
    for (kelo::Matrix &m : matrices) {
        kelo::Matrix_loadIdentity(&m);
        kelo::Matrix_translate(&m, coordinate(generator), coordinate(generator),
                               coordinate(generator));
        kelo::Matrix_rotate(&m, {coordinate(generator), coordinate(generator), 1.0f},
                            3.0f * coordinate(generator));
        kelo::Matrix_scale(&m, factor(generator), factor(generator), factor(generator));
    }
    return matrices;
}

Quaternions someQuaternions(unsigned seed)
{
    std::mt19937 generator(seed);
    std::normal_distribution<float> coordinate;
    Quaternions quaternions;
    for (kelo::Quaternion &q : quaternions)
        q = kelo::Quaternion_normalized({coordinate(generator), coordinate(generator),
                                         coordinate(generator), coordinate(generator)});
    return quaternions;
}

float difference(const kelo::Matrix &m, const glm::mat4 &baseline)
{
    float largest = 0.0f;
    for (int i = 0; i < 16; ++i)
        largest = std::max(largest, std::abs(m.m[i] - baseline[i / 4][i % 4]));
    return largest;
}

/// Up to the sign: glm turns the right quaternion round where the dot product is negative, we the
/// left.
float difference(const kelo::Quaternion &q, const glm::quat &baseline)
{
    const float sign = q.x * baseline.x + q.y * baseline.y + q.z * baseline.z + q.w * baseline.w < 0
                           ? -1.0f
                           : 1.0f;
    return std::max({std::abs(q.x - sign * baseline.x), std::abs(q.y - sign * baseline.y),
                     std::abs(q.z - sign * baseline.z), std::abs(q.w - sign * baseline.w)});
}

/// Runs operation(i) for every i in turn, storing into results, then compares results with
/// expected. Written as NaN-proof: a NaN is no difference under the tolerance.
template<class Results, class Expected, class Operation>
void measure(benchmark::State &state, Results &results, const Expected &expected,
             Operation operation)
{
    std::size_t i = 0;
    for (auto _ : state) {
        results[i] = operation(i);
        benchmark::DoNotOptimize(results.data());
        benchmark::ClobberMemory();
        i = (i + 1) % inputCount;
    }
    if (state.iterations() < static_cast<benchmark::IterationCount>(inputCount)) return;
    for (std::size_t k = 0; k < inputCount; ++k) {
        if (!(difference(expected.first[k], expected.second[k]) <= tolerance)) {
            state.SkipWithError("the two libraries' results differ");
            return;
        }
    }
}

template<class Ours, class Baseline>
struct Results
{
    Ours first = {};
    Baseline second = {};
};

struct MatrixInputs
{
    Matrices left = someMatrices(1), right = someMatrices(2);
    BaselineMatrices baselineLeft = baselinesOf<glm::mat4>(left);
    BaselineMatrices baselineRight = baselinesOf<glm::mat4>(right);
};

struct QuaternionInputs
{
    Quaternions left = someQuaternions(3), right = someQuaternions(4);
    BaselineQuaternions baselineLeft = baselinesOf<glm::quat>(left);
    BaselineQuaternions baselineRight = baselinesOf<glm::quat>(right);
    std::array<float, inputCount> t;

    QuaternionInputs()
    {
        for (std::size_t i = 0; i < inputCount; ++i)
            t[i] = static_cast<float>(i) / (inputCount - 1);
    }
};

using MatrixResults = Results<Matrices, BaselineMatrices>;
using QuaternionResults = Results<Quaternions, BaselineQuaternions>;

void multiply_kelo(benchmark::State &state)
{
    const MatrixInputs in;
    MatrixResults out;
    for (std::size_t i = 0; i < inputCount; ++i)
        out.second[i] = in.baselineLeft[i] * in.baselineRight[i];
    measure(state, out.first, out,
            [&](std::size_t i) { return kelo::Matrix_multiplied(in.left[i], in.right[i]); });
}

void multiply_glm(benchmark::State &state)
{
    const MatrixInputs in;
    MatrixResults out;
    for (std::size_t i = 0; i < inputCount; ++i)
        out.first[i] = kelo::Matrix_multiplied(in.left[i], in.right[i]);
    measure(state, out.second, out,
            [&](std::size_t i) { return in.baselineLeft[i] * in.baselineRight[i]; });
}

void inverse_kelo(benchmark::State &state)
{
    const MatrixInputs in;
    MatrixResults out;
    for (std::size_t i = 0; i < inputCount; ++i)
        out.second[i] = glm::inverse(in.baselineLeft[i]);
    measure(state, out.first, out,
            [&](std::size_t i) { return kelo::Matrix_inverted(in.left[i]); });
}

void inverse_glm(benchmark::State &state)
{
    const MatrixInputs in;
    MatrixResults out;
    for (std::size_t i = 0; i < inputCount; ++i)
        out.first[i] = kelo::Matrix_inverted(in.left[i]);
    measure(state, out.second, out,
            [&](std::size_t i) { return glm::inverse(in.baselineLeft[i]); });
}

void slerp_kelo(benchmark::State &state)
{
    const QuaternionInputs in;
    QuaternionResults out;
    for (std::size_t i = 0; i < inputCount; ++i)
        out.second[i] = glm::slerp(in.baselineLeft[i], in.baselineRight[i], in.t[i]);
    measure(state, out.first, out, [&](std::size_t i) {
        return kelo::Quaternion_slerp(in.left[i], in.right[i], in.t[i]);
    });
}

void slerp_glm(benchmark::State &state)
{
    const QuaternionInputs in;
    QuaternionResults out;
    for (std::size_t i = 0; i < inputCount; ++i)
        out.first[i] = kelo::Quaternion_slerp(in.left[i], in.right[i], in.t[i]);
    measure(state, out.second, out, [&](std::size_t i) {
        return glm::slerp(in.baselineLeft[i], in.baselineRight[i], in.t[i]);
    });
}

/// The spread, for the reader who wants to know whether two rows differ at all.
void withSpread(benchmark::internal::Benchmark *row)
{
    row->MinTime(0.05)
        ->Repetitions(repetitionCount)
        ->ReportAggregatesOnly(true)
        ->ComputeStatistics("min",
                            [](const std::vector<double> &times) {
                                return *std::min_element(times.begin(), times.end());
                            })
        ->ComputeStatistics("max", [](const std::vector<double> &times) {
            return *std::max_element(times.begin(), times.end());
        });
}

BENCHMARK(multiply_glm)->Apply(withSpread);
BENCHMARK(multiply_kelo)->Apply(withSpread);
BENCHMARK(inverse_glm)->Apply(withSpread);
BENCHMARK(inverse_kelo)->Apply(withSpread);
BENCHMARK(slerp_glm)->Apply(withSpread);
BENCHMARK(slerp_kelo)->Apply(withSpread);

} // namespace
