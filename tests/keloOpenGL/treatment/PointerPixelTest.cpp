// From the windowing system's pointer events to the device pixel that is picked.

#include "platform/view/ViewInput.h"
#include "tests/keloOpenGL/ViewFixture.h"
#include "tests/keloOpenGL/treatment/PickFixture.h"

#include <QMouseEvent>

#include <random>

namespace {

using namespace kelo;
using kelo::test::PickView;

constexpr std::uint32_t notDrawn = 0xABCDEF;
constexpr double scales[] = {1.0, 1.25, 1.5, 1.75, 2.0, 3.0};

/// Keeps the press that arrived last.
class PressKeepingView : public PickView
{
public:
    using PickView::PickView;
    void leftMouseDown(const Event &event) override
    {
        press = event;
        PickView::leftMouseDown(event);
    }
    Event press;
};

/// Sizes that are no whole numbers of pixels at the fractional scales: 321 x 243 points are
/// 401.25 x 303.75 pixels at 1.25, 481.5 x 364.5 at 1.5.
class PointerPixel : public kelo::test::ViewFixture
{
protected:
    PointerPixel() { view->setDocumentModel(kelo::test::boxDocument()); }

    void useScale(double scale)
    {
        view->setSurfacelessScaleFactor(scale);
        view->display();
        size = view->deviceSize();
        ASSERT_EQ(size.width, std::lround(321.0 * scale));
        ASSERT_EQ(size.height, std::lround(243.0 * scale));
    }
    /// What the windowing system tells of a device pixel: points from the top left corner.
    void send(QEvent::Type type, int column, int rowFromTop)
    {
        const double scale = view->backingScaleFactor();
        const QPointF position(column / scale, rowFromTop / scale);
        const bool presses = type == QEvent::MouseButtonPress;
        QMouseEvent event(type, position, position, position, Qt::LeftButton,
                          presses ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
        if (presses)
            input.mousePressed(event);
        else
            input.mouseReleased(event);
    }
    Point pixelOfPressAt(int column, int rowFromTop)
    {
        send(QEvent::MouseButtonPress, column, rowFromTop);
        const Point pixel = view->backingPointForEvent(view->press);
        view->setMouseMode(HVOGLBasicView::rotateMode);
        send(QEvent::MouseButtonRelease, column, rowFromTop);
        return pixel;
    }

    std::shared_ptr<PressKeepingView> view =
        makeView<PressKeepingView>(Rect{{0.0, 0.0}, {321.0, 243.0}});
    ViewInput input{*view};
    PixelSize size;
};

} // namespace

TEST_F(PointerPixel, aPressOnADevicePixelIsOnThatPixelAtSixScales)
{
    view->setMouseMode(HVOGLBasicView::rotateMode);
    for (const double scale : scales) {
        useScale(scale);
        const int lastColumn = size.width - 1;
        for (int row = 0; row < size.height; ++row) {
            for (const int column : {0, 1, row % size.width, lastColumn}) {
                ASSERT_EQ(pixelOfPressAt(column, row),
                          (Point{static_cast<double>(column),
                                 static_cast<double>(size.height - 1 - row)}))
                    << "scale " << scale << ", row " << row;
            }
        }
        for (int column = 0; column < size.width; ++column)
            ASSERT_EQ(pixelOfPressAt(column, 7).x, column) << "scale " << scale;
    }
    EXPECT_NO_GL_ERROR();
}

TEST_F(PointerPixel, aPressPicksWhatThePictureShowsInItsPixelAtSixScales)
{
    std::mt19937 random(5203u);
    for (const double scale : scales) {
        useScale(scale);
        const std::vector<std::uint32_t> picture = view->pickIdentifiers();
        int objects = 0;
        for (int i = 0; i < 60; ++i) {
            const int column = static_cast<int>(random() % static_cast<unsigned>(size.width));
            const int row = static_cast<int>(random() % static_cast<unsigned>(size.height));
            const auto place = static_cast<std::size_t>(size.height - 1 - row) *
                                   static_cast<std::size_t>(size.width) +
                               static_cast<std::size_t>(column);
            view->setMouseMode(HVOGLBasicView::rotateMode);
            EXPECT_EQ(view->pickIdentifierAtPoint(pixelOfPressAt(column, row)), picture[place])
                << "scale " << scale << ", column " << column << ", row " << row;
            objects += picture[place] != 0;
        }
        EXPECT_GT(objects, 5) << "or nothing but the background was compared";
    }
    EXPECT_NO_GL_ERROR();
}

TEST_F(PointerPixel, theLowestAndTheTopmostRowsOfPixelsCanBeClickedAtSixScales)
{
    for (const double scale : scales) {
        useScale(scale);
        for (const int row : {0, size.height - 1}) {
            for (const long mode : {5L, 6L}) {
                view->setMouseMode(mode);
                send(QEvent::MouseButtonPress, 5, row);
                EXPECT_TRUE(view->isRotating()) << "scale " << scale << ", mode " << mode;
                EXPECT_EQ(view->pickIdentifierAtPoint(view->backingPointForEvent(view->press)), 0u);
                send(QEvent::MouseButtonRelease, 5, row);
                EXPECT_FALSE(view->isRotating());
            }
        }
        send(QEvent::MouseButtonPress, 5, size.height); // a drag's place below the view
        EXPECT_EQ(view->pickIdentifierAtPoint(view->backingPointForEvent(view->press)), notDrawn);
        send(QEvent::MouseButtonRelease, 5, size.height);
    }
    EXPECT_NO_GL_ERROR();
}

TEST_F(PointerPixel, aWindowPositionAndAnEventsLocationTurnIntoEachOther)
{
    useScale(2.0);
    EXPECT_EQ(view->flippedWindowPoint({10.0, 242.5}), (Point{10.0, 1.0}));
    EXPECT_EQ(view->flippedWindowPoint({10.0, 1.0}), (Point{10.0, 242.5}));
    EXPECT_EQ(view->flippedWindowPoint({0.0, 0.0}), (Point{0.0, 243.5}));
    useScale(1.0);
    EXPECT_EQ(view->flippedWindowPoint({10.0, 242.0}), (Point{10.0, 1.0}));
    EXPECT_EQ(view->flippedWindowPoint({0.0, 0.0}), (Point{0.0, 243.0}));
    EXPECT_NO_GL_ERROR();
}
