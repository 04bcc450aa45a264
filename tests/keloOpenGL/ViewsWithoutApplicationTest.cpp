// The views themselves, not only their ground, where no application object is.

#include "keloOpenGL/treatment/DXOpenGL.h"
#include "tests/keloOpenGL/ViewFixture.h"

#include <QCoreApplication>
#include <QImage>

using namespace kelo;
using kelo::test::boxDocument;
using kelo::test::ViewFixture;

class ViewsWithoutApplication : public ViewFixture
{};

TEST_F(ViewsWithoutApplication, aTreatmentIsDrawn)
{
    ASSERT_EQ(QCoreApplication::instance(), nullptr);
    EXPECT_FALSE(OpenGLView::cursorsAreAvailable());
    const auto view = makeView<DXOpenGL>(Rect{{0.0, 0.0}, {200.0, 100.0}});
    const QImage empty = view->grabImage();
    EXPECT_EQ(empty.size(), QSize(200, 100));
    view->setDocumentModel(boxDocument());
    EXPECT_NE(view->grabImage(), empty);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ViewsWithoutApplication, itsModesComeAndGo)
{
    const auto view = makeView<DXOpenGL>(Rect{{0.0, 0.0}, {200.0, 100.0}});
    for (const long mode : {2L, 5L, 6L}) {
        view->setMouseMode(mode);
        EXPECT_EQ(view->mouseMode(), mode);
    }
    view->setTemporaryMouseMode(HVOGLBasicView::colorMode);
    view->restorePermanentMouseMode();
    EXPECT_EQ(view->mouseMode(), HVOGLBasicView::elasticsMode);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ViewsWithoutApplication, itsInputTurnsTheJaws)
{
    const auto view = makeView<DXOpenGL>(Rect{{0.0, 0.0}, {200.0, 100.0}});
    view->setDocumentModel(boxDocument());
    view->display();
    view->setMouseMode(HVOGLBasicView::rotateMode);
    const auto before = view->worldRotation();
    view->sendEvent(eventAt(EventType::MouseMoved, 100, 50));
    view->sendEvent(eventAt(EventType::FlagsChanged, 100, 50, ModifierFlag::Control));
    view->sendEvent(eventAt(EventType::FlagsChanged, 100, 50));
    view->sendEvent(eventAt(EventType::LeftMouseDown, 100, 50));
    view->sendEvent(eventAt(EventType::LeftMouseDragged, 120, 50));
    view->sendEvent(eventAt(EventType::LeftMouseUp, 120, 50));
    EXPECT_NE(view->worldRotation(), before);
    EXPECT_NO_GL_ERROR();
}
