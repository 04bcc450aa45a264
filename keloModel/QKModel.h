#pragma once

#include "base/Export.h"

#include <map>
#include <stdexcept>
#include <string>

namespace kelo {

/// A kind of record that the host's data model knows.
struct QKEntity
{
    std::string name;      ///< what it is asked for by, as in "BracketColorType"
    std::string className; ///< the class of its records
};

/// Raised by who needs an entity that the data model does not know. what() is the reason after the
/// name: "No entity for name: name = X".
class KELO_EXPORT NoEntityForName : public std::runtime_error
{
public:
    explicit NoEntityForName(const std::string &entityName);

    /// "No entity for name".
    const std::string &name() const { return name_; }
    /// "name = " followed by the entity's name.
    const std::string &reason() const { return reason_; }

private:
    std::string name_;
    std::string reason_;
};

/// The entities of the host's data model. The default model starts with "BracketColorType",
/// "ElasticsSizeType" and "ElasticsConfigType", each of the class of its name; a host adds its own.
/// Main thread only.
class KELO_EXPORT QKModel
{
public:
    /// A model with the three entities of the catalogues.
    QKModel();

    static QKModel &defaultModel();

    /// The entity of this name, or null. The model owns it; it stays until it is replaced or
    /// removed.
    const QKEntity *entityNamed(const std::string &name) const;
    /// The entity of this name; throws NoEntityForName when there is none.
    const QKEntity &existingEntityNamed(const std::string &name) const;

    /// Adds an entity, in place of one that has its name.
    void addEntity(const QKEntity &entity);
    void removeEntityNamed(const std::string &name);

private:
    std::map<std::string, QKEntity> entities_;
};

} // namespace kelo
