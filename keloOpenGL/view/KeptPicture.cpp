#include "keloOpenGL/view/KeptPicture.h"

#include "platform/gl.h"

namespace kelo {
namespace {

bool canCopyPictures()
{
    if (!epoxy_has_gl_extension("GL_EXT_framebuffer_object") ||
        !epoxy_has_gl_extension("GL_EXT_framebuffer_blit"))
        return false;
    GLint sampleBuffers = 0;
    glGetIntegerv(GL_SAMPLE_BUFFERS, &sampleBuffers);
    return sampleBuffers == 0;
}

/// The format that holds the colours of the buffer that is drawn into as they are; 0 where none is
/// sure to. Drivers give a pixel buffer ten bits a colour where eight are asked for.
GLenum formatOfDrawBuffer()
{
    GLint red = 0;
    GLint green = 0;
    GLint blue = 0;
    glGetIntegerv(GL_RED_BITS, &red);
    glGetIntegerv(GL_GREEN_BITS, &green);
    glGetIntegerv(GL_BLUE_BITS, &blue);
    if (red != green || red != blue) return 0;
    if (red == 8) return GL_RGBA8;
    return red == 10 ? GL_RGB10_A2 : 0;
}

/// Everything that copying changes, as it was before.
class CopyState
{
public:
    CopyState()
    {
        glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING_EXT, &draw_);
        glGetIntegerv(GL_READ_FRAMEBUFFER_BINDING_EXT, &read_);
        glPushAttrib(GL_SCISSOR_BIT);
        glDisable(GL_SCISSOR_TEST); // a copy is cut by it
    }
    ~CopyState()
    {
        glPopAttrib();
        glBindFramebufferEXT(GL_DRAW_FRAMEBUFFER_EXT, static_cast<GLuint>(draw_));
        glBindFramebufferEXT(GL_READ_FRAMEBUFFER_EXT, static_cast<GLuint>(read_));
    }
    CopyState(const CopyState &) = delete;
    CopyState &operator=(const CopyState &) = delete;
    GLuint drawFramebuffer() const { return static_cast<GLuint>(draw_); }

private:
    GLint draw_ = 0;
    GLint read_ = 0;
};

void copy(const PixelSize &size)
{
    glBlitFramebufferEXT(0, 0, size.width, size.height, 0, 0, size.width, size.height,
                         GL_COLOR_BUFFER_BIT, GL_NEAREST);
}

} // namespace

bool KeptPicture::keep(const PixelSize &size)
{
    const GLenum format = formatOfDrawBuffer();
    if (format == 0 || !canCopyPictures()) return false;
    const CopyState before;
    GLint drawBuffer = GL_BACK;
    glGetIntegerv(GL_DRAW_BUFFER, &drawBuffer);
    if (!target_.bind(size, {format})) {
        glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, before.drawFramebuffer());
        target_.drop();
        return false;
    }
    glBindFramebufferEXT(GL_READ_FRAMEBUFFER_EXT, before.drawFramebuffer());
    GLint readBuffer = GL_BACK;
    glGetIntegerv(GL_READ_BUFFER, &readBuffer);
    glReadBuffer(static_cast<GLenum>(drawBuffer));
    copy(size);
    glReadBuffer(static_cast<GLenum>(readBuffer));
    return true;
}

bool KeptPicture::restore() const
{
    const std::uint32_t kept = target_.framebufferName();
    if (kept == 0) return false;
    const CopyState before;
    glBindFramebufferEXT(GL_READ_FRAMEBUFFER_EXT, kept);
    copy(target_.size());
    return true;
}

} // namespace kelo
