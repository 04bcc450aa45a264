#include "document/BracketPaint.h"

#include "models/HVOGLMaterial.h"
#include "models/ToothModelLoader.h"

#include <cstdio>

namespace kelo {
namespace {

void paint(const std::shared_ptr<DXGLightweightModel> &bracket, const std::optional<Color> &color)
{
    if (bracket) bracket->setMaterial(ToothModelLoader::standardMaterialForColor(color));
}

} // namespace

/// Nothing when there is no such type or it has no colour.
std::optional<Color> BracketPaint::colorOfType(long typeID) const
{
    const auto type = availableTypes_.find(typeID);
    if (type == availableTypes_.end() || !type->second) return std::nullopt;
    return Color::fromComponents(type->second->bracketColor);
}

void BracketPaint::reportUnavailable(long typeID, const std::string &key) const
{
    std::string available;
    for (const auto &[availableID, type] : availableTypes_) {
        if (!available.empty()) available += ", ";
        available += std::to_string(availableID);
    }
    std::fprintf(stderr,
                 "Error: Specified color \"%s\" for bracket %s is not in the list of available "
                 "colors (%s)\n",
                 std::to_string(typeID).c_str(), key.c_str(), available.c_str());
}

void BracketPaint::choose(const ModelDictionary &brackets, const std::string &key,
                          const std::optional<long> &typeID)
{
    const auto bracket = modelUnderKey(brackets, key);
    if (typeID) {
        typeIDs_.insert_or_assign(key, *typeID);
        paint(bracket, colorOfType(*typeID));
    } else {
        typeIDs_.erase(key);
        paint(bracket, Color::whiteColor());
    }
}

void BracketPaint::restore(const ModelDictionary &brackets,
                           const NameKeyDictionary<std::optional<long>> &typeIDs)
{
    typeIDs_.clear();
    for (const auto &[key, typeID] : typeIDs) {
        const auto color = typeID ? colorOfType(*typeID) : Color::whiteColor();
        if (!color) {
            reportUnavailable(*typeID, key);
            continue;
        }
        if (typeID) typeIDs_.insert_or_assign(key, *typeID);
        paint(modelUnderKey(brackets, key), color);
    }
}

} // namespace kelo
