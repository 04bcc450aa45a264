// Presses on teeth that are dragged on, with a real pointer.

#include "tests/support/PointerSteps.h"
#include "tests/viewer/support/TreatmentWindowFixture.h"
#include "viewer/script/PickPoints.h"

using namespace viewer;
using namespace viewer::test;
using kelo::test::atOnce;
using kelo::test::ButtonWatch;
using kelo::test::goThrough;
using kelo::test::movePointer;
using kelo::test::openMenu;
using kelo::test::xdotool;

namespace {

class MenuDrags : public TreatmentWindows
{
protected:
    kelo::DXOpenGL &view() const { return document->mainWindow()->view(); }
    const kelo::DXDocumentModel &model() const { return *document->treatment()->document(); }
    /// The incisor's bracket on the screen.
    QPoint incisor() const
    {
        const auto identifier =
            static_cast<std::uint32_t>(model().bracketModels().at("8")->uniqueID());
        const auto point = clickablePoint(view(), identifier);
        EXPECT_TRUE(point);
        const double height = view().bounds().size.height;
        const auto inView = point.value_or(kelo::Point{});
        return view().window()->mapToGlobal(QPointF(inView.x, height - 1.0 - inView.y).toPoint());
    }
    /// Drags from the incisor over the rows of its menu and back the same way, below and above it;
    /// whether the menu is open at the end, which Escape closes then.
    bool dragFromIncisor(const char *button)
    {
        ButtonWatch watch;
        const QPoint from = incisor();
        QPoint over;
        bool wasOpen = false;
        const bool cameThrough = goThrough(
            {{atOnce,
              [&] {
                  movePointer(from);
                  xdotool({"mousedown", button});
              }},
             {[] { return openMenu() != nullptr; },
              [&] {
                  if (const QMenu *menu = openMenu()) over = menu->geometry().center();
                  movePointer(from + (over - from) / 2);
                  movePointer(over);
              }},
             {[&] { return watch.lastMove == over; },
              [=] {
                  xdotool({"mouseup", button});
              }},
             {[&] { return watch.releases == 1; }, [&] { wasOpen = openMenu() != nullptr; }},
             {atOnce,
              [] {
                  xdotool({"key", "Escape"});
              }}},
            [] { return QApplication::activePopupWidget() == nullptr; });
        return cameThrough && wasOpen;
    }

    TreatmentDocument *document = nullptr;
};

TEST_F(MenuDrags, aDragFromAnIncisorChangesNothingAndTurnsNothing)
{
    document = &open();
    ASSERT_TRUE(waitUntil([this] { return windowOf(*document).isActiveWindow(); }));
    const auto visibilities = model().bracketVisibilities();
    const auto colors = model().bracketColorsTypeIDs();
    const auto elastics = model().elasticModels().size();
    const auto rotation = view().worldRotation();
    ASSERT_TRUE(bracketIsPlaced(*document, "8"));
    for (const long mode : {5L, 6L}) {
        for (const char *button : {"1", "3"}) {
            view().setMouseMode(mode);
            EXPECT_TRUE(dragFromIncisor(button)) << mode << ' ' << button;
            EXPECT_EQ(model().bracketVisibilities(), visibilities) << mode << ' ' << button;
            EXPECT_EQ(model().bracketColorsTypeIDs(), colors) << mode << ' ' << button;
            EXPECT_EQ(model().elasticModels().size(), elastics) << mode << ' ' << button;
            EXPECT_EQ(view().worldRotation(), rotation) << mode << ' ' << button;
            EXPECT_EQ(view().mouthOpenAngle(), 0.0f) << mode << ' ' << button;
            EXPECT_FALSE(view().isRotating());
        }
    }
    view().openGLContext().makeCurrentContext();
    EXPECT_NO_GL_ERROR();
}

} // namespace
