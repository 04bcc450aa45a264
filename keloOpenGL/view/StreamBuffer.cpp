#include "keloOpenGL/view/StreamBuffer.h"

#include "platform/gl.h"

namespace kelo {
namespace {

GLenum bufferTarget(StreamBuffer::Kind kind)
{
    return kind == StreamBuffer::Kind::Vertices ? GL_ARRAY_BUFFER : GL_ELEMENT_ARRAY_BUFFER;
}

} // namespace

StreamBuffer::~StreamBuffer()
{
    drop();
}

void StreamBuffer::drop()
{
    if (const auto context = context_.lock()) context->deleteBuffer(name_);
    context_.reset();
    name_ = 0;
}

void StreamBuffer::bind()
{
    const auto current = OpenGLContext::currentContext();
    if (name_ == 0 || context_.lock() != current) {
        drop();
        context_ = current;
        glGenBuffers(1, &name_);
    }
    glBindBuffer(bufferTarget(kind_), name_);
}

void StreamBuffer::unbind() const
{
    glBindBuffer(bufferTarget(kind_), 0);
}

void *StreamBuffer::mapNewBytes(std::size_t size) const
{
    glBufferData(bufferTarget(kind_), static_cast<GLsizeiptr>(size), nullptr, GL_STREAM_DRAW);
    return glMapBuffer(bufferTarget(kind_), GL_WRITE_ONLY);
}

bool StreamBuffer::unmap() const
{
    return glUnmapBuffer(bufferTarget(kind_)) == GL_TRUE;
}

} // namespace kelo
