// The flat overlay over the scene: date label, tool buttons, print button.

#include "keloOpenGL/treatment/DXOpenGL.h"
#include "keloOpenGL/treatment/DXOpenGLState.h"

#include <optional>
#include <utility>

namespace kelo {

void DXOpenGL::loadTextures()
{
    state_->overlay.loadPictures();
    setNeedsDisplay(true);
}

const std::shared_ptr<StringTexture> &DXOpenGL::dateStringTexture() const
{
    return state_->overlay.dateLabel().texture();
}

void DXOpenGL::setDateStringTexture(std::shared_ptr<StringTexture> texture)
{
    state_->overlay.dateLabel().setTexture(std::move(texture));
    setNeedsDisplay(true);
}

const std::shared_ptr<SimpleTexture> &DXOpenGL::toolPicture(OverlayToolID tool,
                                                            bool isSelected) const
{
    return state_->overlay.picture(tool, isSelected);
}

void DXOpenGL::setToolPicture(OverlayToolID tool, bool isSelected,
                              std::shared_ptr<SimpleTexture> texture)
{
    state_->overlay.setPicture(tool, isSelected, std::move(texture));
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
    return state_->overlay.toolRect(tool, overlayAspect());
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

std::vector<std::string> DXOpenGL::toolNames()
{
    std::vector<std::string> names;
    for (const OverlayTool &tool : overlayTools())
        names.push_back(tool.name);
    return names;
}

Rect DXOpenGL::toolRectNamed(const std::string &toolName) const
{
    const OverlayTool *tool = overlayToolNamed(toolName);
    return tool ? toolRect(tool->id) : Rect();
}

std::vector<Rect> DXOpenGL::shownToolRects() const
{
    std::vector<Rect> rects;
    for (const OverlayTool &tool : overlayTools())
        if (tool.isThere(mayEdit())) rects.push_back(toolRect(tool.id));
    return rects;
}

const OverlayTool *DXOpenGL::toolAt(const Point &pointInOverlay) const
{
    return state_->overlay.toolAt(pointInOverlay, overlayFrame());
}

OverlayFrame DXOpenGL::overlayFrame() const
{
    const auto pressed =
        state_->printButton.isDown() ? std::optional(OverlayToolID::Print) : std::nullopt;
    return {overlayAspect(), mouseMode(), mayEdit(), pressed};
}

void DXOpenGL::drawExtraContent()
{
    if (state_->printer.isPrinting() || !makeCurrentContextIfNeeded()) return;
    state_->overlay.reloadAfterLostContext();
    const OverlayFrame frame = overlayFrame();
    if (frame.hasArea()) state_->overlay.draw(frame, placedToothLabels(), state_->streamedIndices);
}

void DXOpenGL::drawDateLabel()
{
    state_->overlay.dateLabel().draw();
}

void DXOpenGL::drawTool(OverlayToolID tool)
{
    state_->overlay.drawTool(tool, overlayFrame(), state_->streamedIndices);
}

void DXOpenGL::drawElasticsToolButton()
{
    drawTool(OverlayToolID::Elastics);
}

void DXOpenGL::drawBracketToolButton()
{
    drawTool(OverlayToolID::Brackets);
}

void DXOpenGL::drawPrintButton()
{
    drawTool(OverlayToolID::Print);
}

void DXOpenGL::drawToolButton_inRect(const std::shared_ptr<SimpleTexture> &texture,
                                     const Rect &rect)
{
    state_->overlay.drawPicture(texture, rect, state_->streamedIndices);
}

} // namespace kelo
