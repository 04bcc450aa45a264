// Bands as they are handed to OpenGL.

#include "platform/gl.h"

#include "keloOpenGL/treatment/DXOpenGL.h"

#include "document/ElasticModel.h"
#include "keloModel/ElasticsSizeType.h"
#include "tests/keloOpenGL/ViewFixture.h"
#include "tests/support/CapturedOutput.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

namespace {

using namespace kelo;
using kelo::test::standardErrorOf;

using Keys = std::vector<std::string>;

/// Every draw and every fill of a buffer while this lives, in order.
class RecordedCalls
{
public:
    struct Draw
    {
        GLenum mode;
        GLsizei count;
        GLenum type;
        GLfloat shininess; ///< of the material that it is drawn with
        bool isBand() const
        {
            return mode == GL_QUADS && type == GL_UNSIGNED_INT && count % 48 == 0;
        }
    };
    struct Fill
    {
        GLenum target;
        GLsizeiptr size;
        bool hasData;
        GLenum usage;
    };

    RecordedCalls() : keptDraw_(epoxy_glDrawElements), keptFill_(epoxy_glBufferData)
    {
        current = this;
        epoxy_glDrawElements = [](GLenum mode, GLsizei count, GLenum type, const void *indices) {
            GLfloat shininess = 0.0f;
            glGetMaterialfv(GL_FRONT, GL_SHININESS, &shininess);
            current->draws.push_back({mode, count, type, shininess});
            current->keptDraw_(mode, count, type, indices);
        };
        epoxy_glBufferData = [](GLenum target, GLsizeiptr size, const void *data, GLenum usage) {
            current->fills.push_back({target, size, data != nullptr, usage});
            current->keptFill_(target, size, data, usage);
        };
    }
    ~RecordedCalls()
    {
        epoxy_glDrawElements = keptDraw_;
        epoxy_glBufferData = keptFill_;
        current = nullptr;
    }

    std::vector<Draw> draws;
    std::vector<Fill> fills;

private:
    static inline RecordedCalls *current = nullptr;
    PFNGLDRAWELEMENTSPROC keptDraw_;
    PFNGLBUFFERDATAPROC keptFill_;
};

class DXOpenGLBands : public kelo::test::ViewFixture
{
protected:
    DXOpenGLBands()
    {
        document = kelo::test::boxDocument();
        size = std::make_shared<ElasticsSizeType>();
        size->typeID = 3;
        size->typeLabel = "1/4\" 3.5 oz";
        size->elasticsColor = {0.0, 1.0, 0.0, 1.0};
        document->setAvailableElasticsSizeTypes({{3, size}});
        view->setDocumentModel(document);
        view->display();
    }

    void place(const Keys &keys)
    {
        document->placeElasticModel(std::make_shared<ElasticModel>(nullptr, size, keys));
    }

    /// Strings an elastic over brackets as clicks do it, and leaves it open.
    void string(const Keys &keys)
    {
        view->setMouseMode(HVOGLBasicView::elasticsMode);
        for (const std::string &key : keys)
            document->bracketModels().at(key)->setHiddenPrimary(false);
        view->setFirstClickedToothName(keys[0]);
        view->setLastClickedToothName(keys[0]);
        MenuItem row;
        row.representedObject = size;
        view->startElasticColorMenuItemSelected(row);
        for (std::size_t i = 1; i < keys.size(); ++i)
            clickOn(document->bracketModels().at(keys[i])->uniqueID());
        ASSERT_EQ(view->bracketSequence(), std::optional(keys));
    }

    void clickOn(std::uint64_t identifier)
    {
        const auto identifiers = view->pickIdentifiers();
        const auto found = std::find(identifiers.begin(), identifiers.end(), identifier);
        ASSERT_NE(found, identifiers.end());
        const auto index = found - identifiers.begin();
        const auto width = view->deviceSize().width;
        view->sendEvent(eventAt(EventType::LeftMouseDown, static_cast<double>(index % width),
                                static_cast<double>(index / width)));
    }

    static std::vector<RecordedCalls::Draw> bandsOf(const RecordedCalls &calls)
    {
        std::vector<RecordedCalls::Draw> bands;
        std::copy_if(calls.draws.begin(), calls.draws.end(), std::back_inserter(bands),
                     [](const auto &draw) { return draw.isBand(); });
        return bands;
    }

    void draw(const Keys &keys, bool closeLoop)
    {
        view->drawRubberBand_color_closeLoop_colorPickMode_colorPickID(
            keys, Color(0.0, 1.0, 0.0, 1.0), closeLoop, false, 0);
    }

    std::shared_ptr<DXDocumentModel> document;
    std::shared_ptr<ElasticsSizeType> size;
    std::shared_ptr<DXOpenGL> view = makeView<DXOpenGL>(Rect{{0.0, 0.0}, {400.0, 300.0}});
};

TEST_F(DXOpenGLBands, aClosedBandOverTwoUpperHooksDraws96Indices)
{
    const RecordedCalls calls;
    draw({"3", "5"}, true);
    ASSERT_EQ(calls.draws.size(), 1u);
    EXPECT_EQ(calls.draws[0].mode, static_cast<GLenum>(GL_QUADS));
    EXPECT_EQ(calls.draws[0].count, 96);
    EXPECT_EQ(calls.draws[0].type, static_cast<GLenum>(GL_UNSIGNED_INT));
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLBands, theSameTwoKeysOpenDraw48Indices)
{
    const RecordedCalls calls;
    draw({"3", "5"}, false);
    ASSERT_EQ(calls.draws.size(), 1u);
    EXPECT_EQ(calls.draws[0].count, 48);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLBands, theBuffersAreThrownAwayAndStreamedAnewForEveryBand)
{
    const RecordedCalls calls;
    draw({"3", "5"}, true);
    draw({"3", "5", "8"}, false);
    ASSERT_EQ(calls.fills.size(), 4u);
    const GLsizeiptr sizes[] = {288 * 2, 192 * 2, 288 * 3, 192 * 3};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(calls.fills[i].target,
                  static_cast<GLenum>(i % 2 == 0 ? GL_ARRAY_BUFFER : GL_ELEMENT_ARRAY_BUFFER));
        EXPECT_EQ(calls.fills[i].size, sizes[i]);
        EXPECT_FALSE(calls.fills[i].hasData);
        EXPECT_EQ(calls.fills[i].usage, static_cast<GLenum>(GL_STREAM_DRAW));
    }
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLBands, everyPlacedElasticIsOneDraw)
{
    const auto drawsOfAFrame = [this] {
        const RecordedCalls calls;
        view->display();
        return calls.draws.size();
    };
    const std::size_t without = drawsOfAFrame();
    place({"6", "30"});
    place({"11", "22", "21"});
    place({"13", "14", "19", "20"});
    EXPECT_EQ(drawsOfAFrame(), without + 3);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLBands, aKeyWithoutAHookIsToldOnceADrawAndItsBandIsLeftOut)
{
    place({"6", "30"});
    // The document does not ask whether hooks exist.
    document->elasticModels().push_back(
        std::make_shared<ElasticModel>(nullptr, size, Keys{"8", "16", "17"}));
    place({"11", "22"});
    const std::string message =
        "Hook position for bracket \"16\" not defined; cannot draw elastics (check the bracket "
        "names passed -loadBracketModelFiles:; should be @\"2\" - @\"15\" and @\"18\" - "
        "@\"31\")\n";
    const RecordedCalls calls;
    EXPECT_EQ(standardErrorOf([this] { view->display(); }), message);
    EXPECT_EQ(bandsOf(calls).size(), 2u) << "the other bands of the frame are drawn";
    EXPECT_EQ(standardErrorOf([this] { view->display(); }), message);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLBands, theMessageHasTheKeysUTF8Text)
{
    EXPECT_EQ(standardErrorOf([this] {
                  draw({"8", "zw\u00f6lf"}, true);
              }),
              "Hook position for bracket \"zw\u00f6lf\" not defined; cannot draw elastics (check "
              "the bracket names passed -loadBracketModelFiles:; should be @\"2\" - @\"15\" and "
              "@\"18\" - @\"31\")\n");
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLBands, noKeysDrawNothing)
{
    const RecordedCalls calls;
    draw({}, true);
    draw({}, false);
    EXPECT_TRUE(calls.draws.empty());
    EXPECT_TRUE(calls.fills.empty());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLBands, inColourPickModeTheElasticAtIndex300IsDrawnWithBlue44)
{
    glColor3ub(1, 2, 3);
    view->drawRubberBand_color_closeLoop_colorPickMode_colorPickID({"3", "5"}, std::nullopt, true,
                                                                   true, 300);
    GLfloat color[4] = {};
    glGetFloatv(GL_CURRENT_COLOR, color);
    EXPECT_NEAR(color[0] * 255.0, 128.0, 0.01);
    EXPECT_EQ(color[1], 0.0f);
    EXPECT_NEAR(color[2] * 255.0, 44.0, 0.01);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLBands, theMaterialHasTheBandsColourAndShininessFour)
{
    draw({"3", "5"}, true);
    GLfloat diffuse[4] = {};
    GLfloat shininess = 0.0f;
    glGetMaterialfv(GL_FRONT, GL_DIFFUSE, diffuse);
    glGetMaterialfv(GL_FRONT, GL_SHININESS, &shininess);
    EXPECT_EQ(shininess, 4.0f);
    EXPECT_EQ(diffuse[0], 0.0f);
    EXPECT_GT(diffuse[1], 0.5f);
    EXPECT_EQ(diffuse[2], 0.0f);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLBands, theBandBeingPlacedHasItsMaterialWhilePickingToo)
{
    string({"6", "28"});
    const RecordedCalls calls;
    view->pickIdentifiers();
    const auto bands = bandsOf(calls);
    ASSERT_EQ(bands.size(), 1u);
    EXPECT_EQ(bands[0].count, 48) << "an open band over two hooks";
    EXPECT_EQ(bands[0].shininess, 4.0f);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLBands, aPlacedBandHasNoMaterialInAPick)
{
    place({"6", "28"});
    GLfloat shininess = 17.0f;
    glMaterialf(GL_FRONT, GL_SHININESS, shininess);
    const RecordedCalls calls;
    view->pickIdentifiers();
    const auto bands = bandsOf(calls);
    ASSERT_EQ(bands.size(), 1u);
    EXPECT_EQ(bands[0].shininess, shininess);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLBands, aPlacementOfASingleKeyDrawsNoBand)
{
    string({"6"});
    const RecordedCalls calls;
    view->display();
    EXPECT_TRUE(bandsOf(calls).empty());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLBands, afterADrawNoBufferIsBoundAndTheArraysAreOff)
{
    draw({"6", "25"}, true);
    GLint bound = -1;
    glGetIntegerv(GL_ARRAY_BUFFER_BINDING, &bound);
    EXPECT_EQ(bound, 0);
    glGetIntegerv(GL_ELEMENT_ARRAY_BUFFER_BINDING, &bound);
    EXPECT_EQ(bound, 0);
    EXPECT_FALSE(glIsEnabled(GL_VERTEX_ARRAY));
    EXPECT_FALSE(glIsEnabled(GL_NORMAL_ARRAY));
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLBands, bandsFollowTheJawsWhenTheMouthOpens)
{
    place({"6", "30"});
    const QImage closed = view->grabImage();
    view->setMouthOpenAngle(30.0f);
    const QImage open = view->grabImage();
    const auto greenRows = [](const QImage &image) {
        int first = image.height(), last = -1;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor pixel = image.pixelColor(x, y);
                if (pixel.green() < pixel.red() + 40 || pixel.green() < pixel.blue() + 40) continue;
                first = std::min(first, y);
                last = std::max(last, y);
            }
        }
        return last - first;
    };
    EXPECT_GT(greenRows(closed), 0);
    EXPECT_GT(greenRows(open), greenRows(closed));
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLBands, theListOfElasticsHasEachOnceInPlacingOrder)
{
    place({"6", "30"});
    place({"11", "22", "21"});
    place({"6", "27", "6l"});
    const auto listed = view->elasticsForToothNames({"6", "27", "5"});
    ASSERT_EQ(listed.size(), 2u);
    EXPECT_EQ(listed[0].brackets, (Keys{"6", "30"}));
    EXPECT_EQ(listed[1].brackets, (Keys{"6", "27", "6l"}));
    EXPECT_EQ(listed[0].name, "1/4\" 3.5 oz");
    EXPECT_EQ(listed[0].color, Color(0.0, 1.0, 0.0, 1.0));
    EXPECT_TRUE(view->elasticsForToothNames({}).empty());
    EXPECT_TRUE(view->elasticsForToothNames({"2"}).empty());
    EXPECT_NO_GL_ERROR();
}

} // namespace
