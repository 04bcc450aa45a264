#include "models/DXGLightweightModel.h"

#include "base/Assertion.h"
#include "models/HVOGLMaterial.h"
#include "platform/time/NotificationCenter.h"
#include "tests/models/TestMeshes.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <vector>

namespace kelo {
namespace {

using test::triangleModel;

/// Counts what the meshes of a test announce.
class ChangeCounter
{
public:
    explicit ChangeCounter(const DXGLightweightModel &model)
    {
        NotificationCenter::defaultCenter().addObserver(
            this, [this](const Notification &) { ++count; }, "modelChangedNotification", &model);
    }
    ~ChangeCounter() { NotificationCenter::defaultCenter().removeObserver(this); }
    ChangeCounter(const ChangeCounter &) = delete;
    ChangeCounter &operator=(const ChangeCounter &) = delete;

    int count = 0;
};

/// The counter belongs to the process, so the death test's fresh process is where it is at its
/// start. ("threadsafe" runs the program anew, and there nothing but this test up to the
/// statement.)
TEST(DXGLightweightModelDeathTest, theFirstModelOfAProcessHasIdentifier1AndTheNext2)
{
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    EXPECT_EXIT(
        {
            const auto first = triangleModel();
            const auto second = triangleModel();
            std::exit(first->uniqueID() == 1 && second->uniqueID() == 2 ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

TEST(DXGLightweightModel, identifiersAreNeverUsedAgain)
{
    const std::uint64_t first = triangleModel()->uniqueID();
    EXPECT_EQ(triangleModel()->uniqueID(), first + 1) << "though the first model is gone";
    EXPECT_EQ(DXGLightweightModel::nextUniqueID(), first + 2);
}

TEST(DXGLightweightModel, identifiersCanBeSkippedButNotGivenTwice)
{
    const std::uint64_t next = DXGLightweightModel::nextUniqueID();
    DXGLightweightModel::setNextUniqueID(next + 10);
    EXPECT_EQ(triangleModel()->uniqueID(), next + 10);
    EXPECT_THROW(DXGLightweightModel::setNextUniqueID(next), AssertionFailure);
    EXPECT_EQ(DXGLightweightModel::nextUniqueID(), next + 11);
}

TEST(DXGLightweightModel, aNewModelHasADefaultMaterialAndIsNeitherHiddenNorExtended)
{
    const auto model = triangleModel();
    ASSERT_TRUE(model->material());
    EXPECT_EQ(model->material()->color(), Color::whiteColor());
    EXPECT_EQ(model->material()->shininess(), 32.0);
    EXPECT_NE(model->material(), triangleModel()->material());
    EXPECT_FALSE(model->hiddenPrimary());
    EXPECT_FALSE(model->hiddenSecondary());
    EXPECT_FALSE(model->extendedHitbox());
    EXPECT_EQ(model->vboID(), 0u);
    EXPECT_EQ(model->vboIndexID(), 0u);
}

TEST(DXGLightweightModel, freeingTheGivenArraysLeavesTheModelIntact)
{
    auto vertices = std::make_unique<OBJVertex[]>(3);
    for (int i = 0; i < 3; ++i)
        vertices[i] = {{static_cast<float>(i), 2.0f, 3.0f}, {0.0f, 0.0f, 1.0f}};
    auto indexes = std::make_unique<std::uint32_t[]>(3);
    for (std::uint32_t i = 0; i < 3; ++i)
        indexes[i] = 2 - i;
    const DXGLightweightModel model(vertices.get(), 3, indexes.get(), 3);
    std::memset(vertices.get(), 0xFF, 3 * sizeof(OBJVertex));
    std::memset(indexes.get(), 0xFF, 3 * sizeof(std::uint32_t));
    vertices.reset();
    indexes.reset();

    ASSERT_EQ(model.vertexCount(), 3u);
    ASSERT_EQ(model.indexCount(), 3u);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(model.vertices()[i].position[0], static_cast<float>(i));
        EXPECT_EQ(model.vertices()[i].normal[2], 1.0f);
        EXPECT_EQ(model.indexes()[i], static_cast<std::uint32_t>(2 - i));
    }
}

TEST(DXGLightweightModel, theExtentsAreTheBoxOfThePositions)
{
    const std::vector<OBJVertex> vertices{{{1.0f, -2.0f, 3.0f}, {9.0f, 9.0f, 9.0f}},
                                          {{-4.0f, 5.0f, 0.5f}, {0.0f, 0.0f, 0.0f}},
                                          {{2.0f, 0.0f, 7.0f}, {-9.0f, -9.0f, -9.0f}}};
    const DXGLightweightModel model(vertices.data(), vertices.size(), nullptr, 0);
    EXPECT_TRUE(model.extents().active());
    EXPECT_EQ(model.extents().xMin(), -4.0);
    EXPECT_EQ(model.extents().xMax(), 2.0);
    EXPECT_EQ(model.extents().yMin(), -2.0);
    EXPECT_EQ(model.extents().yMax(), 5.0);
    EXPECT_EQ(model.extents().zMin(), 0.5);
    EXPECT_EQ(model.extents().zMax(), 7.0);
}

TEST(DXGLightweightModel, aModelWithoutVerticesHasEmptyExtents)
{
    const DXGLightweightModel model(nullptr, 0, nullptr, 0);
    EXPECT_FALSE(model.extents().active());
    EXPECT_EQ(model.extents().xMin(), 0.0);
    EXPECT_EQ(model.extents().zMax(), 0.0);
}

TEST(DXGLightweightModel, aCountWithoutItsArrayIsRefused)
{
    const OBJVertex vertex{};
    EXPECT_THROW(DXGLightweightModel(nullptr, 1, nullptr, 0), AssertionFailure);
    EXPECT_THROW(DXGLightweightModel(&vertex, 1, nullptr, 3), AssertionFailure);
}

TEST(DXGLightweightModel, aHiddenFlagSetToTheValueThatItHasIsStillAnnounced)
{
    const auto model = triangleModel();
    const ChangeCounter changes(*model);
    model->setHiddenPrimary(false);
    EXPECT_EQ(changes.count, 1);
    model->setHiddenPrimary(true);
    model->setHiddenPrimary(true);
    EXPECT_EQ(changes.count, 3);
    model->setHiddenSecondary(false);
    EXPECT_EQ(changes.count, 4);
    model->setHiddenSecondary(true);
    EXPECT_EQ(changes.count, 5);
    EXPECT_TRUE(model->hiddenPrimary());
    EXPECT_TRUE(model->hiddenSecondary());
}

TEST(DXGLightweightModel, aNewMaterialIsAnnouncedOnceItIsInPlace)
{
    const auto model = triangleModel();
    const auto material = HVOGLMaterial::materialWithColor(Color(1.0, 0.0, 0.0));
    std::shared_ptr<HVOGLMaterial> seen;
    NotificationCenter::defaultCenter().addObserver(
        &seen, [&](const Notification &) { seen = model->material(); }, "modelChangedNotification",
        model.get());
    model->setMaterial(material);
    NotificationCenter::defaultCenter().removeObserver(&seen);
    EXPECT_EQ(seen, material);
}

TEST(DXGLightweightModel, theExtendedHitboxIsNotAnnounced)
{
    const auto model = triangleModel();
    const ChangeCounter changes(*model);
    model->setExtendedHitbox(true);
    EXPECT_TRUE(model->extendedHitbox());
    EXPECT_EQ(changes.count, 0);
}

TEST(DXGLightweightModel, theAnnouncementNamesTheModelItself)
{
    const auto model = triangleModel();
    const auto other = triangleModel();
    const ChangeCounter changes(*model);
    const ChangeCounter otherChanges(*other);
    model->postModelChangedNotification();
    EXPECT_EQ(changes.count, 1);
    EXPECT_EQ(otherChanges.count, 0);
}

TEST(DXGLightweightModel, withoutAContextNothingIsUploadedOrDrawn)
{
    const auto model = triangleModel();
    model->prepareVBO();
    model->draw();
    model->drawForColorSelection();
    model->setExtendedHitbox(true);
    model->drawForColorSelection();
    EXPECT_EQ(model->vboID(), 0u);
    EXPECT_EQ(model->vboIndexID(), 0u);
}

} // namespace
} // namespace kelo
