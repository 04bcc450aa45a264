#pragma once

#include <string>
#include <vector>

namespace kelo::banddepth {

/// A band that a clinician may place.
struct Band
{
    std::string name; ///< "6-25", or for a named configuration "Triangle right (6,27,28)"
    std::vector<std::string> keys;
    bool isOfTables; ///< a pair of the sequence tables, not a named configuration
};

/// A band over every pair of hooks that one of the three sequence tables names, each pair once, in
/// the tables' order.
std::vector<Band> bandsOfTables();

/// The named configurations of a catalogue file, without those that have no sequence. Throws
/// std::runtime_error with one line that names the file: when it cannot be read, is no catalogue,
/// or a configuration's key has no hook.
std::vector<Band> bandsOfCatalogue(const std::string &file);

} // namespace kelo::banddepth
