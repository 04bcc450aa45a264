#pragma once

#include "base/Export.h"
#include "keloModel/BracketColorType.h"
#include "keloModel/ElasticsConfigType.h"
#include "keloModel/ElasticsSizeType.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class QByteArray;
class QJsonObject;

namespace kelo {

class QKTypeManager;

/// @name What a catalogue's text may hold
/// Each is far more than a menu can show.
/// @{
inline constexpr std::size_t mostCatalogueRecords = 10'000; ///< of each list
inline constexpr std::size_t longestCatalogueText = 1'000;  ///< characters of a label, name, path
/// @}

/// What a clinic offers its clinicians: bracket colours, elastic sizes, named elastics.
struct KELO_EXPORT Catalogue
{
    std::vector<std::shared_ptr<BracketColorType>> bracketColorTypes;
    std::vector<std::shared_ptr<ElasticsSizeType>> elasticsSizeTypes;
    std::vector<std::shared_ptr<ElasticsConfigType>> elasticsConfigTypes;

    /// The record with this identifier, or null.
    std::shared_ptr<BracketColorType> bracketColorType(long typeID) const;
    std::shared_ptr<ElasticsSizeType> elasticsSizeType(long typeID) const;
    std::shared_ptr<ElasticsConfigType> elasticsConfigType(long typeID) const;

    /// Makes the three kinds of records of a type manager those of this catalogue.
    void fill(QKTypeManager &manager) const;
};

/// A catalogue that was read, or everything that is wrong with its text; never both.
struct CatalogueReading
{
    std::optional<Catalogue> catalogue;
    /// One sentence a problem, with its place first, as in
    /// "elasticsConfigTypes[2].bracketSequence: '40' is no tooth or button".
    std::vector<std::string> problems;
};

/// Reads a catalogue's JSON text: an object with the lists "bracketColorTypes",
/// "elasticsSizeTypes" and "elasticsConfigTypes". In every list the identifiers ("typeID", integers
/// above 0) are different; "typeLabel" is a text that is not empty; "displayOrder" an integer;
/// colours are four numbers from 0 to 1, or null for none; a configuration's "elasticsSizeTypeID"
/// is one of the sizes (0 or left out: none), its "bracketSequence" keys of teeth and buttons
/// joined by commas, at least two, or empty. Unknown members are problems too, since they are
/// misspelt ones, and so are lists and texts beyond the limits above. At most a hundred problems
/// are reported, then how many more there are. Takes time in proportion to the text.
///
/// A list that is left out is taken from `defaults`; without defaults it is a problem.
KELO_EXPORT CatalogueReading catalogueFromJSON(const QByteArray &text,
                                               const Catalogue *defaults = nullptr);

/// The same for an object inside a larger text; `place` is put before every problem's place.
KELO_EXPORT CatalogueReading catalogueFromJSON(const QJsonObject &object, const std::string &place,
                                               const Catalogue *defaults = nullptr);

/// The text that reads back as the same catalogue.
KELO_EXPORT QByteArray catalogueAsJSON(const Catalogue &catalogue);
KELO_EXPORT QJsonObject catalogueAsJSONObject(const Catalogue &catalogue);

} // namespace kelo
