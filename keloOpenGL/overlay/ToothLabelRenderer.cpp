#include "keloOpenGL/overlay/ToothLabelRenderer.h"

#include "platform/gl.h"

#include "keloOpenGL/view/StringTexture.h"

#include <utility>

namespace kelo {
namespace {

/// On the screen, in points. The picture is made twice as large, for screens of two pixels a point.
constexpr double labelPointSize = 13.0;
constexpr double pictureScale = 2.0;
/// Of the shade behind a label, left and right of its text, as a part of its height.
constexpr double sideMargin = 0.18;
/// Dark enough for white text over white teeth.
constexpr float shade = 0.55f;

Rect centredAt(const Point &middle, const Size &size)
{
    return {{middle.x - size.width / 2, middle.y - size.height / 2}, size};
}

void drawShade(const Rect &rect)
{
    glDisable(GL_TEXTURE_RECTANGLE);
    glColor4f(0.0f, 0.0f, 0.0f, shade);
    glRectd(rect.origin.x, rect.origin.y, rect.origin.x + rect.size.width,
            rect.origin.y + rect.size.height);
    glEnable(GL_TEXTURE_RECTANGLE);
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
}

} // namespace

ToothLabelRenderer::ToothLabelRenderer() = default;
ToothLabelRenderer::~ToothLabelRenderer() = default;

void ToothLabelRenderer::setLabels(ToothLabels labels)
{
    labels_ = std::move(labels);
}

StringTexture &ToothLabelRenderer::pictureOf(const std::string &text)
{
    auto &picture = pictures_[text];
    if (!picture)
        picture = std::make_unique<StringTexture>(
            text, TextAttributes{Color::whiteColor(), labelPointSize * pictureScale});
    return *picture;
}

Size ToothLabelRenderer::shownSizeOf(const std::string &text, double unitsPerPoint)
{
    const Size texels = pictureOf(text).texSize();
    const double height = texels.height / pictureScale * unitsPerPoint;
    return {texels.width / pictureScale * unitsPerPoint + 2 * sideMargin * height, height};
}

std::vector<PlacedToothLabel> ToothLabelRenderer::placedIn(const ToothLabelScene &scene)
{
    std::vector<PlacedToothLabel> placed;
    std::vector<ToothLabelBox> boxes;
    for (const LabelledTooth &tooth : scene.teeth) {
        const ToothLabelSpot spot = toothLabelSpot(
            tooth.tooth, tooth.isUpper ? scene.upperArch : scene.lowerArch, tooth.isUpper,
            tooth.isUpper ? scene.upperToEye : scene.lowerToEye, scene.projection, scene.aspect);
        const Rect rect = centredAt(spot.position, shownSizeOf(tooth.text, 2.0 / scene.viewHeight));
        placed.push_back({tooth.text, rect});
        boxes.push_back({rect, spot.facing});
    }
    std::vector<PlacedToothLabel> legible;
    for (const std::size_t label : legibleToothLabels(boxes))
        legible.push_back(placed[label]);
    return legible;
}

void ToothLabelRenderer::draw(const std::vector<PlacedToothLabel> &placed)
{
    for (const PlacedToothLabel &label : placed) {
        drawShade(label.rect);
        const double margin = sideMargin * label.rect.size.height;
        // The texture's first row, the text's top edge, belongs to the upper edge.
        pictureOf(label.text)
            .drawWithBounds(
                {{label.rect.origin.x + margin, label.rect.origin.y + label.rect.size.height},
                 {label.rect.size.width - 2 * margin, -label.rect.size.height}});
    }
}

void ToothLabelRenderer::dropPictures()
{
    pictures_.clear();
}

} // namespace kelo
