#include "keloOpenGL/printing/PrintTarget.h"

#include "platform/gl.h"

#include <algorithm>
#include <cstddef>

namespace kelo {
namespace {

constexpr int bytesOfPrintedPixel = 3;

void shrinkDepthBuffer(GLuint name)
{
    glBindRenderbufferEXT(GL_RENDERBUFFER_EXT, name);
    glRenderbufferStorageEXT(GL_RENDERBUFFER_EXT, GL_DEPTH_COMPONENT, 1, 1);
    glBindRenderbufferEXT(GL_RENDERBUFFER_EXT, 0);
}

} // namespace

PrintTarget::PrintTarget(const PixelSize &size)
{
    // Whether it is complete is for the view to say.
    target_.bind(size, {GL_RGB, GL_DEPTH_COMPONENT});
}

PrintTarget::~PrintTarget()
{
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, 0);
    const bool isHere = isMade();
    const GLuint depth = keepsDepthBufferName_ ? target_.releaseDepthBuffer() : 0;
    target_.drop();
    // Not before: what is still attached would be in a framebuffer of two sizes.
    if (isHere && depth != 0) shrinkDepthBuffer(depth);
}

std::vector<unsigned char> readPrintImage(int column, const PixelSize &size)
{
    const std::size_t rowBytes = static_cast<std::size_t>(bytesOfPrintedPixel) * size.width;
    const auto rowCount = static_cast<std::size_t>(size.height);
    std::vector<unsigned char> bottomUp(rowBytes * rowCount);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(column, 0, size.width, size.height, GL_RGB, GL_UNSIGNED_BYTE, bottomUp.data());
    // Nothing but OpenGL counts rows from the bottom.
    std::vector<unsigned char> image(bottomUp.size());
    for (std::size_t row = 0; row < rowCount; ++row) {
        const unsigned char *source = bottomUp.data() + (rowCount - 1 - row) * rowBytes;
        std::copy(source, source + rowBytes, image.data() + row * rowBytes);
    }
    return image;
}

} // namespace kelo
