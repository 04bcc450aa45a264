#pragma once

#include "base/Export.h"
#include "keloModel/QKType.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace kelo {

/// Finds catalogue records by kind and identifier. A host fills it with its catalogues; it starts
/// empty. Main thread only.
class KELO_EXPORT QKTypeManager
{
public:
    static QKTypeManager &typeManager();

    /// The record of this kind ("ElasticsSizeType" and so on) with this typeID, or null.
    std::shared_ptr<QKType> instanceForID_ofType(long typeID, const std::string &typeName) const;

    /// Adds a record, in place of one of its kind that has its typeID. Null is ignored.
    void addInstance_ofType(const std::shared_ptr<QKType> &instance, const std::string &typeName);
    /// All records of this kind, by ascending typeID.
    std::vector<std::shared_ptr<QKType>> instancesOfType(const std::string &typeName) const;
    /// Forgets every record of this kind.
    void removeInstancesOfType(const std::string &typeName);
    /// Forgets everything.
    void removeAllInstances();

private:
    std::map<std::string, std::map<long, std::shared_ptr<QKType>>> instances_;
};

} // namespace kelo
