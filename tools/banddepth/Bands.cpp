#include "tools/banddepth/Bands.h"

#include "keloOpenGL/bands/RubberBandTables.h"

#include <nlohmann/json.hpp>

#include <fstream>
#include <set>
#include <stdexcept>
#include <utility>

namespace kelo::banddepth {
namespace {

std::vector<std::string> partsBetweenCommas(const std::string &text)
{
    std::vector<std::string> parts;
    if (text.empty()) return parts;
    std::size_t begin = 0;
    for (std::size_t end = 0; end != std::string::npos; begin = end + 1) {
        end = text.find(',', begin);
        parts.push_back(text.substr(begin, end == std::string::npos ? end : end - begin));
    }
    return parts;
}

Band bandOfConfiguration(const nlohmann::json &configuration)
{
    const auto label = configuration.at("typeLabel").get<std::string>();
    const auto sequence = configuration.at("bracketSequence").get<std::string>();
    Band band{label + " (" + sequence + ")", partsBetweenCommas(sequence), false};
    for (const std::string &key : band.keys)
        if (!bracketHookPositions().contains(key))
            throw std::runtime_error(band.name + ": '" + key + "' has no hook");
    return band;
}

} // namespace

std::vector<Band> bandsOfTables()
{
    std::vector<Band> bands;
    std::set<std::pair<std::string_view, std::string_view>> known;
    for (const auto table : {anchorSequences0(), anchorSequences1(), anchorSequences2()}) {
        for (const AnchorSequence &sequence : table) {
            if (known.contains({sequence.to, sequence.from})) continue;
            if (!known.insert({sequence.from, sequence.to}).second) continue;
            const std::string from(sequence.from), to(sequence.to);
            bands.push_back({from + "-" + to, {from, to}, true});
        }
    }
    return bands;
}

std::vector<Band> bandsOfCatalogue(const std::string &file)
{
    std::ifstream stream(file);
    if (!stream) throw std::runtime_error(file + ": cannot be read");
    std::vector<Band> bands;
    try {
        const auto catalogue = nlohmann::json::parse(stream);
        for (const auto &configuration : catalogue.at("elasticsConfigTypes")) {
            Band band = bandOfConfiguration(configuration);
            if (!band.keys.empty()) bands.push_back(std::move(band));
        }
    } catch (const std::exception &failure) {
        throw std::runtime_error(file + ": " + failure.what());
    }
    return bands;
}

} // namespace kelo::banddepth
