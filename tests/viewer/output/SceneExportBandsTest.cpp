// Where the bands of an exported scene lie.

#include "viewer/output/SceneExport.h"

#include "document/ElasticModel.h"
#include "keloModel/ElasticsSizeType.h"
#include "keloOpenGL/bands/RubberBandTables.h"
#include "keloOpenGL/keloOpenGL.h"
#include "tests/keloOpenGL/ViewFixture.h"

#include <QList>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace kelo;

namespace {

double distance(const Vector3 &a, const Vector3 &b)
{
    return std::hypot(a.x - b.x, a.y - b.y, a.z - b.z);
}

/// The vertices of a group of an OBJ text.
std::vector<Vector3> verticesOf(const QByteArray &text, const QByteArray &group)
{
    std::vector<Vector3> vertices;
    bool isInGroup = false;
    for (const QByteArray &line : text.split('\n')) {
        if (line.startsWith("o ")) isInGroup = line == "o " + group;
        if (!isInGroup || !line.startsWith("v ")) continue;
        const QList<QByteArray> words = line.split(' ');
        vertices.push_back(
            {words.value(1).toFloat(), words.value(2).toFloat(), words.value(3).toFloat()});
    }
    return vertices;
}

class SceneExportBands : public kelo::test::ViewFixture
{
protected:
    SceneExportBands()
    {
        const auto size = std::make_shared<ElasticsSizeType>();
        document->placeElasticModel(
            std::make_shared<ElasticModel>(nullptr, size, std::vector<std::string>{"6", "27"}));
        view->setDocumentModel(document);
    }

    static double nearest(const std::vector<Vector3> &vertices, const Vector3 &point)
    {
        double least = std::numeric_limits<double>::infinity();
        for (const Vector3 &vertex : vertices)
            least = std::min(least, distance(vertex, point));
        return least;
    }

    std::shared_ptr<DXDocumentModel> document = kelo::test::boxDocument();
    std::shared_ptr<DXOpenGL> view = makeView<DXOpenGL>(Rect{{0, 0}, {200, 100}});
};

} // namespace

TEST_F(SceneExportBands, aBandRunsRoundItsHooksOnBothJawsHoweverFarTheMouthIsOpen)
{
    const bracketHookInfo &upper = bracketHookPositions().at("6");
    const bracketHookInfo &lower = bracketHookPositions().at("27");
    for (const float angle : {0.0f, 40.0f}) {
        view->setMouthOpenAngle(angle);
        const auto vertices = verticesOf(viewer::sceneAsOBJ(*view), "elastic_0");
        ASSERT_FALSE(vertices.empty()) << angle;
        const Vector3 atUpper = Matrix_multiplyVector3(view->upperMouthTransform(), upper.position);
        const Vector3 atLower = Matrix_multiplyVector3(view->lowerMouthTransform(), lower.position);
        // A band touches its hook: it is one radius and its own half thickness from the middle.
        EXPECT_LT(nearest(vertices, atUpper), upper.radius + 1.0) << angle;
        EXPECT_LT(nearest(vertices, atLower), lower.radius + 1.0) << angle;
        if (angle == 0.0f) continue;
        EXPECT_GT(distance(atUpper, upper.position) + distance(atLower, lower.position), 10.0)
            << "the jaws moved apart";
        EXPECT_GT(distance(atUpper, atLower), distance(upper.position, lower.position) + 10.0);
    }
    EXPECT_NO_GL_ERROR();
}
