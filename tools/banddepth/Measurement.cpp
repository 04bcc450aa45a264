#include "tools/banddepth/Measurement.h"

#include "keloOpenGL/bands/RubberBandTables.h"
#include "keloOpenGL/view/MouthTransforms.h"

#include <algorithm>
#include <atomic>
#include <future>
#include <iterator>
#include <stdexcept>
#include <thread>

namespace kelo::banddepth {
namespace {

constexpr float deadZoneInDegrees = 10.0f;

/// The way that the view goes: from the angle that it stores to the one that turns the jaws.
float effectiveAngle(int degrees)
{
    const auto turned = static_cast<float>(degrees);
    if (degrees == 0) return kelo::effectiveMouthOpenAngle(0.0f);
    return kelo::effectiveMouthOpenAngle(turned +
                                         (degrees > 0 ? deadZoneInDegrees : -deadZoneInDegrees));
}

} // namespace

std::vector<Finding> findingsOf(const Scene &scene, const std::vector<Band> &bands,
                                std::size_t band, int angle)
{
    const float effective = effectiveAngle(angle);
    const Matrix upper = upperMouthTransform(effective, scene.extents);
    const Matrix lower = lowerMouthTransform(effective, scene.extents);
    const std::vector<std::string> &keys = bands[band].keys;
    std::vector<RubberBandNode> nodes;
    if (const auto *missing =
            calculateRubberBandNodes(keys, true, upper, lower, double(effective), nodes))
        throw std::invalid_argument("no hook: " + *missing);

    const auto samples = sampledLine(centreLineCorners(nodes), true, sampleSpacing);
    const auto samplesInUpper = inModelSpace(samples, upper);
    const auto samplesInLower = inModelSpace(samples, lower);
    std::vector<Finding> findings;
    for (std::size_t i = 0; i < scene.obstacles.size(); ++i) {
        const Obstacle &obstacle = scene.obstacles[i];
        const Immersion immersion =
            immersionOf(obstacle.isUpper ? samplesInUpper : samplesInLower, obstacle.mesh);
        if (immersion.depth > 0.0)
            findings.push_back({band, i, angle, nodes.size() == keys.size(), immersion});
    }
    return findings;
}

std::vector<Finding> allFindings(const Scene &scene, const std::vector<Band> &bands)
{
    // Made on first use, which must not happen on two threads at once.
    (void)bracketHookPositions();
    (void)isUpperToothName("8");

    std::vector<std::vector<Finding>> found(measuredAngles.size() * bands.size());
    std::atomic<std::size_t> next{0};
    const auto work = [&] {
        for (std::size_t i = next++; i < found.size(); i = next++)
            found[i] = findingsOf(scene, bands, i % bands.size(), measuredAngles[i / bands.size()]);
    };
    std::vector<std::future<void>> workers;
    for (unsigned i = 0; i < std::max(1u, std::thread::hardware_concurrency()); ++i)
        workers.push_back(std::async(std::launch::async, work));
    for (std::future<void> &worker : workers)
        worker.get();

    std::vector<Finding> findings;
    for (std::vector<Finding> &part : found)
        std::move(part.begin(), part.end(), std::back_inserter(findings));
    return findings;
}

std::vector<AnchorFinding> anchorsInTeeth(const Scene &scene)
{
    std::vector<AnchorFinding> findings;
    for (std::size_t i = 0; i < anchors().size(); ++i) {
        // With the mouth closed the model spaces of both jaws are one.
        const auto &[x, y, z] = anchors()[i].position;
        const Vec3 position{double(x), double(y), double(z)};
        for (std::size_t j = 0; j < scene.obstacles.size(); ++j) {
            if (scene.obstacles[j].kind != Kind::tooth) continue;
            const double depth = scene.obstacles[j].mesh.depthOf(position);
            if (depth > 0.0) findings.push_back({i, j, depth});
        }
    }
    std::stable_sort(findings.begin(), findings.end(),
                     [](const AnchorFinding &one, const AnchorFinding &other) {
                         return one.depth > other.depth;
                     });
    return findings;
}

} // namespace kelo::banddepth
