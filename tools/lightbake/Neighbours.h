#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace kelo::lightbake {

/// The vertices that share an edge with each vertex; twice those across an edge of two triangles.
class Neighbours
{
public:
    Neighbours(std::size_t vertexCount, std::span<const std::uint32_t> indexes)
        : firsts_(vertexCount + 1), all_(2 * (indexes.size() / 3 * 3))
    {
        const std::size_t cornerCount = indexes.size() / 3 * 3;
        for (std::size_t i = 0; i < cornerCount; ++i)
            firsts_[indexes[i] + 1] += 2;
        for (std::size_t i = 0; i < vertexCount; ++i)
            firsts_[i + 1] += firsts_[i];
        std::vector<std::size_t> next(firsts_.begin(), firsts_.end() - 1);
        for (std::size_t i = 0; i < cornerCount; ++i) {
            const std::size_t triangle = i / 3 * 3;
            all_[next[indexes[i]]++] = indexes[triangle + (i + 1) % 3];
            all_[next[indexes[i]]++] = indexes[triangle + (i + 2) % 3];
        }
    }
    std::span<const std::uint32_t> of(std::size_t vertex) const
    {
        return std::span(all_).subspan(firsts_[vertex], firsts_[vertex + 1] - firsts_[vertex]);
    }

private:
    std::vector<std::size_t> firsts_;
    std::vector<std::uint32_t> all_;
};

} // namespace kelo::lightbake
