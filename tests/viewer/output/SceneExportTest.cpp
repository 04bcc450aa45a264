#include "viewer/output/SceneExport.h"

#include "document/ElasticModel.h"
#include "keloModel/ElasticsSizeType.h"
#include "keloOpenGL/keloOpenGL.h"
#include "models/OBJReader.h"
#include "tests/keloOpenGL/ViewFixture.h"

#include <QTemporaryFile>

#include <cstdlib>

using namespace kelo;
using kelo::test::boxDocument;
using kelo::test::ViewFixture;

namespace {

class SceneExport : public ViewFixture
{
protected:
    SceneExport() { view->setDocumentModel(document); }

    static int groupCount(const QByteArray &text) { return static_cast<int>(text.count("\no ")); }

    std::shared_ptr<DXDocumentModel> document = boxDocument();
    std::shared_ptr<DXOpenGL> view = makeView<DXOpenGL>(Rect{{0, 0}, {200, 100}});
};

} // namespace

TEST_F(SceneExport, everyVisibleModelIsAGroupOfItsOwn)
{
    const QByteArray text = viewer::sceneAsOBJ(*view);
    EXPECT_EQ(groupCount(text), 86);
    for (const char *group : {"o upper_gums\n", "o tooth_8\n", "o bracket_8\n", "o button_8l\n",
                              "o lower_gums\n", "o tooth_18\n", "o button_31l\n"})
        EXPECT_EQ(text.count(group), 1) << group;
    EXPECT_NO_GL_ERROR();
}

TEST_F(SceneExport, hiddenModelsAreLeftOut)
{
    document->toggleVisibilityOfTooth("8"); // its bracket and its button go with it
    document->toggleVisibilityOfBracket("9");
    const QByteArray text = viewer::sceneAsOBJ(*view);
    EXPECT_EQ(groupCount(text), 82);
    for (const char *group : {"o tooth_8\n", "o bracket_8\n", "o button_8l\n", "o bracket_9\n"})
        EXPECT_EQ(text.count(group), 0) << group;
    EXPECT_NO_GL_ERROR();
}

TEST_F(SceneExport, partsThatTheViewLeavesOutAreLeftOut)
{
    const auto size = std::make_shared<ElasticsSizeType>();
    for (const auto &keys : {std::vector<std::string>{"6", "11"}, {"6", "27"}, {"27", "22l"}})
        document->placeElasticModel(std::make_shared<ElasticModel>(nullptr, size, keys));
    // 86 models, two of them gums, 28 of each other kind, half of them in each arch; three bands.
    const struct
    {
        ScenePart part;
        int groupCount;
        std::vector<const char *> missing, kept;
    } rows[] = {
        {ScenePart::UpperArch,
         86 + 3 - 43 - 2,
         {"upper_gums", "tooth_8", "bracket_8", "button_8l", "elastic_0", "elastic_1"},
         {"lower_gums", "tooth_24", "elastic_2"}},
        {ScenePart::LowerArch,
         86 + 3 - 43 - 2,
         {"lower_gums", "tooth_24", "button_24l", "elastic_1", "elastic_2"},
         {"upper_gums", "tooth_8", "elastic_0"}},
        {ScenePart::Gums, 86 + 3 - 2, {"upper_gums", "lower_gums"}, {"tooth_8", "elastic_0"}},
        {ScenePart::Brackets, 86 + 3 - 28, {"bracket_8", "bracket_24"}, {"tooth_8", "elastic_0"}},
        {ScenePart::Buttons, 86 + 3 - 28, {"button_8l", "button_24l"}, {"tooth_8", "elastic_2"}},
        {ScenePart::Elastics, 86, {"elastic_0", "elastic_1", "elastic_2"}, {"tooth_8"}},
    };
    for (const auto &row : rows) {
        view->setShowsScenePart(row.part, false);
        const QByteArray text = viewer::sceneAsOBJ(*view);
        EXPECT_EQ(groupCount(text), row.groupCount);
        for (const char *group : row.missing)
            EXPECT_EQ(text.count(QByteArray("\no ") + group + "\n"), 0) << group;
        for (const char *group : row.kept)
            EXPECT_EQ(text.count(QByteArray("\no ") + group + "\n"), 1) << group;
        view->setShowsScenePart(row.part, true);
    }
    EXPECT_EQ(groupCount(viewer::sceneAsOBJ(*view)), 86 + 3) << "what is shown again is back";
    EXPECT_NO_GL_ERROR();
}

TEST_F(SceneExport, theOpenedJawIsExportedWhereItStands)
{
    view->setMouthOpenAngle(30.0f);
    QTemporaryFile file;
    ASSERT_TRUE(file.open());
    file.write(viewer::sceneAsOBJ(*view));
    file.close();
    OBJVertex *vertices = nullptr;
    std::uint32_t *indexes = nullptr;
    std::uint32_t vertexCount = 0, indexCount = 0;
    ASSERT_TRUE(loadOBJFile(file.fileName().toUtf8().constData(), &vertices, &vertexCount, &indexes,
                            &indexCount));
    EXPECT_EQ(vertexCount, 86u * 24u);
    EXPECT_EQ(indexCount, 86u * 36u);
    // The first vertex of the scene is the upper gum's first.
    const auto gum = document->upperGumModel()->vertices()[0];
    const Vector3 expected = Matrix_multiplyVector3(
        view->upperMouthTransform(), {gum.position[0], gum.position[1], gum.position[2]});
    EXPECT_FLOAT_EQ(vertices[0].position[0], expected.x);
    EXPECT_FLOAT_EQ(vertices[0].position[1], expected.y);
    EXPECT_FLOAT_EQ(vertices[0].position[2], expected.z);
    EXPECT_NE(vertices[0].position[2], gum.position[2]);
    std::free(vertices);
    std::free(indexes);
    EXPECT_NO_GL_ERROR();
}
