#include "document/SavedState.h"

#include "document/DXDocumentModel.h"
#include "keloModel/BracketColorType.h"
#include "keloModel/ElasticsConfigType.h"
#include "keloModel/ElasticsSizeType.h"

#include <memory>
#include <unordered_map>
#include <utility>

namespace kelo {
namespace {

template<class Type>
std::optional<long> typeIDOf(const std::shared_ptr<Type> &type)
{
    return type ? std::optional<long>(type->typeID) : std::nullopt;
}

/// The value of every model: the given one, or the default of a key that is left out.
template<class Value>
NameKeyDictionary<Value> completed(const DXDocumentModel::Models &models,
                                   const NameKeyDictionary<Value> &values, const Value &leftOut)
{
    NameKeyDictionary<Value> complete;
    for (const auto &[key, model] : models) {
        const auto value = values.find(key);
        complete.emplace(key, value == values.end() ? leftOut : value->second);
    }
    return complete;
}

/// With `nullopt` for no colour, also where updates said 4999: that is in no catalogue, and would
/// be complained about.
DXDocumentModel::OptionalColorTypeIDs withoutNoColor(DXDocumentModel::OptionalColorTypeIDs typeIDs)
{
    for (auto &[key, typeID] : typeIDs) {
        if (typeID == noBracketColorTypeID) typeID.reset();
    }
    return typeIDs;
}

/// A record that carries the identifier of one that is not offered.
template<class Type>
std::shared_ptr<Type> unknownType(long typeID, const std::string &word)
{
    auto type = std::make_shared<Type>();
    type->typeID = typeID;
    type->typeLabel = word + " " + std::to_string(typeID);
    return type;
}

/// Makes elastics of plain values, and notes what it does not find.
class ElasticsMaker
{
public:
    explicit ElasticsMaker(const DXDocumentModel &document) : document_(document)
    {
        for (const auto &type : document.availableElasticsConfigTypes()) {
            if (type) configurations_.emplace(type->typeID, type);
        }
    }

    /// Null for an elastic that runs through what is not there.
    std::shared_ptr<ElasticModel> elastic(const SavedElastic &saved, std::size_t index)
    {
        for (const std::string &member : saved.bracketSequence) {
            if (document_.bracketModels().contains(member) ||
                document_.buttonModels().contains(member))
                continue;
            problems_.push_back({ElasticProblem::Kind::UnknownMember, index, member, 0});
            return nullptr;
        }
        const auto size =
            saved.elasticsSizeTypeID ? sizeType(*saved.elasticsSizeTypeID, index) : nullptr;
        const auto configuration =
            saved.elasticsConfigTypeID ? configType(*saved.elasticsConfigTypeID, index) : nullptr;
        return std::make_shared<ElasticModel>(configuration, size, saved.bracketSequence);
    }

    std::vector<ElasticProblem> takeProblems() { return std::move(problems_); }

private:
    std::shared_ptr<ElasticsSizeType> sizeType(long typeID, std::size_t index)
    {
        const auto &available = document_.availableElasticsSizeTypes();
        const auto known = available.find(typeID);
        if (known != available.end() && known->second) return known->second;
        problems_.push_back({ElasticProblem::Kind::UnknownSize, index, "", typeID});
        return unknownType<ElasticsSizeType>(typeID, "Size");
    }

    std::shared_ptr<ElasticsConfigType> configType(long typeID, std::size_t index)
    {
        const auto known = configurations_.find(typeID);
        if (known != configurations_.end()) return known->second;
        problems_.push_back({ElasticProblem::Kind::UnknownConfiguration, index, "", typeID});
        return unknownType<ElasticsConfigType>(typeID, "Configuration");
    }

    const DXDocumentModel &document_;
    std::unordered_map<long, std::shared_ptr<ElasticsConfigType>> configurations_;
    std::vector<ElasticProblem> problems_;
};

} // namespace

std::string ElasticProblem::sentence(const SavedState &state) const
{
    std::string text = "elastic ";
    const auto &members = state.elastics.at(elasticIndex).bracketSequence;
    for (std::size_t i = 0; i < members.size(); ++i)
        text += (i ? "," : "") + members[i];
    switch (kind) {
    case Kind::UnknownMember:
        return text + " is left out: " + member + " is no bracket or button";
    case Kind::UnknownSize:
        return text + " has no colour: the size " + std::to_string(typeID) +
               " is not in the catalogue";
    case Kind::UnknownConfiguration:
        break;
    }
    return text + ": the configuration " + std::to_string(typeID) + " is not in the catalogue";
}

SavedState savedStateOf(const DXDocumentModel &document)
{
    SavedState state{document.toothVisibilities(),
                     document.bracketVisibilities(),
                     document.buttonVisibilities(),
                     {},
                     {}};
    // 4999 means no colour.
    for (const auto &[key, typeID] : document.bracketColorsTypeIDs()) {
        if (typeID != noBracketColorTypeID) state.bracketColorTypeIDs.emplace(key, typeID);
    }
    for (const auto &elastic : document.elasticModels()) {
        if (!elastic) continue;
        state.elastics.push_back({typeIDOf(elastic->elasticsConfigType()),
                                  typeIDOf(elastic->elasticsSizeType()),
                                  elastic->bracketSequence()});
    }
    return state;
}

std::vector<ElasticProblem> restoreState(DXDocumentModel &document, const SavedState &state)
{
    document.setToothVisibilities(completed(document.toothModels(), state.toothVisibilities, true));
    document.setBracketVisibilities(
        completed(document.bracketModels(), state.bracketVisibilities, false));
    document.setButtonVisibilities(
        completed(document.buttonModels(), state.buttonVisibilities, false));
    document.setBracketColorTypeIDs(withoutNoColor(
        completed(document.bracketModels(), state.bracketColorTypeIDs, std::optional<long>())));
    ElasticsMaker maker(document);
    DXDocumentModel::ElasticModels elastics;
    for (std::size_t i = 0; i < state.elastics.size(); ++i) {
        if (auto elastic = maker.elastic(state.elastics[i], i))
            elastics.push_back(std::move(elastic));
    }
    document.setElasticModels(elastics);
    return maker.takeProblems();
}

} // namespace kelo
