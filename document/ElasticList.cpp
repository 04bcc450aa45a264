#include "document/ElasticList.h"

#include "keloModel/NameKey.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

namespace kelo {
namespace {

bool runsOverOneTooth(const std::vector<std::string> &members)
{
    std::set<int> teeth;
    for (const std::string &member : members) {
        // A bracket and the button on the same tooth count once, wherever the button's letter
        // stands in a chart of the host's own.
        const int tooth = integerValueOfNameKey(toothKeyOfNameKey(member));
        if (tooth >= 0) teeth.insert(tooth);
    }
    return teeth.size() <= 1;
}

} // namespace

ElasticList elasticsFromElements(const std::vector<ElasticModelElement> &elements)
{
    ElasticList elastics;
    for (const ElasticModelElement &element : elements) {
        if (const auto *elastic = std::get_if<std::shared_ptr<ElasticModel>>(&element)) {
            if (*elastic) elastics.push_back(*elastic);
        } else if (const auto *dictionary = std::get_if<ElasticModelDictionary>(&element)) {
            elastics.push_back(
                ElasticModel::elasticModelWithElasticsConfigType_elasticsSizeType_bracketSequence(
                    dictionary->elasticsConfigType, dictionary->elasticsSizeType,
                    dictionary->bracketSequence.value_or(std::vector<std::string>())));
        }
    }
    return elastics;
}

bool contains(const ElasticList &elastics, const std::shared_ptr<ElasticModel> &elastic)
{
    return elastic && std::find(elastics.begin(), elastics.end(), elastic) != elastics.end();
}

ElasticList withoutNulls(const ElasticList &elastics)
{
    ElasticList kept;
    std::copy_if(elastics.begin(), elastics.end(), std::back_inserter(kept),
                 [](const std::shared_ptr<ElasticModel> &elastic) { return elastic != nullptr; });
    return kept;
}

std::shared_ptr<ElasticModel> elasticForUniqueID(const ElasticList &elastics,
                                                 std::uint32_t uniqueID)
{
    const auto found =
        std::find_if(elastics.begin(), elastics.end(), [uniqueID](const auto &elastic) {
            return elastic && elastic->uniqueID() == uniqueID;
        });
    return found == elastics.end() ? nullptr : *found;
}

bool removeKey(ElasticList &elastics, const std::string &key)
{
    bool changed = false;
    ElasticList left;
    for (const auto &elastic : elastics) {
        if (!elastic) continue;
        std::vector<std::string> members = elastic->bracketSequence();
        if (std::erase(members, key) == 0) {
            left.push_back(elastic);
            continue;
        }
        changed = true;
        if (runsOverOneTooth(members)) continue;
        elastic->setBracketSequence(std::move(members));
        left.push_back(elastic);
    }
    elastics = std::move(left);
    return changed;
}

} // namespace kelo
