#include "keloOpenGL/view/SceneExtents.h"

#include "tests/keloOpenGL/ViewFixture.h"

using namespace kelo;
using kelo::test::boxDocument;
using kelo::test::boxModel;

TEST(SceneExtents, areTheUnionOfAllModels)
{
    const auto document = boxDocument();
    EXPECT_EQ(extentsOfWholeScene(document.get())->description(), "x(-30,30)y(-20,20)z(-10,10)");
    document->setUpperGumModel(boxModel({-30.0f, -20.0f, 5.0f}, {30.0f, 20.0f, 44.0f}));
    EXPECT_EQ(extentsOfWholeScene(document.get())->description(), "x(-30,30)y(-20,20)z(-10,44)");
}

TEST(SceneExtents, areUnknownWithoutAWholeScene)
{
    EXPECT_EQ(extentsOfWholeScene(nullptr), nullptr);
    const DXDocumentModel empty;
    EXPECT_EQ(extentsOfWholeScene(&empty), nullptr);
    const auto document = boxDocument();
    document->setUpperGumModel(nullptr);
    EXPECT_EQ(extentsOfWholeScene(document.get()), nullptr);
}

TEST(SceneExtents, ofAnUnknownSceneHaveTheRadius100)
{
    EXPECT_EQ(extentsOfUnknownScene()->description(), "x(-100,100)y(-100,100)z(-100,100)");
    EXPECT_EQ(extentsOfUnknownScene()->radius(), 100.0);
}
