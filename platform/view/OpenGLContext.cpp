#include "platform/view/OpenGLContext.h"

#include "platform/gl.h"

#include <string>
#include <utility>

namespace kelo {
namespace {

std::weak_ptr<OpenGLContext> &lastMadeCurrent()
{
    static std::weak_ptr<OpenGLContext> context;
    return context;
}

} // namespace

OpenGLContext::OpenGLContext() = default;
OpenGLContext::~OpenGLContext() = default;

std::shared_ptr<OpenGLContext> OpenGLContext::currentContext()
{
    auto context = lastMadeCurrent().lock();
    // Other code may have made a context of its own current meanwhile.
    return context && context->isSurfaceCurrent() ? context : nullptr;
}

bool OpenGLContext::makeCurrentContext()
{
    if (!isSurfaceCurrent()) {
        // A window's context and one without display may belong to two window-system interfaces,
        // of which only one at a time can have a current context.
        if (auto other = currentContext(); other && other.get() != this) other->releaseSurface();
        if (!makeSurfaceCurrent()) return false;
    }
    lastMadeCurrent() = weak_from_this();
    for (const Name &name : std::exchange(waitingNames_, {}))
        deleteNow(name);
    return true;
}

bool OpenGLContext::isCurrent() const
{
    return isSurfaceCurrent();
}

void OpenGLContext::flushBuffer()
{
    if (!isFlushSuppressed()) swapSurface();
}

OpenGLContext::FlushSuppression::FlushSuppression(OpenGLContext &context) : context_(context)
{
    ++context_.flushSuppressions_;
}

OpenGLContext::FlushSuppression::~FlushSuppression()
{
    --context_.flushSuppressions_;
}

void OpenGLContext::deleteBuffer(std::uint32_t name)
{
    deleteName({NameKind::Buffer, name});
}

void OpenGLContext::deleteTexture(std::uint32_t name)
{
    deleteName({NameKind::Texture, name});
}

void OpenGLContext::deleteFramebuffer(std::uint32_t name)
{
    deleteName({NameKind::Framebuffer, name});
}

void OpenGLContext::deleteRenderbuffer(std::uint32_t name)
{
    deleteName({NameKind::Renderbuffer, name});
}

void OpenGLContext::deleteName(Name name)
{
    if (name.name == 0) return;
    if (isSurfaceCurrent())
        deleteNow(name);
    else
        waitingNames_.push_back(name);
}

void OpenGLContext::deleteNow(Name name)
{
    const GLuint glName = name.name;
    switch (name.kind) {
    case NameKind::Buffer:
        glDeleteBuffers(1, &glName);
        break;
    case NameKind::Texture:
        glDeleteTextures(1, &glName);
        break;
    case NameKind::Framebuffer:
        glDeleteFramebuffersEXT(1, &glName);
        break;
    case NameKind::Renderbuffer:
        glDeleteRenderbuffersEXT(1, &glName);
        break;
    }
}

void OpenGLContext::requireLegacyOpenGL()
{
    const auto *text = reinterpret_cast<const char *>(glGetString(GL_VERSION));
    const std::string versionText = text ? text : "nothing";
    const int version = epoxy_gl_version(); // 10 times major plus minor
    bool legacy = epoxy_is_desktop_gl() && version >= 21;
    if (legacy && version >= 32) {
        GLint profile = 0;
        glGetIntegerv(GL_CONTEXT_PROFILE_MASK, &profile);
        legacy = (profile & GL_CONTEXT_CORE_PROFILE_BIT) == 0;
    } else if (legacy && version == 31) {
        legacy = epoxy_has_gl_extension("GL_ARB_compatibility");
    }
    if (legacy && version >= 30) {
        // A forward-compatible context has dropped the fixed-function calls whatever its profile.
        GLint flags = 0;
        glGetIntegerv(GL_CONTEXT_FLAGS, &flags);
        legacy = (flags & GL_CONTEXT_FLAG_FORWARD_COMPATIBLE_BIT) == 0;
    }
    if (!legacy)
        throw OpenGLUnavailable("The 3D view needs OpenGL 2.1 with the fixed-function pipeline, "
                                "but this system offers only \"" +
                                versionText + "\".");
}

} // namespace kelo
