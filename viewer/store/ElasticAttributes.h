#pragma once

#include "keloModel/Catalogue.h"
#include "keloModel/SavedElastic.h"

#include <QJsonObject>

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace viewer {

/// One of the numbers that an elastic may have. Treatment files, the database with its log, and the
/// merging of two programs' changes go by the list of them.
struct ElasticAttribute
{
    std::optional<long> kelo::SavedElastic::*value;
    const char *name;   ///< of the member in files and in the log
    const char *column; ///< of the table "elastics"
    /// The values that there are in a catalogue; null where every number is one.
    std::set<long> (*valuesIn)(const kelo::Catalogue &catalogue);
    const char *complaint; ///< what is said behind a value in a file that the catalogue lacks
};

const std::vector<ElasticAttribute> &elasticAttributes();

/// The columns of all attributes, in their order: "config_type_id, size_type_id".
std::string elasticColumns();

/// The elastic as files and the log have it: the attributes, null where there is none, and
/// "bracketSequence".
QJsonObject elasticAsJSON(const kelo::SavedElastic &elastic);

} // namespace viewer
