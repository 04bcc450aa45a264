#pragma once

#include "benchmarks/keloOpenGL/BareProgram.h"
#include "keloOpenGL/keloOpenGL.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

namespace bare {

/// A view of so many points, without a display, that shows the sample patient without elastics.
std::shared_ptr<kelo::DXOpenGL> makeSampleView(int width, int height);

/// The scene as the view would draw it, with its visible models in its own order.
Scene bareScene(const kelo::DXOpenGL &view);

/// What became of a program that was started and waited for.
struct EndedProgram
{
    bool hasSucceeded = false;
    long peakKilobytes = 0; ///< the most memory that it held at once
};

EndedProgram runProgram(std::vector<std::string> arguments);

inline bool runToItsEnd(std::vector<std::string> arguments)
{
    return runProgram(std::move(arguments)).hasSucceeded;
}

/// Seven repetitions in milliseconds of real time, reported as median, mean, deviation, least and
/// most.
void withSpread(benchmark::internal::Benchmark *row);

} // namespace bare
