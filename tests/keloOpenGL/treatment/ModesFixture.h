#pragma once

#include "keloOpenGL/treatment/DXOpenGL.h"
#include "tests/keloOpenGL/ViewFixture.h"

#include <memory>

namespace kelo::test {

inline const QDateTime today(QDate(2026, 11, 20), QTime(0, 0));
inline const QDateTime yesterday(QDate(2026, 11, 19), QTime(0, 0));
constexpr double viewWidth = 400.0;
constexpr double viewHeight = 300.0;

class ViewUnderTest : public DXOpenGL
{
public:
    using DXOpenGL::DXOpenGL;
    bool isInFullScreenMode() const override { return fullScreen; }
    void exitFullScreenModeWithOptions() override
    {
        ++exits;
        DXOpenGL::exitFullScreenModeWithOptions();
    }
    bool fullScreen = false;
    int exits = 0;
};

/// The boxes of a full set of teeth, drawn small, with today's date: the tools are there.
class DXOpenGLModes : public ViewFixture
{
protected:
    DXOpenGLModes()
    {
        const auto document = boxDocument();
        const auto size = std::make_shared<ElasticsSizeType>();
        size->typeID = 1;
        size->elasticsColor = {1.0, 1.0, 1.0, 1.0};
        document->setAvailableElasticsSizeTypes({{1, size}});
        view->setDocumentModel(document);
        view->setDelegate(&delegate);
        view->setCurrentDate(today);
        view->setDisplayedDate(today);
        view->setRepeatActionTimerInterval(3.0);
        delegate.toggleFullScreenMode = [this](DXOpenGL &) { ++fullScreenToggles; };
        delegate.printImagesLeft_front_right_forDate_elasticsLeft_front_right = [this](auto &&...) {
            ++prints;
        };
    }

    /// The middle of an overlay rectangle, in the view's coordinates.
    Point middleOf(const Rect &rect) const
    {
        const double half = viewHeight / 2.0;
        return {(rect.origin.x + rect.size.width / 2.0) * half + viewWidth / 2.0,
                (rect.origin.y + rect.size.height / 2.0) * half + half};
    }

    void press(const Point &point, std::uint32_t modifiers = 0, int clickCount = 1)
    {
        Event event = eventAt(EventType::LeftMouseDown, point.x, point.y, modifiers);
        event.clickCount = clickCount;
        view->sendEvent(event);
    }
    void drag(const Point &point)
    {
        view->sendEvent(eventAt(EventType::LeftMouseDragged, point.x, point.y));
    }
    void release(const Point &point, std::uint32_t modifiers = 0, int clickCount = 1)
    {
        Event event = eventAt(EventType::LeftMouseUp, point.x, point.y, modifiers);
        event.clickCount = clickCount;
        view->sendEvent(event);
    }
    void click(const Point &point) { press(point), release(point); }

    /// Opens a placement on bracket 8, as the elastic menu does.
    void beginElastic()
    {
        view->setFirstClickedToothName("8");
        view->setLastClickedToothName("8");
        MenuItem item;
        item.representedObject = view->documentModel()->availableElasticsSizeTypes().at(1);
        view->startElasticColorMenuItemSelected(item);
        ASSERT_NE(view->bracketSequence(), std::nullopt);
    }

    const Point background{5.0, 5.0};
    DXOpenGLDelegate delegate;
    int fullScreenToggles = 0;
    int prints = 0;
    std::shared_ptr<ViewUnderTest> view =
        makeView<ViewUnderTest>(Rect{{0.0, 0.0}, {viewWidth, viewHeight}});
};

} // namespace kelo::test
