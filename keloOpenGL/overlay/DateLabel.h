#pragma once

#include "base/Export.h"

#include <memory>
#include <string>

namespace kelo {

class StringTexture;

/// The label at the top of the overlay: a text, as a texture of the context that is current when it
/// is first drawn.
class KELO_EXPORT DateLabel
{
public:
    using Texture = std::shared_ptr<StringTexture>;

    /// A text in the label's look: opaque white, without box and border.
    static Texture textureOf(const std::string &text);

    /// Null for no label.
    const Texture &texture() const { return texture_; }
    void setTexture(Texture texture);
    /// After the context was lost: makes the texture again, with the same text and look, for the
    /// next one. Nothing without a texture.
    void renewTexture();

    /// Draws the label where OverlayLayout has it, within an OverlayState. Nothing without a
    /// texture, or for a text without extent.
    void draw() const;

private:
    Texture texture_;
};

} // namespace kelo
