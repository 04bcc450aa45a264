#pragma once

#include "base/Export.h"
#include "base/Rect.h"
#include "models/Color.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace kelo {

class OpenGLContext;

/// How a text looks, in the platform's system font.
struct TextAttributes
{
    Color foregroundColor = Color::blackColor();
    double pointSize = 12.0;
    bool operator==(const TextAttributes &) const = default;
};

/// A text with its look.
struct AttributedString
{
    std::string text; ///< UTF-8
    TextAttributes attributes;
};

/// A text drawn into an OpenGL rectangle texture, on first use, one texel a point. Main thread
/// only; drawn while the context that it is for is current.
///
/// The texture is kept, and drawn, for the rest of the object's life even when the text, a colour,
/// the margins or the frame change, and its name is not given back when the object goes: who needs
/// another text makes another StringTexture. The text, box and border colours and the margins do
/// not enter the picture; the text's own attributes give its colour.
class KELO_EXPORT StringTexture
{
public:
    using OptionalColor = std::optional<Color>;

    StringTexture(AttributedString string, OptionalColor textColor, OptionalColor boxColor,
                  OptionalColor borderColor);
    StringTexture(std::string text, const TextAttributes &attributes, OptionalColor textColor,
                  OptionalColor boxColor, OptionalColor borderColor);
    /// Opaque white text, transparent white box and border.
    explicit StringTexture(AttributedString string);
    StringTexture(std::string text, const TextAttributes &attributes);
    ~StringTexture();
    StringTexture(const StringTexture &) = delete;
    StringTexture &operator=(const StringTexture &) = delete;

    /// @name The texture
    /// @{
    /// 0 until the texture is generated, or where it cannot be.
    std::uint32_t texName() const { return texName_; }
    /// In texels: the text's size rounded outwards. Generates the texture first if there is none.
    Size texSize();
    /// Renders the text and uploads it. Without a graphical application, or without a current
    /// context, there is no texture afterwards.
    void genTexture();
    /// Draws the texture into a rectangle of the caller's coordinates: the text's top edge lies at
    /// its y, the bottom edge at y + height. Binds the texture, but does not enable the rectangle
    /// target. Draws nothing where no texture can be generated.
    void drawWithBounds(const Rect &bounds);
    /// The same at a point, in the texture's own size.
    void drawAtPoint(const Point &point);
    /// @}

    /// @name The text and its frame
    /// @{
    const AttributedString &string() const { return string_; }
    const std::string &text() const { return string_.text; }
    void setString(AttributedString string);
    void setString_withAttributes(std::string text, const TextAttributes &attributes);
    const OptionalColor &textColor() const { return textColor_; }
    const OptionalColor &boxColor() const { return boxColor_; }
    const OptionalColor &borderColor() const { return borderColor_; }
    void setTextColor(OptionalColor color);
    void setBoxColor(OptionalColor color);
    void setBorderColor(OptionalColor color);
    /// Added on each side of the text in a frame that is not static; (4, 2) at first.
    Size marginSize() const { return marginSize_; }
    void setMargins(const Size &margins);
    bool staticFrame() const { return staticFrame_; }
    /// The text's size with its margins, or the size that useStaticFrame fixed.
    Size frameSize();
    void useStaticFrame(const Size &size);
    /// Nothing unless the frame is static.
    void useDynamicFrame();
    /// @}

private:
    void deleteTexture();
    void forgetDynamicFrame();
    /// In points; nothing where no text can be laid out.
    std::optional<Size> stringSize() const;

    std::weak_ptr<OpenGLContext> cgl_ctx; ///< never set here: no texture is ever deleted
    std::uint32_t texName_ = 0;
    Size texSize_;
    AttributedString string_;
    OptionalColor textColor_;
    OptionalColor boxColor_;
    OptionalColor borderColor_;
    bool staticFrame_ = false;
    Size marginSize_{4.0, 2.0};
    Size frameSize_;
};

} // namespace kelo
