#include "keloOpenGL/overlay/Overlay.h"

#include "platform/gl.h"

#include "keloOpenGL/view/SimpleTexture.h"
#include "models/BundleKey.h"
#include "platform/settings/ResourceBundle.h"

#include <cmath>
#include <string>
#include <utility>

namespace kelo {
namespace {

OverlayRenderer::Look lookOf(bool isSelected)
{
    return isSelected ? OverlayRenderer::Look::Selected : OverlayRenderer::Look::Plain;
}

Overlay::Picture pictureOfBundle(const std::string &name)
{
    const auto bundle = ResourceBundle::bundleWithIdentifier(keloOpenGLBundleKey);
    const auto path = bundle ? bundle->pathForResource_ofType(name, "png") : std::nullopt;
    return path ? SimpleTexture::textureWithFile(*path) : nullptr;
}

} // namespace

bool OverlayFrame::hasArea() const
{
    return aspect > 0.0f && std::isfinite(aspect);
}

const Overlay::Picture &Overlay::picture(OverlayToolID tool, bool isSelected) const
{
    return tools_.picture(tool, lookOf(isSelected));
}

void Overlay::setPicture(OverlayToolID tool, bool isSelected, Picture picture)
{
    tools_.setPicture(tool, lookOf(isSelected), std::move(picture));
}

void Overlay::loadPictures()
{
    for (const OverlayTool &tool : overlayTools()) {
        setPicture(tool.id, false, pictureOfBundle(tool.picture));
        if (tool.selectedPicture) setPicture(tool.id, true, pictureOfBundle(tool.selectedPicture));
    }
}

void Overlay::noteLostContext()
{
    toothLabels_.dropPictures();
    contextWasLost_ = true;
}

void Overlay::reloadAfterLostContext()
{
    if (!std::exchange(contextWasLost_, false)) return;
    loadPictures();
    // A host's own label comes back too, so it is made of the old one's text, not of the date.
    dateLabel_.renewTexture();
}

Rect Overlay::toolRect(OverlayToolID tool, float aspect) const
{
    return overlayTool(tool).rect({aspect}, tools_.pictureSizes());
}

const OverlayTool *Overlay::toolAt(const Point &pointInOverlay, const OverlayFrame &frame) const
{
    return overlayToolAt(pointInOverlay, {frame.aspect}, tools_.pictureSizes(), frame.mayEdit);
}

void Overlay::draw(const OverlayFrame &frame, const std::vector<PlacedToothLabel> &toothLabels,
                   StreamBuffer &indices)
{
    const OverlayState state(frame.aspect);
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    toothLabels_.draw(toothLabels);
    dateLabel_.draw();
    for (const OverlayTool &tool : overlayTools()) {
        if (tool.isThere(frame.mayEdit)) drawTool(tool.id, frame, indices);
    }
}

void Overlay::drawTool(OverlayToolID id, const OverlayFrame &frame, StreamBuffer &indices)
{
    const OverlayTool &tool = overlayTool(id);
    // Buttons are the last pieces of the overlay; the next frame begins with white again.
    if (frame.pressedTool == id) glColor3f(0.625f, 0.625f, 0.625f);
    tools_.drawTool(tool, lookOf(tool.mouseMode == frame.mouseMode), {frame.aspect}, indices);
}

void Overlay::drawPicture(const Picture &picture, const Rect &rect, StreamBuffer &indices)
{
    tools_.drawPicture(picture, rect, indices);
}

} // namespace kelo
