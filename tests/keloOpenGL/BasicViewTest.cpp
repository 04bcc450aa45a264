#include "platform/gl.h"

#include "base/Assertion.h"
#include "keloOpenGL/view/HVOGLBasicView.h"
#include "tests/keloOpenGL/ViewFixture.h"
#include "tests/support/CapturedOutput.h"

#include <utility>
#include <vector>

using namespace kelo;
using kelo::test::ViewFixture;

namespace {

class TickingView : public HVOGLBasicView
{
public:
    TickingView() : HVOGLBasicView(Rect{{0, 0}, {200, 100}}) {}
    void animationForTimer(Timer &timer) override
    {
        HVOGLBasicView::animationForTimer(timer);
        ticks.push_back(time());
    }
    std::vector<double> ticks;
};

class BasicView : public ViewFixture
{
protected:
    std::shared_ptr<TickingView> view = makeView<TickingView>();
};

} // namespace

TEST_F(BasicView, theWindowHasADoubleBufferAnd24BitsOfDepthAndNothingElse)
{
    EXPECT_EQ(HVOGLBasicView::basicPixelFormat(),
              (PixelFormat{.doubleBuffer = true, .depthSize = 24}));
    EXPECT_EQ(view->pixelFormat(), HVOGLBasicView::basicPixelFormat());
}

TEST_F(BasicView, aFreshViewHasAUnitZoomBoxAndNoDrawnFrame)
{
    EXPECT_EQ(view->zoomBox(), (WindowLimits{-1, 1, -1, 1}));
    EXPECT_EQ(view->zMin(), -1.0);
    EXPECT_EQ(view->zMax(), 1.0);
    EXPECT_TRUE(view->isFirstDrawRect());
    EXPECT_FALSE(view->isInColorPickMode());
}

TEST_F(BasicView, wakingUpSetsTimeOrientationAndColours)
{
    EXPECT_EQ(view->time(), 1000.0);
    EXPECT_EQ(view->worldRotation(), (HVOGLBasicView::Rotation{90.0f, -1.0f, 0.0f, 0.0f}));
    EXPECT_EQ(view->clearColor(), (Color{0.29, 0.58, 0.73, 1.0}));
    EXPECT_EQ(view->ambientColor(), (Color{0.2, 0.2, 0.2, 1.0}));
    EXPECT_EQ(view->diffuseColor(), (Color{0.62, 0.62, 0.62, 1.0}));
    EXPECT_EQ(view->specularColor(), (Color{1.0, 1.0, 1.0, 1.0}));
}

TEST_F(BasicView, everyColourSetterAsksForARedraw)
{
    const Color red{1.0, 0.0, 0.0, 1.0};
    const auto asksForRedraw = [this](auto &&setter) {
        view->setNeedsDisplay(false);
        setter();
        return view->needsDisplay();
    };
    EXPECT_TRUE(asksForRedraw([&] { view->setClearColor(red); }));
    EXPECT_TRUE(asksForRedraw([&] { view->setAmbientColor(red); }));
    EXPECT_TRUE(asksForRedraw([&] { view->setDiffuseColor(red); }));
    EXPECT_TRUE(asksForRedraw([&] { view->setSpecularColor(red); }));
    EXPECT_TRUE(asksForRedraw([&] { view->modelChanged(); }));
}

TEST_F(BasicView, aMouthOpenAngleOf70Stores55AndOneOfMinus80StoresMinus55)
{
    view->setNeedsDisplay(false);
    view->setMouthOpenAngle(70.0f);
    EXPECT_EQ(view->mouthOpenAngle(), 55.0f);
    EXPECT_TRUE(view->needsDisplay());
    view->setMouthOpenAngle(-80.0f);
    EXPECT_EQ(view->mouthOpenAngle(), -55.0f);
    view->setMouthOpenAngle(12.5f);
    EXPECT_EQ(view->mouthOpenAngle(), 12.5f);
}

TEST_F(BasicView, elapsedTimeCountsFromTheStartTime)
{
    clock->advance(2.5);
    EXPECT_EQ(view->elapsedTime(), 2.5);
    view->initializeStartTime();
    EXPECT_EQ(view->elapsedTime(), 0.0);
    clock->setTime(900.0);
    clock->advance(1.0);
    EXPECT_EQ(view->elapsedTime(), 1.0) << "the user has set the clock meanwhile";
}

TEST_F(BasicView, theAnimationTimerTicksEverySixtiethOfASecondUntilStopped)
{
    view->startAnimationTimer();
    EXPECT_TRUE(view->animationTimerIsRunning());
    clock->advance(0.1);
    EXPECT_EQ(view->ticks.size(), 5u); // the sixth is due at 0.1000000004
    EXPECT_DOUBLE_EQ(view->ticks.front(), 1000.0 + 0.01666666753590107);
    EXPECT_EQ(view->time(), view->ticks.back());
    view->stopAnimationTimer();
    EXPECT_FALSE(view->animationTimerIsRunning());
    clock->advance(1.0);
    EXPECT_EQ(view->ticks.size(), 5u);
}

TEST_F(BasicView, startingTheTimerTwiceLeavesOneTimer)
{
    view->startAnimationTimer();
    view->startAnimationTimer();
    clock->advance(0.05);
    EXPECT_EQ(view->ticks.size(), 2u);
}

TEST_F(BasicView, theTimerTicksWhileTheMouseIsHeldToo)
{
    view->startAnimationTimer();
    const RunLoop::ModeScope tracking(*clock, RunLoopMode::EventTracking);
    clock->advance(0.05);
    EXPECT_EQ(view->ticks.size(), 2u);
}

TEST_F(BasicView, aDestroyedViewsTimerNeverFiresAgain)
{
    view->startAnimationTimer();
    view.reset();
    clock->advance(1.0);
}

TEST_F(BasicView, errorsAreReportedByCodeAndName)
{
    struct Row
    {
        unsigned code;
        const char *report;
    };
    const Row rows[] = {
        {1280, "OpenGL error: 1280 - GL_INVALID_ENUM\n"},
        {1281, "OpenGL error: 1281 - GL_INVALID_VALUE\n"},
        {1282, "OpenGL error: 1282 - GL_INVALID_OPERATION\n"},
        {1283, "OpenGL error: 1283 - GL_STACK_OVERFLOW\n"},
        {1284, "OpenGL error: 1284 - GL_STACK_UNDERFLOW\n"},
        {1285, "OpenGL error: 1285 - GL_OUT_OF_MEMORY\n"},
        {32817, "OpenGL error: 32817 - GL_TABLE_TOO_LARGE\n"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(HVOGLBasicView::errorReport(row.code), row.report);
}

TEST_F(BasicView, anUnknownErrorCodePrintsOnlyThePrefix)
{
    EXPECT_EQ(HVOGLBasicView::errorReport(1286), "OpenGL error: 1286 - ");
}

TEST_F(BasicView, aPendingErrorIsPrintedAndReturned)
{
    ASSERT_TRUE(view->makeCurrentContextIfNeeded());
    glEnable(0xFFFF);
    unsigned code = 0;
    EXPECT_EQ(test::standardOutputOf([&] { code = view->reportError(); }),
              "OpenGL error: 1280 - GL_INVALID_ENUM\n");
    EXPECT_EQ(code, 1280u);
    EXPECT_EQ(test::standardOutputOf([&] { code = view->reportError(); }), "");
    EXPECT_EQ(code, 0u);
    EXPECT_NO_GL_ERROR();
}

/// Errors in place of the context's own, of which a driver may keep one only.
class PendingErrors
{
public:
    explicit PendingErrors(std::vector<GLenum> errors) : kept_(epoxy_glGetError)
    {
        pending = std::move(errors);
        epoxy_glGetError = [] {
            if (pending.empty()) return static_cast<GLenum>(GL_NO_ERROR);
            const GLenum first = pending.front();
            pending.erase(pending.begin());
            return first;
        };
    }
    ~PendingErrors() { epoxy_glGetError = kept_; }
    PendingErrors(const PendingErrors &) = delete;
    PendingErrors &operator=(const PendingErrors &) = delete;

    static inline std::vector<GLenum> pending;

private:
    PFNGLGETERRORPROC kept_;
};

TEST_F(BasicView, onlyOneErrorIsReadAtATime)
{
    ASSERT_TRUE(view->makeCurrentContextIfNeeded());
    EXPECT_NO_GL_ERROR(); // epoxy looks an entry point up at its first call
    {
        const PendingErrors errors({1280, 1282, 1281});
        unsigned code = 0;
        EXPECT_EQ(test::standardOutputOf([&] { code = view->reportError(); }),
                  "OpenGL error: 1280 - GL_INVALID_ENUM\n");
        EXPECT_EQ(code, 1280u);
        EXPECT_EQ(errors.pending, (std::vector<GLenum>{1282, 1281}));
        // One a cycle.
        EXPECT_EQ(test::standardOutputOf([&] { view->display(); }),
                  "OpenGL error: 1282 - GL_INVALID_OPERATION\n");
        EXPECT_EQ(errors.pending, (std::vector<GLenum>{1281}));
    }
    EXPECT_NO_GL_ERROR();
}
