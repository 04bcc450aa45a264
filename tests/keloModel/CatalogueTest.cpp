#include "keloModel/BracketColorType.h"
#include "keloModel/ElasticsConfigType.h"
#include "keloModel/ElasticsSizeType.h"
#include "keloModel/QKModel.h"
#include "keloModel/QKTypeManager.h"

#include <gtest/gtest.h>

namespace kelo {
namespace {

TEST(QKModel, theDefaultModelKnowsTheThreeCatalogues)
{
    for (const char *name : {"BracketColorType", "ElasticsSizeType", "ElasticsConfigType"}) {
        const QKEntity *entity = QKModel::defaultModel().entityNamed(name);
        ASSERT_TRUE(entity) << name;
        EXPECT_EQ(entity->name, name);
        EXPECT_EQ(entity->className, name);
        EXPECT_EQ(&QKModel::defaultModel().existingEntityNamed(name), entity);
    }
}

TEST(QKModel, anUnknownEntityIsNullOrRaisesNoEntityForName)
{
    EXPECT_EQ(QKModel::defaultModel().entityNamed("Wire"), nullptr);
    try {
        (void)QKModel::defaultModel().existingEntityNamed("Wire");
        ADD_FAILURE() << "an entity was found";
    } catch (const NoEntityForName &error) {
        EXPECT_EQ(error.name(), "No entity for name");
        EXPECT_EQ(error.reason(), "name = Wire");
        EXPECT_STREQ(error.what(), "No entity for name: name = Wire");
    }
}

TEST(QKModel, aHostAddsReplacesAndRemovesEntities)
{
    QKModel model;
    model.addEntity({"Wire", "WireType"});
    ASSERT_TRUE(model.entityNamed("Wire"));
    EXPECT_EQ(model.entityNamed("Wire")->className, "WireType");
    model.addEntity({"Wire", "OtherType"});
    EXPECT_EQ(model.entityNamed("Wire")->className, "OtherType");
    model.removeEntityNamed("Wire");
    EXPECT_EQ(model.entityNamed("Wire"), nullptr);
}

TEST(QKTypeManager, aRecordIsFoundByItsKindAndIdentifier)
{
    QKTypeManager manager;
    const auto size = std::make_shared<ElasticsSizeType>();
    size->typeID = 3;
    const auto color = std::make_shared<BracketColorType>();
    color->typeID = 3;
    manager.addInstance_ofType(size, "ElasticsSizeType");
    manager.addInstance_ofType(color, "BracketColorType");
    manager.addInstance_ofType(nullptr, "BracketColorType");
    EXPECT_EQ(manager.instanceForID_ofType(3, "ElasticsSizeType"), size);
    EXPECT_EQ(manager.instanceForID_ofType(3, "BracketColorType"), color);
    EXPECT_EQ(manager.instanceForID_ofType(4, "ElasticsSizeType"), nullptr);
    EXPECT_EQ(manager.instanceForID_ofType(3, "Wire"), nullptr);
}

TEST(QKTypeManager, recordsOfAKindAreListedByIdentifierReplacedAndForgotten)
{
    QKTypeManager manager;
    const auto record = [](long typeID, const char *label) {
        const auto made = std::make_shared<ElasticsSizeType>();
        made->typeID = typeID;
        made->typeLabel = label;
        return made;
    };
    manager.addInstance_ofType(record(10, "ten"), "ElasticsSizeType");
    manager.addInstance_ofType(record(2, "two"), "ElasticsSizeType");
    manager.addInstance_ofType(record(10, "other ten"), "ElasticsSizeType");
    const auto all = manager.instancesOfType("ElasticsSizeType");
    ASSERT_EQ(all.size(), 2u);
    EXPECT_EQ(all[0]->typeLabel, "two");
    EXPECT_EQ(all[1]->typeLabel, "other ten");
    manager.removeInstancesOfType("ElasticsSizeType");
    EXPECT_TRUE(manager.instancesOfType("ElasticsSizeType").empty());
    manager.addInstance_ofType(record(1, "one"), "ElasticsSizeType");
    manager.removeAllInstances();
    EXPECT_EQ(manager.instanceForID_ofType(1, "ElasticsSizeType"), nullptr);
}

TEST(QKTypeManager, theManagerIsOneForAll)
{
    EXPECT_EQ(&QKTypeManager::typeManager(), &QKTypeManager::typeManager());
}

TEST(ElasticsConfigType, aSequenceIsAssociatedUnlessItIsEmpty)
{
    ElasticsConfigType type;
    EXPECT_FALSE(type.hasAssociatedSequence());
    type.bracketSequence = "6,30";
    EXPECT_TRUE(type.hasAssociatedSequence());
}

} // namespace
} // namespace kelo
