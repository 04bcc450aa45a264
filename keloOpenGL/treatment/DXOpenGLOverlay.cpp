// The flat overlay over the scene: date label, tool buttons, print button.

#include "platform/gl.h"

#include "keloOpenGL/treatment/DXOpenGL.h"

#include "keloOpenGL/overlay/OverlayLayout.h"
#include "keloOpenGL/view/SimpleTexture.h"
#include "keloOpenGL/view/StreamBuffer.h"
#include "keloOpenGL/view/StringTexture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace kelo {
namespace {

/// Position, then texture coordinates in texels.
struct QuadVertex
{
    float x, y, s, t;
};

using Quad = std::array<QuadVertex, 4>;
constexpr std::array<std::uint32_t, 4> quadIndices{0, 1, 2, 3};

TextureSize sizeOf(const std::shared_ptr<SimpleTexture> &texture)
{
    return texture ? TextureSize{texture->width(), texture->height()} : TextureSize{};
}

/// Fills the bound buffer anew; false where the driver gives no memory.
template<class Elements>
bool fillBuffer(const StreamBuffer &buffer, const Elements &elements)
{
    auto *mapped = buffer.mapNew<typename Elements::value_type>(elements.size());
    if (!mapped) return false;
    std::copy(elements.begin(), elements.end(), mapped);
    return buffer.unmap();
}

/// The projection and state of the flat overlay, for as long as it lives.
class OverlayState
{
public:
    explicit OverlayState(double aspect) : depthTestWasEnabled_(glIsEnabled(GL_DEPTH_TEST))
    {
        glDisable(GL_DEPTH_TEST);
        glDisable(GL_LIGHTING);
        glEnable(GL_BLEND);
        glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA); // premultiplied alpha
        glEnable(GL_TEXTURE_RECTANGLE);
        glGetIntegerv(GL_MATRIX_MODE, &matrixMode_);
        glMatrixMode(GL_PROJECTION);
        glPushMatrix();
        glLoadIdentity();
        glOrtho(-aspect, aspect, -1.0, 1.0, -1.0, 1.0);
        glMatrixMode(GL_MODELVIEW);
        glPushMatrix();
        glLoadIdentity();
    }
    ~OverlayState()
    {
        glMatrixMode(GL_MODELVIEW);
        glPopMatrix();
        glMatrixMode(GL_PROJECTION);
        glPopMatrix();
        glMatrixMode(static_cast<GLenum>(matrixMode_));
        glDisable(GL_TEXTURE_RECTANGLE);
        glDisable(GL_BLEND);
        if (depthTestWasEnabled_) glEnable(GL_DEPTH_TEST);
    }
    OverlayState(const OverlayState &) = delete;
    OverlayState &operator=(const OverlayState &) = delete;

private:
    GLboolean depthTestWasEnabled_;
    GLint matrixMode_ = GL_MODELVIEW;
};

} // namespace

float DXOpenGL::overlayAspect() const
{
    // Before the first drawing the camera has no size yet, but the tools can be pressed.
    const Size size = cameraSize.height > 0.0 ? cameraSize : bounds().size;
    return static_cast<float>(size.width / size.height);
}

Rect DXOpenGL::toolRectWithRatio_width_height_yOffset_relativeWidth(float aspect, float width,
                                                                    float height, float yOffset,
                                                                    float relativeWidth)
{
    return OverlayLayout::toolRectWithRatio_width_height_yOffset_relativeWidth(
        aspect, width, height, yOffset, relativeWidth);
}

Rect DXOpenGL::elasticsToolRect() const
{
    return OverlayLayout{overlayAspect()}.elasticsToolRect(sizeOf(elasticsToolTexture_));
}

Rect DXOpenGL::bracketColorToolRect() const
{
    return OverlayLayout{overlayAspect()}.bracketColorToolRect(sizeOf(bracketToolTexture_),
                                                               sizeOf(elasticsToolTexture_));
}

Rect DXOpenGL::printButtonRect() const
{
    return OverlayLayout{overlayAspect()}.printButtonRect(sizeOf(printButtonTexture_));
}

void DXOpenGL::drawExtraContent()
{
    if (_printMode || !makeCurrentContextIfNeeded()) return;
    reloadLostTextures();
    const float aspect = overlayAspect();
    if (!(aspect > 0.0f) || !std::isfinite(aspect)) return; // a view without area
    const auto toothLabels = placedToothLabels();
    const OverlayState state(aspect);
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    drawToothLabels(toothLabels);
    drawDateLabel();
    if (mayEdit()) {
        drawElasticsToolButton();
        drawBracketToolButton();
    }
    drawPrintButton();
}

void DXOpenGL::drawDateLabel()
{
    if (!dateStringTexture_) return;
    const Size size = dateStringTexture_->texSize();
    if (size.width <= 0.0 || size.height <= 0.0) return;
    dateStringTexture_->drawWithBounds(OverlayLayout::dateLabelRect(size));
}

void DXOpenGL::drawElasticsToolButton()
{
    drawToolButton_inRect(mouseModeIsElastics() ? elasticsToolSelectedTexture_
                                                : elasticsToolTexture_,
                          elasticsToolRect());
}

void DXOpenGL::drawBracketToolButton()
{
    drawToolButton_inRect(mouseModeIsBracketColor() ? bracketToolSelectedTexture_
                                                    : bracketToolTexture_,
                          bracketColorToolRect());
}

void DXOpenGL::drawPrintButton()
{
    // The last piece of the overlay; the next frame begins with white again.
    if (_printButtonDown) glColor3f(0.625f, 0.625f, 0.625f);
    drawToolButton_inRect(printButtonTexture_, printButtonRect());
}

void DXOpenGL::drawToolButton_inRect(const std::shared_ptr<SimpleTexture> &texture,
                                     const Rect &rect)
{
    if (!texture) return;
    const auto width = static_cast<float>(texture->width());
    const auto height = static_cast<float>(texture->height());
    const auto left = static_cast<float>(rect.origin.x);
    const auto bottom = static_cast<float>(rect.origin.y);
    const auto right = static_cast<float>(rect.origin.x + rect.size.width);
    const auto top = static_cast<float>(rect.origin.y + rect.size.height);
    // t runs downwards, for pictures are stored top row first.
    const Quad quad{{{left, bottom, 0.0f, height},
                     {right, bottom, width, height},
                     {right, top, width, 0.0f},
                     {left, top, 0.0f, 0.0f}}};

    toolVertices_->bind();
    streamedIndices_->bind();
    const bool filled =
        fillBuffer(*toolVertices_, quad) && fillBuffer(*streamedIndices_, quadIndices);
    if (filled) {
        glEnableClientState(GL_VERTEX_ARRAY);
        glEnableClientState(GL_TEXTURE_COORD_ARRAY);
        glVertexPointer(2, GL_FLOAT, sizeof(QuadVertex), bufferOffset(0));
        glTexCoordPointer(2, GL_FLOAT, sizeof(QuadVertex), bufferOffset(offsetof(QuadVertex, s)));
        texture->bind();
        glDrawElements(GL_QUADS, static_cast<GLsizei>(quadIndices.size()), GL_UNSIGNED_INT,
                       bufferOffset(0));
        SimpleTexture::unbind();
        glDisableClientState(GL_VERTEX_ARRAY);
        glDisableClientState(GL_TEXTURE_COORD_ARRAY);
    }
    toolVertices_->unbind();
    streamedIndices_->unbind();
}

} // namespace kelo
