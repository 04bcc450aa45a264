#include "document/SavedState.h"

#include "document/DXDocumentModel.h"
#include "keloModel/BracketColorType.h"
#include "keloModel/ElasticsConfigType.h"
#include "keloModel/ElasticsSizeType.h"

#include <algorithm>
#include <map>
#include <memory>
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

/// The record of the list with this identifier, or null. Both kinds of lists that documents have.
template<class Type>
std::shared_ptr<Type> offered(const std::map<long, std::shared_ptr<Type>> &types, long typeID)
{
    const auto found = types.find(typeID);
    return found == types.end() ? nullptr : found->second;
}

template<class Type>
std::shared_ptr<Type> offered(const std::vector<std::shared_ptr<Type>> &types, long typeID)
{
    const auto found = std::find_if(types.begin(), types.end(), [typeID](const auto &type) {
        return type && type->typeID == typeID;
    });
    return found == types.end() ? nullptr : *found;
}

template<class Types>
auto typeOrOwn(const Types &types, const std::optional<long> &typeID, const std::string &word)
    -> decltype(offered(types, 0))
{
    if (!typeID) return nullptr;
    const auto type = offered(types, *typeID);
    return type ? type
                : unknownType<typename decltype(offered(types, 0))::element_type>(*typeID, word);
}

/// What cannot be restored of an elastic as it is.
std::vector<ElasticProblem> problemsOf(const DXDocumentModel &document, const SavedElastic &saved,
                                       std::size_t index)
{
    using Kind = ElasticProblem::Kind;
    for (const std::string &member : saved.bracketSequence) {
        if (!document.bracketModels().contains(member) && !document.buttonModels().contains(member))
            return {{Kind::UnknownMember, index, member, 0}};
    }
    std::vector<ElasticProblem> problems;
    const auto &size = saved.elasticsSizeTypeID;
    if (size && !offered(document.availableElasticsSizeTypes(), *size))
        problems.push_back({Kind::UnknownSize, index, "", *size});
    const auto &configuration = saved.elasticsConfigTypeID;
    if (configuration && !offered(document.availableElasticsConfigTypes(), *configuration))
        problems.push_back({Kind::UnknownConfiguration, index, "", *configuration});
    return problems;
}

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

SavedElastic savedElasticOf(const ElasticModel &elastic)
{
    return {typeIDOf(elastic.elasticsConfigType()), typeIDOf(elastic.elasticsSizeType()),
            elastic.bracketSequence()};
}

std::shared_ptr<ElasticModel> elasticOf(const DXDocumentModel &document, const SavedElastic &saved)
{
    return std::make_shared<ElasticModel>(configTypeOf(document, saved),
                                          sizeTypeOf(document, saved), saved.bracketSequence);
}

std::shared_ptr<ElasticsConfigType> configTypeOf(const DXDocumentModel &document,
                                                 const SavedElastic &saved)
{
    return typeOrOwn(document.availableElasticsConfigTypes(), saved.elasticsConfigTypeID,
                     "Configuration");
}

std::shared_ptr<ElasticsSizeType> sizeTypeOf(const DXDocumentModel &document,
                                             const SavedElastic &saved)
{
    return typeOrOwn(document.availableElasticsSizeTypes(), saved.elasticsSizeTypeID, "Size");
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
        if (elastic) state.elastics.push_back(savedElasticOf(*elastic));
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
    std::vector<ElasticProblem> problems;
    DXDocumentModel::ElasticModels elastics;
    for (std::size_t i = 0; i < state.elastics.size(); ++i) {
        const auto found = problemsOf(document, state.elastics[i], i);
        problems.insert(problems.end(), found.begin(), found.end());
        if (found.empty() || found.front().kind != ElasticProblem::Kind::UnknownMember)
            elastics.push_back(elasticOf(document, state.elastics[i]));
    }
    document.setElasticModels(elastics);
    return problems;
}

} // namespace kelo
