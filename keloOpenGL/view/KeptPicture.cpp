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

KeptPicture::~KeptPicture()
{
    drop();
}

void KeptPicture::drop()
{
    if (const auto context = context_.lock()) {
        context->deleteFramebuffer(framebuffer_);
        context->deleteRenderbuffer(color_);
    }
    context_.reset();
    framebuffer_ = color_ = 0;
    size_ = {};
}

/// Makes the framebuffer object, anew where it must be, and binds it to be drawn into.
bool KeptPicture::prepare(const PixelSize &size, std::uint32_t format)
{
    const auto current = OpenGLContext::currentContext();
    if (!current) return false;
    if (context_.lock() == current && size == size_) {
        glBindFramebufferEXT(GL_DRAW_FRAMEBUFFER_EXT, framebuffer_);
        return true;
    }
    drop();
    GLint largest = 0;
    glGetIntegerv(GL_MAX_RENDERBUFFER_SIZE_EXT, &largest);
    if (size.width <= 0 || size.height <= 0 || size.width > largest || size.height > largest)
        return false;
    context_ = current;
    size_ = size;
    GLint renderbufferBefore = 0;
    glGetIntegerv(GL_RENDERBUFFER_BINDING_EXT, &renderbufferBefore);
    glGenRenderbuffersEXT(1, &color_);
    glBindRenderbufferEXT(GL_RENDERBUFFER_EXT, color_);
    glRenderbufferStorageEXT(GL_RENDERBUFFER_EXT, format, size.width, size.height);
    glBindRenderbufferEXT(GL_RENDERBUFFER_EXT, static_cast<GLuint>(renderbufferBefore));
    glGenFramebuffersEXT(1, &framebuffer_);
    glBindFramebufferEXT(GL_DRAW_FRAMEBUFFER_EXT, framebuffer_);
    glFramebufferRenderbufferEXT(GL_DRAW_FRAMEBUFFER_EXT, GL_COLOR_ATTACHMENT0_EXT,
                                 GL_RENDERBUFFER_EXT, color_);
    return glCheckFramebufferStatusEXT(GL_DRAW_FRAMEBUFFER_EXT) == GL_FRAMEBUFFER_COMPLETE_EXT;
}

bool KeptPicture::keep(const PixelSize &size)
{
    const GLenum format = formatOfDrawBuffer();
    if (format == 0 || !canCopyPictures()) return false;
    const CopyState before;
    GLint drawBuffer = GL_BACK;
    glGetIntegerv(GL_DRAW_BUFFER, &drawBuffer);
    if (!prepare(size, format)) {
        drop();
        return false;
    }
    glBindFramebufferEXT(GL_READ_FRAMEBUFFER_EXT, before.drawFramebuffer());
    GLint readBuffer = GL_BACK;
    glGetIntegerv(GL_READ_BUFFER, &readBuffer);
    glReadBuffer(static_cast<GLenum>(drawBuffer));
    copy(size_);
    glReadBuffer(static_cast<GLenum>(readBuffer));
    return true;
}

bool KeptPicture::restore() const
{
    const auto current = OpenGLContext::currentContext();
    if (!current || context_.lock() != current) return false;
    const CopyState before;
    glBindFramebufferEXT(GL_READ_FRAMEBUFFER_EXT, framebuffer_);
    copy(size_);
    return true;
}

} // namespace kelo
