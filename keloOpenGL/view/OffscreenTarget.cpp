#include "keloOpenGL/view/OffscreenTarget.h"

#include "platform/gl.h"

#include <utility>

namespace kelo {
namespace {

/// Whether drawing and reading may go to different framebuffers in the current context.
bool hasSeparateReadFramebuffer()
{
    return epoxy_gl_version() >= 30 || epoxy_has_gl_extension("GL_EXT_framebuffer_blit") ||
           epoxy_has_gl_extension("GL_ARB_framebuffer_object");
}

bool canBeHad(const PixelSize &size)
{
    GLint largest = 0;
    glGetIntegerv(GL_MAX_RENDERBUFFER_SIZE_EXT, &largest);
    return size.width > 0 && size.height > 0 && size.width <= largest && size.height <= largest;
}

std::uint32_t makeRenderbuffer(GLenum format, const PixelSize &size)
{
    GLuint name = 0;
    glGenRenderbuffersEXT(1, &name);
    glBindRenderbufferEXT(GL_RENDERBUFFER_EXT, name);
    glRenderbufferStorageEXT(GL_RENDERBUFFER_EXT, format, size.width, size.height);
    return name;
}

void attach(GLenum attachment, std::uint32_t renderbuffer)
{
    glFramebufferRenderbufferEXT(GL_FRAMEBUFFER_EXT, attachment, GL_RENDERBUFFER_EXT, renderbuffer);
}

} // namespace

OffscreenTarget::~OffscreenTarget()
{
    drop();
}

bool OffscreenTarget::isAvailable()
{
    return epoxy_has_gl_extension("GL_EXT_framebuffer_object");
}

std::uint32_t OffscreenTarget::framebufferName() const
{
    const auto current = OpenGLContext::currentContext();
    return current && context_.lock() == current ? framebuffer_ : 0;
}

void OffscreenTarget::drop()
{
    if (const auto context = context_.lock()) {
        context->deleteFramebuffer(framebuffer_);
        context->deleteRenderbuffer(color_);
        context->deleteRenderbuffer(depth_);
    }
    context_.reset();
    framebuffer_ = color_ = depth_ = 0;
    size_ = {};
    formats_ = {};
}

std::uint32_t OffscreenTarget::releaseDepthBuffer()
{
    return std::exchange(depth_, 0);
}

void OffscreenTarget::make(const PixelSize &size, const Formats &formats)
{
    GLint renderbufferBefore = 0;
    glGetIntegerv(GL_RENDERBUFFER_BINDING_EXT, &renderbufferBefore);
    context_ = OpenGLContext::currentContext();
    size_ = size;
    formats_ = formats;
    color_ = makeRenderbuffer(formats.color, size);
    if (formats.depth != 0) depth_ = makeRenderbuffer(formats.depth, size);
    glBindRenderbufferEXT(GL_RENDERBUFFER_EXT, static_cast<GLuint>(renderbufferBefore));
    glGenFramebuffersEXT(1, &framebuffer_);
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, framebuffer_);
    attach(GL_COLOR_ATTACHMENT0_EXT, color_);
    if (depth_ != 0) attach(GL_DEPTH_ATTACHMENT_EXT, depth_);
}

bool OffscreenTarget::bind(const PixelSize &size, const Formats &formats)
{
    if (framebufferName() != 0 && size == size_ && formats == formats_) {
        glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, framebuffer_);
        return true;
    }
    drop();
    if (!canBeHad(size)) return false;
    make(size, formats);
    if (glCheckFramebufferStatusEXT(GL_FRAMEBUFFER_EXT) == GL_FRAMEBUFFER_COMPLETE_EXT) return true;
    size_ = {}; // nothing that the next use could take for the same
    return false;
}

OffscreenTarget::Binding::Binding(OffscreenTarget &target, const PixelSize &size,
                                  const Formats &formats)
{
    if (!isAvailable()) return;
    glGetIntegerv(GL_FRAMEBUFFER_BINDING_EXT, &drawBinding_);
    readBinding_ = drawBinding_;
    if (hasSeparateReadFramebuffer()) glGetIntegerv(GL_READ_FRAMEBUFFER_BINDING_EXT, &readBinding_);
    isBound_ = target.bind(size, formats);
    if (isBound_) return;
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, static_cast<GLuint>(drawBinding_));
    target.drop();
}

OffscreenTarget::Binding::~Binding()
{
    if (!isBound_) return;
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, static_cast<GLuint>(drawBinding_));
    if (readBinding_ != drawBinding_)
        glBindFramebufferEXT(GL_READ_FRAMEBUFFER_EXT, static_cast<GLuint>(readBinding_));
}

} // namespace kelo
