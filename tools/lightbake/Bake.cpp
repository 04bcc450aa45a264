#include "tools/lightbake/Bake.h"

#include "tools/lightbake/Neighbours.h"
#include "tools/lightbake/Occlusion.h"
#include "tools/lightbake/Tone.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <exception>
#include <filesystem>
#include <mutex>
#include <numeric>
#include <stdexcept>
#include <string_view>
#include <thread>

namespace kelo::lightbake {
namespace {

/// FNV-1a.
class Checksum
{
public:
    void add(std::uint64_t number)
    {
        sum_ = (sum_ ^ number) * 0x100000001B3;
        sum_ ^= sum_ >> 32;
    }
    void add(std::string_view text)
    {
        for (const char c : text)
            add(static_cast<unsigned char>(c));
    }
    std::uint64_t sum() const { return sum_; }

private:
    std::uint64_t sum_ = 0xCBF29CE484222325;
};

/// Runs `task(0)` to `task(count - 1)`, each on the thread that is free next, and passes on the
/// first exception.
template<class Task>
void forEachOnThreads(std::size_t count, unsigned threadCount, Task task)
{
    std::atomic<std::size_t> next{0};
    std::mutex guard;
    std::exception_ptr failure;
    const auto work = [&] {
        try {
            for (std::size_t i = next++; i < count; i = next++)
                task(i);
        } catch (...) {
            const std::lock_guard lock(guard);
            if (!failure) failure = std::current_exception();
            next = count;
        }
    };
    std::vector<std::jthread> others;
    for (unsigned i = 1; i < threadCount; ++i)
        others.emplace_back(work);
    work();
    others.clear(); // joins them
    if (failure) std::rethrow_exception(failure);
}

BakedVertex bakedVertex(const VertexLight &light, double tone)
{
    const auto byteOf = [](double value) {
        return static_cast<std::uint8_t>(std::lround(255.0 * std::clamp(value, 0.0, 1.0)));
    };
    return {byteOf(light.closed), byteOf(light.open),
            static_cast<std::int8_t>(std::lround(127.0 * std::clamp(tone, -1.0, 1.0)))};
}

/// The crowns of both jaws, of the teeth's own forms.
struct Crowns
{
    std::vector<Crown> upper, lower;
};

Crowns crownsOf(const Mouth &mouth, const std::vector<std::vector<VertexLight>> &light)
{
    Crowns crowns;
    for (std::size_t i = 0; i < mouth.parts.size(); ++i) {
        const Part &part = mouth.parts[i];
        if (part.kind != Kind::tooth || part.isVariant) continue;
        (part.isUpper ? crowns.upper : crowns.lower).push_back(crownOf(part, light[i]));
    }
    return crowns;
}

/// The tones of a gum are drawn towards the mean of their neighbours as often: its triangles are
/// long where it is smooth, and a border across them would have teeth.
constexpr int gumSmoothingPasses = 3;

void smooth(std::vector<double> &values, const Neighbours &neighbours)
{
    const std::vector<double> before = values;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const auto around = neighbours.of(i);
        if (around.empty()) continue;
        double sum = 0.0;
        for (const std::uint32_t neighbour : around)
            sum += before[neighbour];
        values[i] = 0.5 * (before[i] + sum / static_cast<double>(around.size()));
    }
}

std::vector<double> tonesOf(const Part &part, const std::vector<Crown> &crowns)
{
    std::vector<double> tones(part.vertices.size(), 0.0);
    if (part.kind == Kind::attachment) return tones;
    if (part.kind == Kind::tooth) {
        const auto own = std::find_if(crowns.begin(), crowns.end(), [&](const Crown &crown) {
            return crown.toothNumber == part.toothNumber;
        });
        if (own == crowns.end()) return tones;
        std::transform(
            part.vertices.begin(), part.vertices.end(), tones.begin(),
            [&](const OBJVertex &vertex) { return toneOfEnamel(*own, vecOf(vertex.position)); });
        return tones;
    }
    std::transform(part.vertices.begin(), part.vertices.end(), tones.begin(),
                   [&](const OBJVertex &vertex) {
                       return toneOfGum(crowns, vecOf(vertex.position), vecOf(vertex.normal));
                   });
    const Neighbours neighbours(part.vertices.size(), part.indexes);
    for (int pass = 0; pass < gumSmoothingPasses; ++pass)
        smooth(tones, neighbours);
    return tones;
}

bool isUpToDate(const Mouth &mouth, std::uint64_t sourceChecksum)
{
    return std::all_of(mouth.parts.begin(), mouth.parts.end(), [&](const Part &part) {
        const BakedLightReading reading =
            readBakedLight(bakedLightPathOf(part.path), part.vertices);
        return reading.light && reading.sourceChecksum == sourceChecksum;
    });
}

} // namespace

std::vector<BakedLight> bakedLightOf(const Mouth &mouth, unsigned threadCount)
{
    const Surroundings surroundings(mouth);
    // The largest first, so that no thread is left with a gum at the end.
    std::vector<std::size_t> order(mouth.parts.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return mouth.parts[a].vertices.size() > mouth.parts[b].vertices.size();
    });
    std::vector<std::vector<VertexLight>> light(mouth.parts.size());
    forEachOnThreads(order.size(), threadCount, [&](std::size_t i) {
        light[order[i]] = surroundings.lightOf(mouth.parts[order[i]]);
    });

    const Crowns crowns = crownsOf(mouth, light);
    std::vector<BakedLight> baked(mouth.parts.size());
    forEachOnThreads(order.size(), threadCount, [&](std::size_t i) {
        const Part &part = mouth.parts[order[i]];
        const std::vector<double> tones = tonesOf(part, part.isUpper ? crowns.upper : crowns.lower);
        for (std::size_t v = 0; v < part.vertices.size(); ++v)
            baked[order[i]].push_back(bakedVertex(light[order[i]][v], tones[v]));
    });
    return baked;
}

std::uint64_t sourceChecksumOf(const Mouth &mouth)
{
    Checksum checksum;
    checksum.add(bakeVersion);
    for (const Part &part : mouth.parts) {
        checksum.add(std::filesystem::path(part.path).filename().string());
        checksum.add(checksumOf(part.vertices));
        for (const std::uint32_t index : part.indexes)
            checksum.add(index);
    }
    return checksum.sum();
}

std::size_t bakeFolder(const std::string &folder)
{
    const Mouth mouth = mouthOfFolder(folder);
    const std::uint64_t sourceChecksum = sourceChecksumOf(mouth);
    if (isUpToDate(mouth, sourceChecksum)) return 0;
    const unsigned threadCount = std::max(1u, std::thread::hardware_concurrency());
    const std::vector<BakedLight> baked = bakedLightOf(mouth, threadCount);
    for (std::size_t i = 0; i < mouth.parts.size(); ++i) {
        const Part &part = mouth.parts[i];
        const std::string path = bakedLightPathOf(part.path);
        if (const auto reason = writeBakedLight(path, part.vertices, baked[i], sourceChecksum))
            throw std::runtime_error(path + ": " + *reason);
    }
    return mouth.parts.size();
}

} // namespace kelo::lightbake
