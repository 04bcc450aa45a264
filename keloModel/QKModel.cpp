#include "keloModel/QKModel.h"

namespace kelo {

NoEntityForName::NoEntityForName(const std::string &entityName)
    : std::runtime_error("No entity for name: name = " + entityName),
      name_("No entity for name"),
      reason_("name = " + entityName)
{}

QKModel::QKModel()
{
    for (const char *name : {"BracketColorType", "ElasticsSizeType", "ElasticsConfigType"})
        addEntity({name, name});
}

QKModel &QKModel::defaultModel()
{
    static QKModel model;
    return model;
}

const QKEntity *QKModel::entityNamed(const std::string &name) const
{
    const auto entity = entities_.find(name);
    return entity == entities_.end() ? nullptr : &entity->second;
}

const QKEntity &QKModel::existingEntityNamed(const std::string &name) const
{
    if (const QKEntity *entity = entityNamed(name)) return *entity;
    throw NoEntityForName(name);
}

void QKModel::addEntity(const QKEntity &entity)
{
    entities_.insert_or_assign(entity.name, entity);
}

void QKModel::removeEntityNamed(const std::string &name)
{
    entities_.erase(name);
}

} // namespace kelo
