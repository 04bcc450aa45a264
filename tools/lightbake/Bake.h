#pragma once

#include "models/BakedLight.h"
#include "tools/lightbake/Mouth.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kelo::lightbake {

/// Raised with every change of the values that the same meshes get, so that files of the time
/// before are made again. A test compares a few values with those of this version.
inline constexpr std::uint64_t bakeVersion = 1;

/// The baked light of every part, in their order; the same for the same meshes, however many
/// threads compute it.
std::vector<BakedLight> bakedLightOf(const Mouth &mouth, unsigned threadCount);

/// What the light of a mouth depends on: its meshes, with their names but without their folder, and
/// the version.
std::uint64_t sourceChecksumOf(const Mouth &mouth);

/// Writes the file with baked light next to every mesh of the folder, on as many threads as there
/// are processors, unless all are there and were made from these very meshes. Returns how many
/// were written. Throws std::runtime_error with one line.
std::size_t bakeFolder(const std::string &folder);

} // namespace kelo::lightbake
