// The flat overlay over the scene: date label, tool buttons, print button.

#include "platform/gl.h"

#include "keloOpenGL/treatment/DXOpenGL.h"
#include "keloOpenGL/treatment/DXOpenGLState.h"

#include "keloOpenGL/overlay/OverlayLayout.h"
#include "keloOpenGL/overlay/OverlayRenderer.h"
#include "keloOpenGL/overlay/OverlayTools.h"
#include "keloOpenGL/view/SimpleTexture.h"
#include "keloOpenGL/view/StringTexture.h"
#include "models/BundleKey.h"
#include "platform/settings/ResourceBundle.h"

#include <cmath>
#include <utility>

namespace kelo {
namespace {

OverlayRenderer::Look lookOf(bool isSelected)
{
    return isSelected ? OverlayRenderer::Look::Selected : OverlayRenderer::Look::Plain;
}

std::shared_ptr<SimpleTexture> textureOfBundle(const std::string &name)
{
    const auto bundle = ResourceBundle::bundleWithIdentifier(keloOpenGLBundleKey);
    const auto path = bundle ? bundle->pathForResource_ofType(name, "png") : std::nullopt;
    return path ? SimpleTexture::textureWithFile(*path) : nullptr;
}

} // namespace

void DXOpenGL::loadTextures()
{
    for (const OverlayTool &tool : overlayTools()) {
        setToolPicture(tool.id, false, textureOfBundle(tool.picture));
        if (tool.selectedPicture)
            setToolPicture(tool.id, true, textureOfBundle(tool.selectedPicture));
    }
}

void DXOpenGL::reloadLostTextures()
{
    if (!state_->texturesWereLost) return;
    state_->texturesWereLost = false;
    loadTextures();
    // A host's own label comes back too, so it is made of the old one's text, not of the date.
    if (const auto old = state_->dateStringTexture)
        setDateStringTexture(std::make_shared<StringTexture>(old->string(), old->textColor(),
                                                             old->boxColor(), old->borderColor()));
}

const std::shared_ptr<SimpleTexture> &DXOpenGL::toolPicture(OverlayToolID tool,
                                                            bool isSelected) const
{
    return state_->overlayRenderer.picture(tool, lookOf(isSelected));
}

void DXOpenGL::setToolPicture(OverlayToolID tool, bool isSelected,
                              std::shared_ptr<SimpleTexture> texture)
{
    state_->overlayRenderer.setPicture(tool, lookOf(isSelected), std::move(texture));
    setNeedsDisplay(true);
}

const std::shared_ptr<SimpleTexture> &DXOpenGL::bracketToolTexture() const
{
    return toolPicture(OverlayToolID::Brackets, false);
}

void DXOpenGL::setBracketToolTexture(std::shared_ptr<SimpleTexture> texture)
{
    setToolPicture(OverlayToolID::Brackets, false, std::move(texture));
}

const std::shared_ptr<SimpleTexture> &DXOpenGL::bracketToolSelectedTexture() const
{
    return toolPicture(OverlayToolID::Brackets, true);
}

void DXOpenGL::setBracketToolSelectedTexture(std::shared_ptr<SimpleTexture> texture)
{
    setToolPicture(OverlayToolID::Brackets, true, std::move(texture));
}

const std::shared_ptr<SimpleTexture> &DXOpenGL::elasticsToolTexture() const
{
    return toolPicture(OverlayToolID::Elastics, false);
}

void DXOpenGL::setElasticsToolTexture(std::shared_ptr<SimpleTexture> texture)
{
    setToolPicture(OverlayToolID::Elastics, false, std::move(texture));
}

const std::shared_ptr<SimpleTexture> &DXOpenGL::elasticsToolSelectedTexture() const
{
    return toolPicture(OverlayToolID::Elastics, true);
}

void DXOpenGL::setElasticsToolSelectedTexture(std::shared_ptr<SimpleTexture> texture)
{
    setToolPicture(OverlayToolID::Elastics, true, std::move(texture));
}

const std::shared_ptr<SimpleTexture> &DXOpenGL::printButtonTexture() const
{
    return toolPicture(OverlayToolID::Print, false);
}

void DXOpenGL::setPrintButtonTexture(std::shared_ptr<SimpleTexture> texture)
{
    setToolPicture(OverlayToolID::Print, false, std::move(texture));
}

float DXOpenGL::overlayAspect() const
{
    const Size size = pressedSize();
    return static_cast<float>(size.width / size.height);
}

Rect DXOpenGL::toolRectWithRatio_width_height_yOffset_relativeWidth(float aspect, float width,
                                                                    float height, float yOffset,
                                                                    float relativeWidth)
{
    return OverlayLayout::toolRectWithRatio_width_height_yOffset_relativeWidth(
        aspect, width, height, yOffset, relativeWidth);
}

Rect DXOpenGL::toolRect(OverlayToolID tool) const
{
    return overlayTool(tool).rect({overlayAspect()}, state_->overlayRenderer.pictureSizes());
}

Rect DXOpenGL::elasticsToolRect() const
{
    return toolRect(OverlayToolID::Elastics);
}

Rect DXOpenGL::bracketColorToolRect() const
{
    return toolRect(OverlayToolID::Brackets);
}

Rect DXOpenGL::printButtonRect() const
{
    return toolRect(OverlayToolID::Print);
}

const OverlayTool *DXOpenGL::toolAt(const Point &pointInOverlay) const
{
    return overlayToolAt(pointInOverlay, {overlayAspect()}, state_->overlayRenderer.pictureSizes(),
                         mayEdit());
}

void DXOpenGL::drawExtraContent()
{
    if (state_->_printMode || !makeCurrentContextIfNeeded()) return;
    reloadLostTextures();
    const float aspect = overlayAspect();
    if (!(aspect > 0.0f) || !std::isfinite(aspect)) return; // a view without area
    const auto toothLabels = placedToothLabels();
    const OverlayState state(aspect);
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    drawToothLabels(toothLabels);
    drawDateLabel();
    for (const OverlayTool &tool : overlayTools()) {
        if (mayEdit() || !tool.changesTreatment) drawTool(tool);
    }
}

void DXOpenGL::drawDateLabel()
{
    if (!state_->dateStringTexture) return;
    const Size size = state_->dateStringTexture->texSize();
    if (size.width <= 0.0 || size.height <= 0.0) return;
    state_->dateStringTexture->drawWithBounds(OverlayLayout::dateLabelRect(size));
}

void DXOpenGL::drawTool(const OverlayTool &tool)
{
    const bool isSelected = tool.mouseMode == mouseMode();
    // The last piece of the overlay; the next frame begins with white again.
    if (tool.id == OverlayToolID::Print && state_->printButton.isDown())
        glColor3f(0.625f, 0.625f, 0.625f);
    state_->overlayRenderer.drawTool(tool, lookOf(isSelected), {overlayAspect()},
                                     state_->streamedIndices);
}

void DXOpenGL::drawElasticsToolButton()
{
    drawTool(overlayTool(OverlayToolID::Elastics));
}

void DXOpenGL::drawBracketToolButton()
{
    drawTool(overlayTool(OverlayToolID::Brackets));
}

void DXOpenGL::drawPrintButton()
{
    drawTool(overlayTool(OverlayToolID::Print));
}

void DXOpenGL::drawToolButton_inRect(const std::shared_ptr<SimpleTexture> &texture,
                                     const Rect &rect)
{
    state_->overlayRenderer.drawPicture(texture, rect, state_->streamedIndices);
}

} // namespace kelo
