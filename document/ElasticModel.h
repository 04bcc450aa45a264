#pragma once

#include "base/Export.h"
#include "keloModel/ElasticsConfigType.h"
#include "keloModel/ElasticsSizeType.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace kelo {

/// One placed elastic (rubber band): its size and the brackets and lingual buttons that it runs
/// through. Two elastics are the same only if they are the same object. Its setters announce
/// nothing; changes that the host should be told of go through the document model.
class KELO_EXPORT ElasticModel
{
public:
    /// Takes the next identifier.
    ElasticModel(std::shared_ptr<ElasticsConfigType> elasticsConfigType,
                 std::shared_ptr<ElasticsSizeType> elasticsSizeType,
                 std::vector<std::string> bracketSequence);
    ElasticModel(const ElasticModel &) = delete;
    ElasticModel &operator=(const ElasticModel &) = delete;

    /// From a named configuration: the size is the one that QKTypeManager gives for its
    /// elasticsSizeTypeID under "ElasticsSizeType" (none when there is no such record), the members
    /// are its bracketSequence split at every comma, not trimmed. No configuration gives an elastic
    /// without size and members.
    static std::shared_ptr<ElasticModel> elasticModelWithElasticsConfigType(
        const std::shared_ptr<ElasticsConfigType> &elasticsConfigType);
    static std::shared_ptr<ElasticModel>
    elasticModelWithElasticsConfigType_elasticsSizeType_bracketSequence(
        std::shared_ptr<ElasticsConfigType> elasticsConfigType,
        std::shared_ptr<ElasticsSizeType> elasticsSizeType,
        std::vector<std::string> bracketSequence);

    /// Identity within the process: 0 for the first elastic, then one more each time. A count of
    /// its own, apart from that of the meshes.
    std::uint32_t uniqueID() const { return _uniqueID; }
    /// The identifier that the next elastic will take.
    static std::uint32_t nextUniqueID();

    /// The named configuration that it was made from, or null.
    const std::shared_ptr<ElasticsConfigType> &elasticsConfigType() const
    {
        return _elasticsConfigType;
    }
    void setElasticsConfigType(std::shared_ptr<ElasticsConfigType> elasticsConfigType);

    /// Its size, and with it the colour that the band is drawn in; may be null.
    const std::shared_ptr<ElasticsSizeType> &elasticsSizeType() const { return _elasticsSizeType; }
    void setElasticsSizeType(std::shared_ptr<ElasticsSizeType> elasticsSizeType);

    /// The name keys that the band runs through, in order: brackets ("8") and buttons ("8l").
    const std::vector<std::string> &bracketSequence() const { return _bracketSequence; }
    void setBracketSequence(std::vector<std::string> bracketSequence);

private:
    std::uint32_t _uniqueID;
    std::shared_ptr<ElasticsConfigType> _elasticsConfigType;
    std::shared_ptr<ElasticsSizeType> _elasticsSizeType;
    std::vector<std::string> _bracketSequence;
};

/// The dictionary form of an elastic; every entry may be absent.
struct ElasticModelDictionary
{
    std::shared_ptr<ElasticsConfigType> elasticsConfigType;
    std::shared_ptr<ElasticsSizeType> elasticsSizeType;
    std::optional<std::vector<std::string>> bracketSequence;
};

/// An elastic, the dictionary form of one, or something else: a text, nothing.
using ElasticModelElement = std::variant<std::monostate, std::shared_ptr<ElasticModel>,
                                         ElasticModelDictionary, std::string>;

} // namespace kelo
