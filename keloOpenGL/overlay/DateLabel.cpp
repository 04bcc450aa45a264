#include "keloOpenGL/overlay/DateLabel.h"

#include "keloOpenGL/overlay/OverlayLayout.h"
#include "keloOpenGL/view/StringTexture.h"

#include <utility>

namespace kelo {
namespace {

constexpr double dateLabelPointSize = 36.0;

} // namespace

DateLabel::Texture DateLabel::textureOf(const std::string &text)
{
    TextAttributes attributes;
    attributes.foregroundColor = Color::whiteColor();
    attributes.pointSize = dateLabelPointSize;
    const Color clear = Color{0.0, 0.0, 0.0, 0.0};
    return std::make_shared<StringTexture>(text, attributes, Color::whiteColor(), clear, clear);
}

void DateLabel::setTexture(Texture texture)
{
    texture_ = std::move(texture);
}

void DateLabel::renewTexture()
{
    if (!texture_) return;
    texture_ = std::make_shared<StringTexture>(texture_->string(), texture_->textColor(),
                                               texture_->boxColor(), texture_->borderColor());
}

void DateLabel::draw() const
{
    if (!texture_) return;
    const Size size = texture_->texSize();
    if (size.width <= 0.0 || size.height <= 0.0) return;
    texture_->drawWithBounds(OverlayLayout::dateLabelRect(size));
}

} // namespace kelo
