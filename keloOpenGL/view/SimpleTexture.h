#pragma once

#include "base/Export.h"

#include <cstdint>
#include <memory>
#include <string>

namespace kelo {

class OpenGLContext;

/// The picture of an image file in an OpenGL rectangle texture, whose coordinates are in texels:
/// (0, 0) is the picture's top left corner, (width, height) its bottom right one. Premultiplied
/// alpha. Made, drawn and destroyed on the main thread; to be made and bound while the context that
/// it is for is current.
class KELO_EXPORT SimpleTexture
{
public:
    /// Null, without a message, when the file cannot be read as an image, or when no context is
    /// current. (Of a damaged PNG file the decoder itself may write a line to standard error.)
    static std::shared_ptr<SimpleTexture> textureWithFile(const std::string &path);
    /// Deletes the texture, if its context is still there.
    ~SimpleTexture();
    SimpleTexture(const SimpleTexture &) = delete;
    SimpleTexture &operator=(const SimpleTexture &) = delete;

    /// In pixels.
    unsigned width() const { return width_; }
    unsigned height() const { return height_; }

    /// Enables the rectangle target and binds this texture to it.
    void bind() const;
    /// Disables the rectangle target and binds no texture to it.
    static void unbind();

private:
    SimpleTexture() = default;
    bool initWithFile(const std::string &path);

    std::uint32_t textureName = 0;
    unsigned width_ = 0;
    unsigned height_ = 0;
    std::weak_ptr<OpenGLContext> context_; ///< that the name was made in
};

} // namespace kelo
