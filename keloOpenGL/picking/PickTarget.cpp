#include "keloOpenGL/picking/PickTarget.h"

#include "platform/gl.h"

namespace kelo {
namespace {

/// Whether drawing and reading may go to different framebuffers in the current context.
bool hasSeparateReadFramebuffer()
{
    return epoxy_gl_version() >= 30 || epoxy_has_gl_extension("GL_EXT_framebuffer_blit") ||
           epoxy_has_gl_extension("GL_ARB_framebuffer_object");
}

std::uint32_t makeRenderbuffer(GLenum format, const PixelSize &size)
{
    GLuint name = 0;
    glGenRenderbuffersEXT(1, &name);
    glBindRenderbufferEXT(GL_RENDERBUFFER_EXT, name);
    glRenderbufferStorageEXT(GL_RENDERBUFFER_EXT, format, size.width, size.height);
    return name;
}

} // namespace

PickTarget::~PickTarget()
{
    drop();
}

bool PickTarget::isAvailable()
{
    return epoxy_has_gl_extension("GL_EXT_framebuffer_object");
}

std::uint32_t PickTarget::framebufferName() const
{
    const auto current = OpenGLContext::currentContext();
    return current && context_.lock() == current ? framebuffer_ : 0;
}

void PickTarget::drop()
{
    if (const auto context = context_.lock()) {
        context->deleteFramebuffer(framebuffer_);
        context->deleteRenderbuffer(color_);
        context->deleteRenderbuffer(depth_);
    }
    context_.reset();
    framebuffer_ = color_ = depth_ = 0;
    size_ = {};
}

/// Binds the framebuffer object, made anew where it must be; false leaves none behind.
bool PickTarget::prepare(const PixelSize &size)
{
    if (framebufferName() != 0 && size == size_) {
        glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, framebuffer_);
        return true;
    }
    drop();
    GLint largest = 0;
    glGetIntegerv(GL_MAX_RENDERBUFFER_SIZE_EXT, &largest);
    if (size.width <= 0 || size.height <= 0 || size.width > largest || size.height > largest)
        return false;

    GLint renderbufferBefore = 0;
    glGetIntegerv(GL_RENDERBUFFER_BINDING_EXT, &renderbufferBefore);
    context_ = OpenGLContext::currentContext();
    color_ = makeRenderbuffer(GL_RGBA8, size);
    depth_ = makeRenderbuffer(GL_DEPTH_COMPONENT24, size);
    glBindRenderbufferEXT(GL_RENDERBUFFER_EXT, static_cast<GLuint>(renderbufferBefore));
    glGenFramebuffersEXT(1, &framebuffer_);
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, framebuffer_);
    glFramebufferRenderbufferEXT(GL_FRAMEBUFFER_EXT, GL_COLOR_ATTACHMENT0_EXT, GL_RENDERBUFFER_EXT,
                                 color_);
    glFramebufferRenderbufferEXT(GL_FRAMEBUFFER_EXT, GL_DEPTH_ATTACHMENT_EXT, GL_RENDERBUFFER_EXT,
                                 depth_);
    size_ = size;
    return glCheckFramebufferStatusEXT(GL_FRAMEBUFFER_EXT) == GL_FRAMEBUFFER_COMPLETE_EXT;
}

PickTarget::Binding::Binding(PickTarget &target, const PixelSize &size)
{
    if (!isAvailable()) return;
    glGetIntegerv(GL_FRAMEBUFFER_BINDING_EXT, &drawBinding_);
    readBinding_ = drawBinding_;
    if (hasSeparateReadFramebuffer()) glGetIntegerv(GL_READ_FRAMEBUFFER_BINDING_EXT, &readBinding_);
    isBound_ = target.prepare(size);
    if (isBound_) return;
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, static_cast<GLuint>(drawBinding_));
    target.drop();
}

PickTarget::Binding::~Binding()
{
    if (!isBound_) return;
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, static_cast<GLuint>(drawBinding_));
    if (readBinding_ != drawBinding_)
        glBindFramebufferEXT(GL_READ_FRAMEBUFFER_EXT, static_cast<GLuint>(readBinding_));
}

} // namespace kelo
