// The printer of the arches with a scene that paints one colour for each direction.

#include "keloOpenGL/printing/ArchPrinter.h"

#include "platform/gl.h"

#include "keloModel/TreatmentNote.h"
#include "models/HVOGLMaterial.h"
#include "tests/keloOpenGL/ViewFixture.h"

#include <new>
#include <string>
#include <vector>

namespace {

using namespace kelo;

/// Red from the left, green from the front, blue from the right; writes down what is asked of it.
class PaintedScene : public PrintedScene
{
public:
    explicit PaintedScene(OpenGLView &view) : view_(view) {}

    OpenGLContext &context() override { return view_.openGLContext(); }
    std::string openGLExtensions() const override { return extensions; }
    unsigned framebufferStatus() const override
    {
        return status ? status : glCheckFramebufferStatusEXT(GL_FRAMEBUFFER_EXT);
    }
    const DXDocumentModel *document() const override { return shown.get(); }
    void enterCamera(const Size &viewSize) override
    {
        EXPECT_EQ(viewSize, (Size{800.0, 400.0}));
        steps += "enter ";
    }
    void leaveCamera() override { steps += "leave"; }
    void draw(const std::array<float, 4> &rotation) override
    {
        steps += "draw ";
        wasPrinting = wasPrinting && printer && printer->isPrinting();
        wasShown = wasShown || !context().isFlushSuppressed();
        if (shown) whiteBrackets += shown->bracketModels().at("8")->material()->color()->blue > 0.9;
        if (fails) throw std::bad_alloc();
        glClearColor(rotation == leftArch.rotation, rotation == frontArch.rotation,
                     rotation == rightArch.rotation, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT);
    }

    std::string extensions = "GL_EXT_framebuffer_object";
    unsigned status = 0;
    std::shared_ptr<DXDocumentModel> shown;
    const ArchPrinter *printer = nullptr;
    bool fails = false;
    std::string steps;
    bool wasPrinting = true;
    bool wasShown = false;
    int whiteBrackets = 0;

private:
    OpenGLView &view_;
};

class ArchPrinterTest : public kelo::test::ViewFixture
{
protected:
    ArchPrinterTest()
    {
        view.openGLContext().makeCurrentContext();
        scene.printer = &printer;
    }

    ArchPrint print(int scale = 1)
    {
        return printer.print(scene, scale, ArchPrinter::DepthBuffer::Drop);
    }

    static GLint integer(GLenum name)
    {
        GLint value = -1;
        glGetIntegerv(name, &value);
        return value;
    }

    OpenGLView view{Rect{{0.0, 0.0}, {20.0, 10.0}}};
    PaintedScene scene{view};
    ArchPrinter printer;
};

TEST_F(ArchPrinterTest, thePicturesAreDrawnInTurnBetweenEnteringAndLeaving)
{
    const ArchPrint print = this->print();
    ASSERT_FALSE(print.refusal);
    EXPECT_EQ(scene.steps, "enter draw draw draw leave");
    EXPECT_TRUE(scene.wasPrinting);
    EXPECT_FALSE(scene.wasShown);
    EXPECT_FALSE(printer.isPrinting());
    EXPECT_EQ(print.pixels.leftImage().size(), QSize(725, 400));
    EXPECT_EQ(print.pixels.frontImage().size(), QSize(800, 400));
    EXPECT_EQ(print.pixels.rightImage().size(), QSize(725, 400));
    EXPECT_EQ(print.pixels.leftImage().pixelColor(0, 0), QColor(255, 0, 0));
    EXPECT_EQ(print.pixels.frontImage().pixelColor(799, 399), QColor(0, 255, 0));
    EXPECT_EQ(print.pixels.rightImage().pixelColor(724, 0), QColor(0, 0, 255));
    EXPECT_NO_GL_ERROR();
}

TEST_F(ArchPrinterTest, aScaleIsTakenBetweenOneAndFour)
{
    const std::pair<int, int> scales[] = {{-3, 1}, {0, 1}, {2, 2}, {4, 4}, {9, 4}};
    for (const auto &[asked, given] : scales) {
        const ArchPrint print = this->print(asked);
        EXPECT_EQ(print.pixels.scale, given) << asked;
        EXPECT_EQ(print.pixels.frontImage().size(), QSize(800 * given, 400 * given)) << asked;
        EXPECT_EQ(print.pixels.left.size(), std::size_t{3} * 725 * 400 * given * given) << asked;
    }
    EXPECT_NO_GL_ERROR();
}

TEST_F(ArchPrinterTest, withoutFramebufferObjectsItRefusesWithoutAStatus)
{
    scene.extensions = "GL_ARB_multitexture";
    const ArchPrint print = this->print();
    ASSERT_TRUE(print.refusal);
    EXPECT_FALSE(print.refusal->framebufferStatus);
    EXPECT_EQ(scene.steps, "");
    EXPECT_NO_GL_ERROR();
}

TEST_F(ArchPrinterTest, anIncompleteFramebufferIsRefusedWithItsStatus)
{
    scene.status = 0x8CDD;
    const ArchPrint print = this->print();
    ASSERT_TRUE(print.refusal);
    EXPECT_EQ(print.refusal->framebufferStatus, 0x8CDDu);
    EXPECT_EQ(scene.steps, "");
    EXPECT_TRUE(print.pixels.front.empty());
    EXPECT_EQ(integer(GL_FRAMEBUFFER_BINDING_EXT), 0);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ArchPrinterTest, bracketsAreWhiteWhileTheSceneIsDrawn)
{
    scene.shown = kelo::test::boxDocument();
    const auto red = HVOGLMaterial::materialWithColor(Color{1.0, 0.0, 0.0, 1.0});
    scene.shown->bracketModels().at("8")->setMaterial(red);
    print();
    EXPECT_EQ(scene.whiteBrackets, 3);
    EXPECT_EQ(scene.shown->bracketModels().at("8")->material(), red);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ArchPrinterTest, aDrawingThatFailsLeavesNothingBehind)
{
    scene.fails = true;
    EXPECT_THROW(print(), std::bad_alloc);
    EXPECT_EQ(scene.steps, "enter draw leave");
    EXPECT_FALSE(printer.isPrinting());
    EXPECT_FALSE(view.openGLContext().isFlushSuppressed());
    EXPECT_EQ(integer(GL_PROJECTION_STACK_DEPTH), 1);
    EXPECT_EQ(integer(GL_MATRIX_MODE), GL_MODELVIEW);
    EXPECT_EQ(integer(GL_FRAMEBUFFER_BINDING_EXT), 0);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ArchPrinterTest, eachPictureListsTheTeethOfItsSide)
{
    EXPECT_EQ(leftArch.toothNameKeys(), TreatmentNote::leftElasticToothNameKeys());
    EXPECT_EQ(frontArch.toothNameKeys(), TreatmentNote::frontElasticToothNameKeys());
    EXPECT_EQ(rightArch.toothNameKeys(), TreatmentNote::rightElasticToothNameKeys());
}

} // namespace
