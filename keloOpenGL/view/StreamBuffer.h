#pragma once

#include "base/Export.h"
#include "platform/view/OpenGLContext.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace kelo {

/// A buffer object that is filled anew before every drawing from it. Its name is made on first use,
/// kept, and made again in a new context after its own was lost. Used while a context is current.
class KELO_EXPORT StreamBuffer
{
public:
    enum class Kind { Vertices, Indices };

    explicit StreamBuffer(Kind kind) : kind_(kind) {}
    ~StreamBuffer();
    StreamBuffer(const StreamBuffer &) = delete;
    StreamBuffer &operator=(const StreamBuffer &) = delete;

    /// Binds the buffer as its kind is bound.
    void bind();
    /// Binds no buffer in its place.
    void unbind() const;

    /// Throws away what the bound buffer holds and maps room for elements, to be written front to
    /// back and not read; null where the driver gives no memory.
    template<class Element>
    Element *mapNew(std::size_t count) const
    {
        return static_cast<Element *>(mapNewBytes(count * sizeof(Element)));
    }
    /// Ends the mapping. False where the driver has lost what was written, as when the display
    /// changed.
    bool unmap() const;

private:
    void *mapNewBytes(std::size_t size) const;
    void drop();

    Kind kind_;
    std::weak_ptr<OpenGLContext> context_;
    std::uint32_t name_ = 0;
};

} // namespace kelo
