// Construction, colours, mouth, animation, modes and presses.

#include "keloOpenGL/view/HVOGLBasicView.h"

#include "keloOpenGL/view/HVOGLBasicViewParts.h"

#include <utility>

namespace kelo {
namespace {

constexpr Color defaultClearColor{0.29, 0.58, 0.73, 1.0};

bool drawRectIsEnabled = true;
bool bufferSwappingIsEnabled = true;

/// What a press, a drag or a release of one button does in each mode; null for nothing.
struct ModeHandlers
{
    using Handler = void (HVOGLBasicView::*)(const Event &);
    Handler elastics;
    Handler color;
    Handler rotate;
};

using View = HVOGLBasicView;
constexpr ModeHandlers leftDown{&View::elasticsMouseDown, &View::colorMouseDown,
                                &View::rotateMouseDown};
constexpr ModeHandlers leftDragged{&View::elasticsMouseDragged, &View::colorMouseDragged,
                                   &View::rotateMouseDragged};
constexpr ModeHandlers leftUp{&View::elasticsMouseUp, &View::colorMouseUp, &View::rotateMouseUp};
/// The right button colours, in the elastics mode too.
constexpr ModeHandlers rightDown{&View::colorMouseDown, &View::colorMouseDown, nullptr};
constexpr ModeHandlers rightDragged{&View::colorMouseDragged, &View::colorMouseDragged, nullptr};
constexpr ModeHandlers rightUp{&View::colorMouseUp, &View::colorMouseUp, nullptr};

void callHandlerOfMode(View &view, const ModeHandlers &handlers, const Event &event)
{
    ModeHandlers::Handler handler = nullptr;
    if (view.mouseMode() == View::elasticsMode) handler = handlers.elastics;
    if (view.mouseMode() == View::colorMode) handler = handlers.color;
    if (view.mouseMode() == View::rotateMode) handler = handlers.rotate;
    if (handler) (view.*handler)(event);
}

void validateModeItem(Menu &menu, long mode, bool isPresentMode)
{
    const std::shared_ptr<MenuItem> item = menu.itemWithTag(mode);
    if (!item) return;
    item->enabled = true;
    item->state = isPresentMode ? MenuItemState::On : MenuItemState::Off;
}

} // namespace

HVOGLBasicView::HVOGLBasicView(const Rect &frame)
    : HVOGLMouseView(frame, basicPixelFormat()), parts_(std::make_unique<Parts>())
{
    setMouseMode(rotateMode);
}

HVOGLBasicView::~HVOGLBasicView() = default;

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

const std::shared_ptr<DXDocumentModel> &HVOGLBasicView::documentModel() const
{
    return parts_->documentModel;
}

void HVOGLBasicView::setDocumentModel(std::shared_ptr<DXDocumentModel> model)
{
    parts_->documentModel = std::move(model);
    zoomToFit();
    setNeedsDisplay(true);
}

void HVOGLBasicView::modelChanged()
{
    setNeedsDisplay(true);
}

void HVOGLBasicView::restoreDefaultColors()
{
    setClearColor(defaultClearColor);
    parts_->light.takeColors(Light::usual());
    setNeedsDisplay(true);
}

const std::optional<Color> &HVOGLBasicView::clearColor() const
{
    return parts_->clearColor;
}

const std::optional<Color> &HVOGLBasicView::ambientColor() const
{
    return parts_->light.ambientColor;
}

const std::optional<Color> &HVOGLBasicView::diffuseColor() const
{
    return parts_->light.diffuseColor;
}

const std::optional<Color> &HVOGLBasicView::specularColor() const
{
    return parts_->light.specularColor;
}

void HVOGLBasicView::setClearColor(const std::optional<Color> &color)
{
    parts_->clearColor = color;
    setNeedsDisplay(true);
}

void HVOGLBasicView::setAmbientColor(const std::optional<Color> &color)
{
    parts_->light.ambientColor = color;
    setNeedsDisplay(true);
}

void HVOGLBasicView::setDiffuseColor(const std::optional<Color> &color)
{
    parts_->light.diffuseColor = color;
    setNeedsDisplay(true);
}

void HVOGLBasicView::setSpecularColor(const std::optional<Color> &color)
{
    parts_->light.specularColor = color;
    setNeedsDisplay(true);
}

const HVOGLBasicView::Rotation &HVOGLBasicView::lightRotation() const
{
    return parts_->light.rotation;
}

void HVOGLBasicView::setLightRotation(const Rotation &rotation)
{
    parts_->light.rotation = rotation;
    setNeedsDisplay(true);
}

float HVOGLBasicView::mouthOpenAngle() const
{
    return parts_->mouth.openAngle();
}

void HVOGLBasicView::setMouthOpenAngle(float angleInDegrees)
{
    parts_->mouth.setOpenAngle(angleInDegrees);
    setNeedsDisplay(true);
}

void HVOGLBasicView::setUnlimitedMouthOpenAngle(float angleInDegrees)
{
    parts_->mouth.setUnlimitedOpenAngle(angleInDegrees);
    setNeedsDisplay(true);
}

float HVOGLBasicView::effectiveMouthOpenAngle() const
{
    return parts_->mouth.effectiveAngle();
}

Matrix HVOGLBasicView::upperMouthTransform() const
{
    return parts_->mouth.upperTransform(*extents());
}

Matrix HVOGLBasicView::lowerMouthTransform() const
{
    return parts_->mouth.lowerTransform(*extents());
}

const Mouth &HVOGLBasicView::mouth() const
{
    return parts_->mouth;
}

void HVOGLBasicView::setMouth(const Mouth &mouth)
{
    parts_->mouth = mouth;
}

void HVOGLBasicView::startAnimationTimer()
{
    parts_->clock.start([this](Timer &timer) { animationForTimer(timer); });
}

void HVOGLBasicView::stopAnimationTimer()
{
    parts_->clock.stop();
}

bool HVOGLBasicView::animationTimerIsRunning() const
{
    return parts_->clock.isRunning();
}

void HVOGLBasicView::noteAnimationTime()
{
    parts_->clock.noteTick();
}

double HVOGLBasicView::timeSinceAnimation() const
{
    return parts_->clock.timeSinceTick();
}

double HVOGLBasicView::time() const
{
    return parts_->clock.tickTime();
}

void HVOGLBasicView::animationForTimer(Timer &)
{
    noteAnimationTime();
}

void HVOGLBasicView::initializeStartTime()
{
    parts_->clock.noteStart();
}

double HVOGLBasicView::elapsedTime() const
{
    return parts_->clock.elapsedTime();
}

double HVOGLBasicView::lastRenderingTime() const
{
    return parts_->lastRenderingTime;
}

void HVOGLBasicView::setLastRenderingTime(double seconds)
{
    parts_->lastRenderingTime = seconds;
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
    for (const long mode : {rotateMode, colorMode, elasticsMode})
        validateModeItem(menu, mode, mouseMode() == mode);
}

void HVOGLBasicView::mouseModeAction(const MenuItem &sender)
{
    setMouseMode(sender.tag);
}

void HVOGLBasicView::leftMouseDown(const Event &event)
{
    callHandlerOfMode(*this, leftDown, event);
}

void HVOGLBasicView::leftMouseDragged(const Event &event)
{
    callHandlerOfMode(*this, leftDragged, event);
}

void HVOGLBasicView::leftMouseUp(const Event &event)
{
    callHandlerOfMode(*this, leftUp, event);
    HVOGLMouseView::leftMouseUp(event);
}

void HVOGLBasicView::rightMouseDown(const Event &event)
{
    callHandlerOfMode(*this, rightDown, event);
}

void HVOGLBasicView::rightMouseDragged(const Event &event)
{
    callHandlerOfMode(*this, rightDragged, event);
}

void HVOGLBasicView::rightMouseUp(const Event &event)
{
    callHandlerOfMode(*this, rightUp, event);
    HVOGLMouseView::rightMouseUp(event);
}

void HVOGLBasicView::otherMouseDown(const Event &) {}
void HVOGLBasicView::otherMouseDragged(const Event &) {}

} // namespace kelo
