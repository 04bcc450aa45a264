#include "keloOpenGL/picking/PickPass.h"

#include "platform/gl.h"

#include "models/PickIdentifier.h"

#include <array>
#include <cstddef>

namespace kelo {
namespace {

using PickPixel = std::array<GLubyte, 3>;

/// The three bytes of the pixel before it is read. A point without a pixel leaves them.
constexpr PickPixel unreadPixel{noPixelPickIdentifier >> 16, noPixelPickIdentifier >> 8 & 0xFF,
                                noPixelPickIdentifier & 0xFF};

std::uint32_t identifierOfPixel(const PickPixel &pixel)
{
    return pixel[0] * 0x10000u + pixel[1] * 0x100u + pixel[2];
}

} // namespace

OffscreenTarget::Formats pickFormats()
{
    return {GL_RGBA8, GL_DEPTH_COMPONENT24};
}

PickPassState::PickPassState()
{
    glPushAttrib(GL_ENABLE_BIT | GL_LIGHTING_BIT | GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT |
                 GL_SCISSOR_BIT | GL_CURRENT_BIT | GL_TRANSFORM_BIT);
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
}

PickPassState::~PickPassState()
{
    glMatrixMode(GL_MODELVIEW);
    glPopMatrix();
    glPopClientAttrib();
    glPopAttrib();
}

void beginPickPass(const std::optional<PixelRect> &onlyPart)
{
    for (const GLenum capability : {GL_DITHER, GL_BLEND, GL_FOG, GL_TEXTURE_2D, GL_ALPHA_TEST,
                                    GL_COLOR_LOGIC_OP, GL_STENCIL_TEST, GL_LIGHTING})
        glDisable(capability);
    // The first drawing cycle does this too, but a pick may come before it.
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_CULL_FACE);
    glDepthMask(GL_TRUE);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    if (onlyPart) {
        glEnable(GL_SCISSOR_TEST);
        glScissor(onlyPart->column, onlyPart->row, onlyPart->width, onlyPart->height);
    } else {
        glDisable(GL_SCISSOR_TEST);
    }
    glClearColor(0.0f, 0.0f, 0.0f, 0.0f);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
}

std::uint32_t readPickIdentifier(int column, int row)
{
    PickPixel pixel = unreadPixel;
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glPixelStorei(GL_PACK_SKIP_ROWS, 0);
    glPixelStorei(GL_PACK_SKIP_PIXELS, 0);
    glReadPixels(column, row, 1, 1, GL_RGB, GL_UNSIGNED_BYTE, pixel.data());
    return identifierOfPixel(pixel);
}

std::vector<std::uint32_t> readPickIdentifiers(const PixelSize &size)
{
    const auto pixelCount = static_cast<std::size_t>(size.width) * size.height;
    std::vector<GLubyte> colors(3 * pixelCount);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, size.width, size.height, GL_RGB, GL_UNSIGNED_BYTE, colors.data());
    std::vector<std::uint32_t> identifiers(pixelCount);
    for (std::size_t i = 0; i < pixelCount; ++i)
        identifiers[i] = identifierOfPixel({colors[3 * i], colors[3 * i + 1], colors[3 * i + 2]});
    return identifiers;
}

} // namespace kelo
