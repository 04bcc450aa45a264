#pragma once

#include "base/Export.h"
#include "document/ModelLookup.h"
#include "keloModel/BracketColorType.h"
#include "models/Color.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace kelo {

/// The colours of brackets: the types that there are, which bracket has which, and the materials.
class KELO_EXPORT BracketPaint
{
public:
    using TypesByID = std::map<long, std::shared_ptr<BracketColorType>>;

    const TypesByID &availableTypes() const { return availableTypes_; }
    /// Repaints nothing.
    void setAvailableTypes(TypesByID types) { availableTypes_ = std::move(types); }

    /// The type of each coloured bracket.
    const NameKeyDictionary<long> &typeIDs() const { return typeIDs_; }

    /// Colours a bracket as the user does; white for `nullopt`. A type that is not available is
    /// kept, and painted as a material of no colour. A key without a model gets its entry all the
    /// same.
    void choose(const ModelDictionary &brackets, const std::string &key,
                const std::optional<long> &typeID);
    /// Replaces all entries and paints the brackets of the dictionary; the others keep their
    /// materials. A type that is not available, or has no colour, is reported on standard error and
    /// leaves its bracket as it was, without an entry.
    void restore(const ModelDictionary &brackets,
                 const NameKeyDictionary<std::optional<long>> &typeIDs);

private:
    std::optional<Color> colorOfType(long typeID) const;
    void reportUnavailable(long typeID, const std::string &key) const;

    TypesByID availableTypes_;
    NameKeyDictionary<long> typeIDs_;
};

} // namespace kelo
