// A pick of one pixel beside a pass over the whole picture.

#include "platform/gl.h"

#include "document/DXDocumentModel.h"
#include "keloModel/TreatmentNote.h"
#include "models/DXGLightweightModel.h"
#include "tests/keloOpenGL/ViewFixture.h"
#include "tests/keloOpenGL/treatment/PickFixture.h"

#include <QDateTime>

#include <array>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace {

using namespace kelo;
using kelo::test::IdentifierPicture;
using kelo::test::PickView;

std::shared_ptr<DXDocumentModel> samplePatient()
{
    const auto document = std::make_shared<DXDocumentModel>();
    document->loadUpperAndLowerGumModels();
    std::vector<std::string> toothKeys = TreatmentNote::upperToothNameKeys();
    std::vector<std::string> buttonKeys = TreatmentNote::upperLingualButtonNameKeys();
    for (const std::string &key : TreatmentNote::lowerToothNameKeys())
        toothKeys.push_back(key);
    for (const std::string &key : TreatmentNote::lowerLingualButtonNameKeys())
        buttonKeys.push_back(key);
    document->loadToothModelFilesForToothNameKeys(toothKeys);
    document->loadBracketModelFilesForToothNameKeys(toothKeys);
    document->loadButtonModelFilesForButtonNameKeys(buttonKeys);
    return document;
}

/// How the patient is seen: an angle and an axis, the open mouth, and how near.
struct Pose
{
    HVOGLBasicView::Rotation rotation;
    float mouthOpenAngle;
    double zoomFactor;
};

const Pose poses[] = {
    {{90.0f, -1.0f, 0.0f, 0.0f}, 0.0f, 1.0f},     // front, closed
    {{90.0f, -1.0f, 0.0f, 0.0f}, 35.0f, 1.0f},    // front, open downwards
    {{90.0f, -1.0f, 0.0f, 0.0f}, -55.0f, 1.0f},   // front, open upwards
    {{120.0f, -1.0f, 1.0f, 1.0f}, 15.0f, 1.0f},   // one side
    {{120.0f, -1.0f, -1.0f, -1.0f}, 55.0f, 1.0f}, // the other side
    {{180.0f, 0.0f, 1.0f, 1.0f}, 0.0f, 1.0f},     // from behind, on the buttons
    {{0.0f, 1.0f, 0.0f, 0.0f}, 20.0f, 1.0f},      // from above
    {{77.0f, -0.9f, 0.3f, 0.2f}, -22.0f, 0.3f},   // near
    {{205.0f, 0.2f, 0.8f, 0.9f}, 40.0f, 0.1f},    // very near, from behind
    {{101.0f, -1.0f, 0.2f, -0.4f}, 12.0f, 4.0f},  // far away: models of a few pixels
};

/// Zooms about the middle of what is seen.
void zoom(DXOpenGL &view, double factor)
{
    const WindowLimits box = view.zoomBox();
    const double x = (box.xMin + box.xMax) * 0.5, halfWidth = (box.xMax - box.xMin) * 0.5 * factor;
    const double y = (box.yMin + box.yMax) * 0.5, halfHeight = (box.yMax - box.yMin) * 0.5 * factor;
    view.setZoomData(DXOpenGL::zoomDataWithXMin_xMax_yMin_yMax(x - halfWidth, x + halfWidth,
                                                               y - halfHeight, y + halfHeight));
}

/// Pixels whose right or upper neighbour is something else: where a box that is a little too small
/// would show.
std::vector<std::array<int, 2>> edgePixels(const IdentifierPicture &picture)
{
    std::vector<std::array<int, 2>> pixels;
    for (int row = 0; row + 1 < picture.size.height; ++row) {
        for (int column = 0; column + 1 < picture.size.width; ++column) {
            const std::uint32_t here = picture.at(column, row);
            if (here != picture.at(column + 1, row) || here != picture.at(column, row + 1))
                pixels.push_back({column, row});
        }
    }
    return pixels;
}

/// Picks at random pixels, half of them on edges, and says where a pick differs from the full pass.
std::vector<std::string> differences(PickView &view, const IdentifierPicture &picture,
                                     int pointCount, std::mt19937 &random)
{
    const std::vector<std::array<int, 2>> edges = edgePixels(picture);
    std::uniform_int_distribution<int> anyColumn(0, picture.size.width - 1);
    std::uniform_int_distribution<int> anyRow(0, picture.size.height - 1);
    std::uniform_int_distribution<std::size_t> anyEdge(0, edges.empty() ? 0 : edges.size() - 1);
    std::vector<std::string> found;
    for (int i = 0; i < pointCount; ++i) {
        std::array<int, 2> pixel{anyColumn(random), anyRow(random)};
        if (i % 2 == 1 && !edges.empty()) pixel = edges[anyEdge(random)];
        const std::uint32_t expected = picture.at(pixel[0], pixel[1]);
        const std::uint32_t picked = view.pickIdentifierAtPoint(
            {static_cast<double>(pixel[0]), static_cast<double>(pixel[1])});
        if (picked == expected) continue;
        found.push_back(std::to_string(picked) + " instead of " + std::to_string(expected) +
                        " at " + std::to_string(pixel[0]) + ", " + std::to_string(pixel[1]));
    }
    return found;
}

class PickingComparison : public kelo::test::ViewFixture
{
protected:
    PickingComparison()
    {
        const QDateTime today(QDate(2026, 11, 20), QTime(0, 0));
        for (const auto &keys : std::vector<std::vector<std::string>>{
                 {"6", "27"}, {"11", "22"}, {"3", "30l", "29"}, {"14", "19"}})
            kelo::test::addElastic(*document, keys);
        view->setDocumentModel(document);
        view->setCurrentDate(today);
        view->setDisplayedDate(today); // all of the overlay
    }
    void take(const Pose &pose)
    {
        view->zoomToFit();
        zoom(*view, pose.zoomFactor);
        view->setWorldRotationAngle_axis(pose.rotation[0], pose.rotation[1], pose.rotation[2],
                                         pose.rotation[3]);
        view->setMouthOpenAngle(pose.mouthOpenAngle);
    }

    std::shared_ptr<DXDocumentModel> document = samplePatient();
    std::shared_ptr<PickView> view = makeView<PickView>(Rect{{0.0, 0.0}, {400.0, 300.0}});
};

} // namespace

TEST_F(PickingComparison, twentyThousandPicksReadWhatAWholePassShows)
{
    std::mt19937 random(5202u);
    std::set<std::uint32_t> seen;
    for (const Pose &pose : poses) {
        take(pose);
        const IdentifierPicture picture = view->fullPass();
        seen.insert(picture.identifiers.begin(), picture.identifiers.end());
        EXPECT_EQ(differences(*view, picture, 2000, random), std::vector<std::string>{})
            << "mouth " << pose.mouthOpenAngle << ", zoom " << pose.zoomFactor;
    }
    // The poses show the background, every model and every elastic, so that each had its chance to
    // be missed.
    EXPECT_TRUE(seen.count(0));
    for (const auto &model : document->models())
        EXPECT_TRUE(seen.count(static_cast<std::uint32_t>(model->uniqueID()))) << model->uniqueID();
    for (std::uint32_t i = 0; i < document->elasticModels().size(); ++i)
        EXPECT_TRUE(seen.count(0x800000 + i)) << "elastic " << i;
    EXPECT_NO_GL_ERROR();
}

TEST_F(PickingComparison, fractionalScalesReadTheSamePixelsToo)
{
    std::mt19937 random(5203u);
    for (const double scale : {1.25, 1.5, 1.75, 2.0, 3.0}) {
        view->setSurfacelessScaleFactor(scale);
        take(poses[1]);
        const IdentifierPicture picture = view->fullPass();
        EXPECT_EQ(picture.size, view->deviceSize());
        EXPECT_EQ(differences(*view, picture, 100, random), std::vector<std::string>{}) << scale;
    }
    EXPECT_NO_GL_ERROR();
}

TEST_F(PickingComparison, aModelThatIsLeftOutWronglyWouldBeFound)
{
    std::mt19937 random(5204u);
    take(poses[0]);
    const IdentifierPicture picture = view->fullPass();
    view->neverDrawn = document->toothModels().at("8")->uniqueID();
    EXPECT_GT(differences(*view, picture, 2000, random).size(), 0u);
    EXPECT_NO_GL_ERROR();
}
