#include "keloModel/QKTypeManager.h"

namespace kelo {

QKTypeManager &QKTypeManager::typeManager()
{
    static QKTypeManager manager;
    return manager;
}

std::shared_ptr<QKType> QKTypeManager::instanceForID_ofType(long typeID,
                                                            const std::string &typeName) const
{
    const auto ofType = instances_.find(typeName);
    if (ofType == instances_.end()) return nullptr;
    const auto instance = ofType->second.find(typeID);
    return instance == ofType->second.end() ? nullptr : instance->second;
}

void QKTypeManager::addInstance_ofType(const std::shared_ptr<QKType> &instance,
                                       const std::string &typeName)
{
    if (instance) instances_[typeName].insert_or_assign(instance->typeID, instance);
}

std::vector<std::shared_ptr<QKType>>
QKTypeManager::instancesOfType(const std::string &typeName) const
{
    std::vector<std::shared_ptr<QKType>> found;
    const auto ofType = instances_.find(typeName);
    if (ofType == instances_.end()) return found;
    for (const auto &[typeID, instance] : ofType->second)
        found.push_back(instance);
    return found;
}

void QKTypeManager::removeInstancesOfType(const std::string &typeName)
{
    instances_.erase(typeName);
}

void QKTypeManager::removeAllInstances()
{
    instances_.clear();
}

} // namespace kelo
