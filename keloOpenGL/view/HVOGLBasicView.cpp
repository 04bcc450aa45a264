#include "keloOpenGL/view/HVOGLBasicView.h"

#include "document/DXDocumentModel.h"
#include "keloOpenGL/view/MouthTransforms.h"

#include <algorithm>
#include <utility>

namespace kelo {
namespace {

/// 1/60 as a single-precision value, which the frame clock has always been set to.
constexpr double animationInterval = 0.01666666753590107;
constexpr float largestMouthOpenAngle = 55.0f;

bool drawRectIsEnabled = true;
bool bufferSwappingIsEnabled = true;

} // namespace

HVOGLBasicView::HVOGLBasicView(const Rect &frame) : HVOGLMouseView(frame, basicPixelFormat())
{
    setMouseMode(rotateMode);
}

HVOGLBasicView::~HVOGLBasicView()
{
    stopAnimationTimer();
}

void HVOGLBasicView::awakeFromNib()
{
    HVOGLMouseView::awakeFromNib();
    initializeStartTime();
    noteAnimationTime();
    restoreDefaultOrientation();
    restoreDefaultColors();
}

PixelFormat HVOGLBasicView::basicPixelFormat()
{
    return {.doubleBuffer = true, .depthSize = 24};
}

bool HVOGLBasicView::drawRectEnabled()
{
    return drawRectIsEnabled;
}

void HVOGLBasicView::setDrawRectEnabled(bool enabled)
{
    drawRectIsEnabled = enabled;
}

bool HVOGLBasicView::bufferSwappingEnabled()
{
    return bufferSwappingIsEnabled;
}

void HVOGLBasicView::setBufferSwappingEnabled(bool enabled)
{
    bufferSwappingIsEnabled = enabled;
}

void HVOGLBasicView::setDocumentModel(std::shared_ptr<DXDocumentModel> model)
{
    documentModel_ = std::move(model);
    zoomToFit();
    setNeedsDisplay(true);
}

void HVOGLBasicView::modelChanged()
{
    setNeedsDisplay(true);
}

void HVOGLBasicView::restoreDefaultColors()
{
    setClearColor(Color{0.29, 0.58, 0.73, 1.0});
    setAmbientColor(Color{0.2, 0.2, 0.2, 1.0});
    setDiffuseColor(Color{0.62, 0.62, 0.62, 1.0});
    setSpecularColor(Color{1.0, 1.0, 1.0, 1.0});
}

void HVOGLBasicView::setClearColor(const std::optional<Color> &color)
{
    clearColor_ = color;
    setNeedsDisplay(true);
}

void HVOGLBasicView::setAmbientColor(const std::optional<Color> &color)
{
    ambientColor_ = color;
    setNeedsDisplay(true);
}

void HVOGLBasicView::setDiffuseColor(const std::optional<Color> &color)
{
    diffuseColor_ = color;
    setNeedsDisplay(true);
}

void HVOGLBasicView::setSpecularColor(const std::optional<Color> &color)
{
    specularColor_ = color;
    setNeedsDisplay(true);
}

void HVOGLBasicView::setMouthOpenAngle(float angleInDegrees)
{
    _mouthOpenAngle = std::clamp(angleInDegrees, -largestMouthOpenAngle, largestMouthOpenAngle);
    setNeedsDisplay(true);
}

float HVOGLBasicView::effectiveMouthOpenAngle() const
{
    return kelo::effectiveMouthOpenAngle(_mouthOpenAngle);
}

Matrix HVOGLBasicView::upperMouthTransform() const
{
    return kelo::upperMouthTransform(effectiveMouthOpenAngle(), *extents());
}

Matrix HVOGLBasicView::lowerMouthTransform() const
{
    return kelo::lowerMouthTransform(effectiveMouthOpenAngle(), *extents());
}

void HVOGLBasicView::startAnimationTimer()
{
    stopAnimationTimer();
    timer_ = std::make_shared<Timer>(animationInterval, true,
                                     [this](Timer &timer) { animationForTimer(timer); });
    // The event-tracking mode too, so that a transition goes on while the mouse is held.
    RunLoop::main().addTimer(timer_, RunLoopMode::Default | RunLoopMode::EventTracking);
}

void HVOGLBasicView::stopAnimationTimer()
{
    if (timer_) timer_->invalidate();
    timer_.reset();
}

void HVOGLBasicView::noteAnimationTime()
{
    time = RunLoop::main().currentTime();
    animationTime_ = RunLoop::main().steadyTime();
}

double HVOGLBasicView::timeSinceAnimation() const
{
    // A main run loop that was replaced meanwhile counts from an origin of its own.
    return std::max(RunLoop::main().steadyTime() - animationTime_, 0.0);
}

void HVOGLBasicView::animationForTimer(Timer &)
{
    noteAnimationTime();
}

void HVOGLBasicView::initializeStartTime()
{
    _startTime = RunLoop::main().steadyTime();
}

double HVOGLBasicView::elapsedTime() const
{
    return RunLoop::main().steadyTime() - _startTime;
}

Point HVOGLBasicView::convertPoint_fromView(const Point &point, const OpenGLView *view) const
{
    Point converted = HVOGLMouseView::convertPoint_fromView(point, view);
    // The platform counts rows downwards from the top edge of a flipped view; pixels are read in
    // rows counted upwards from the bottom.
    converted.y = (bounds().size.height - 1.0) - converted.y;
    return converted;
}

long HVOGLBasicView::mouseModeForDeviceIndependentBits(std::uint32_t bits) const
{
    return bits == ModifierFlag::Control ? colorMode : mouseMode();
}

void HVOGLBasicView::menuNeedsUpdate(Menu &menu)
{
    if (menu.title() != "Mode") return;
    for (const long mode : {rotateMode, colorMode, elasticsMode}) {
        if (const std::shared_ptr<MenuItem> item = menu.itemWithTag(mode)) {
            item->enabled = true;
            item->state = mouseMode() == mode ? MenuItemState::On : MenuItemState::Off;
        }
    }
}

void HVOGLBasicView::mouseModeAction(const MenuItem &sender)
{
    setMouseMode(sender.tag);
}

void HVOGLBasicView::leftMouseDown(const Event &event)
{
    switch (mouseMode()) {
    case elasticsMode:
        elasticsMouseDown(event);
        break;
    case colorMode:
        colorMouseDown(event);
        break;
    case rotateMode:
        rotateMouseDown(event);
        break;
    default:
        break;
    }
}

void HVOGLBasicView::leftMouseDragged(const Event &event)
{
    switch (mouseMode()) {
    case elasticsMode:
        elasticsMouseDragged(event);
        break;
    case colorMode:
        colorMouseDragged(event);
        break;
    case rotateMode:
        rotateMouseDragged(event);
        break;
    default:
        break;
    }
}

void HVOGLBasicView::leftMouseUp(const Event &event)
{
    switch (mouseMode()) {
    case elasticsMode:
        elasticsMouseUp(event);
        break;
    case colorMode:
        colorMouseUp(event);
        break;
    case rotateMode:
        rotateMouseUp(event);
        break;
    default:
        break;
    }
    HVOGLMouseView::leftMouseUp(event);
}

void HVOGLBasicView::rightMouseDown(const Event &event)
{
    if (mouseMode() == elasticsMode || mouseMode() == colorMode) colorMouseDown(event);
}

void HVOGLBasicView::rightMouseDragged(const Event &event)
{
    if (mouseMode() == elasticsMode || mouseMode() == colorMode) colorMouseDragged(event);
}

void HVOGLBasicView::rightMouseUp(const Event &event)
{
    if (mouseMode() == elasticsMode || mouseMode() == colorMode) colorMouseUp(event);
    HVOGLMouseView::rightMouseUp(event);
}

void HVOGLBasicView::otherMouseDown(const Event &) {}
void HVOGLBasicView::otherMouseDragged(const Event &) {}

} // namespace kelo
