#include "keloOpenGL/overlay/OverlayRenderer.h"

#include "platform/gl.h"

#include "keloOpenGL/view/SimpleTexture.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace kelo {
namespace {

/// Position, then texture coordinates in texels.
struct QuadVertex
{
    float x, y, s, t;
};

using Quad = std::array<QuadVertex, 4>;
constexpr std::array<std::uint32_t, 4> quadIndices{0, 1, 2, 3};

Quad quadOf(const SimpleTexture &picture, const Rect &rect)
{
    const auto width = static_cast<float>(picture.width());
    const auto height = static_cast<float>(picture.height());
    const auto left = static_cast<float>(rect.origin.x);
    const auto bottom = static_cast<float>(rect.origin.y);
    const auto right = static_cast<float>(rect.origin.x + rect.size.width);
    const auto top = static_cast<float>(rect.origin.y + rect.size.height);
    // t runs downwards, for pictures are stored top row first.
    return {{{left, bottom, 0.0f, height},
             {right, bottom, width, height},
             {right, top, width, 0.0f},
             {left, top, 0.0f, 0.0f}}};
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

void drawBoundQuad(const SimpleTexture &picture)
{
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glVertexPointer(2, GL_FLOAT, sizeof(QuadVertex), bufferOffset(0));
    glTexCoordPointer(2, GL_FLOAT, sizeof(QuadVertex), bufferOffset(offsetof(QuadVertex, s)));
    picture.bind();
    glDrawElements(GL_QUADS, static_cast<GLsizei>(quadIndices.size()), GL_UNSIGNED_INT,
                   bufferOffset(0));
    SimpleTexture::unbind();
    glDisableClientState(GL_VERTEX_ARRAY);
    glDisableClientState(GL_TEXTURE_COORD_ARRAY);
}

} // namespace

OverlayState::OverlayState(double aspect)
    : depthTestWasEnabled_(glIsEnabled(GL_DEPTH_TEST) == GL_TRUE)
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

OverlayState::~OverlayState()
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

OverlayRenderer::OverlayRenderer() = default;
OverlayRenderer::~OverlayRenderer() = default;

const OverlayRenderer::Picture &OverlayRenderer::picture(OverlayToolID id, Look look) const
{
    const Pictures &pictures = pictures_[static_cast<std::size_t>(id)];
    return look == Look::Selected ? pictures.selected : pictures.plain;
}

void OverlayRenderer::setPicture(OverlayToolID id, Look look, Picture texture)
{
    Pictures &pictures = pictures_[static_cast<std::size_t>(id)];
    (look == Look::Selected ? pictures.selected : pictures.plain) = std::move(texture);
}

OverlayPictureSizes OverlayRenderer::pictureSizes() const
{
    OverlayPictureSizes sizes;
    std::transform(pictures_.begin(), pictures_.end(), sizes.begin(), [](const Pictures &pictures) {
        return pictures.plain ? TextureSize{pictures.plain->width(), pictures.plain->height()}
                              : TextureSize{};
    });
    return sizes;
}

void OverlayRenderer::drawTool(const OverlayTool &tool, Look look, const OverlayLayout &layout,
                               StreamBuffer &indices)
{
    const bool hasOtherLook = look == Look::Selected && tool.selectedPicture;
    drawPicture(picture(tool.id, hasOtherLook ? Look::Selected : Look::Plain),
                tool.rect(layout, pictureSizes()), indices);
}

void OverlayRenderer::drawPicture(const Picture &texture, const Rect &rect, StreamBuffer &indices)
{
    if (!texture) return;
    const Quad quad = quadOf(*texture, rect);
    vertices_.bind();
    indices.bind();
    if (fillBuffer(vertices_, quad) && fillBuffer(indices, quadIndices)) drawBoundQuad(*texture);
    vertices_.unbind();
    indices.unbind();
}

} // namespace kelo
