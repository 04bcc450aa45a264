// The numbers beside the teeth.

#include "platform/gl.h"

#include "keloOpenGL/treatment/DXOpenGL.h"
#include "keloOpenGL/treatment/DXOpenGLState.h"

#include "document/DXDocumentModel.h"
#include "keloOpenGL/bands/RubberBandTables.h"
#include "keloOpenGL/view/StringTexture.h"
#include "models/DXGLightweightModel.h"

namespace kelo {
namespace {

/// On the screen, in points. The picture is made twice as large, for screens of two pixels a point.
constexpr double labelPointSize = 13.0;
constexpr double pictureScale = 2.0;
/// Of the shade behind a label, left and right of its text, as a part of its height.
constexpr double sideMargin = 0.18;
/// Dark enough for white text over white teeth.
constexpr float shade = 0.55f;

Extents extentsOf(const DXDocumentModel::Models &teeth, bool isUpper)
{
    MutableExtents arch;
    for (const auto &[key, tooth] : teeth) {
        if (isUpperToothName(key) == isUpper) arch.absorbExtents(tooth->extents());
    }
    return arch;
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

const ToothLabels &DXOpenGL::toothLabels() const
{
    return state_->toothLabels;
}

void DXOpenGL::setToothLabels(ToothLabels labels)
{
    if (labels == state_->toothLabels) return;
    state_->toothLabels = std::move(labels);
    setNeedsDisplay(true);
}

StringTexture &DXOpenGL::toothLabelTexture(const std::string &text)
{
    auto &texture = state_->toothLabelTextures[text];
    if (!texture)
        texture = std::make_shared<StringTexture>(
            text, TextAttributes{Color::whiteColor(), labelPointSize * pictureScale});
    return *texture;
}

std::vector<DXOpenGL::PlacedToothLabel> DXOpenGL::placedToothLabels()
{
    const auto document = documentModel();
    if (state_->toothLabels.empty() || isInColorPickMode() || !document) return {};
    Matrix projection;
    Matrix modelView;
    glGetFloatv(GL_PROJECTION_MATRIX, projection.m);
    glGetFloatv(GL_MODELVIEW_MATRIX, modelView.m);
    const auto &teeth = document->toothModels();
    const Extents arches[] = {extentsOf(teeth, false), extentsOf(teeth, true)};
    const Matrix toEye[] = {Matrix_multiplied(modelView, lowerMouthTransform()),
                            Matrix_multiplied(modelView, upperMouthTransform())};
    const double unitsPerPoint = 2.0 / bounds().size.height;

    std::vector<PlacedToothLabel> labels;
    std::vector<ToothLabelBox> boxes;
    for (const auto &[key, text] : state_->toothLabels) {
        const auto found = teeth.find(key);
        if (found == teeth.end() || found->second->hiddenPrimary() || !shouldDraw(*found->second))
            continue;
        const bool isUpper = isUpperToothName(key);
        const ToothLabelSpot spot =
            toothLabelSpot(found->second->extents(), arches[isUpper], isUpper, toEye[isUpper],
                           projection, overlayAspect());
        const Size texels = toothLabelTexture(text).texSize();
        const double height = texels.height / pictureScale * unitsPerPoint;
        const double width = texels.width / pictureScale * unitsPerPoint + 2 * sideMargin * height;
        const Rect rect{{spot.position.x - width / 2, spot.position.y - height / 2},
                        {width, height}};
        labels.push_back({text, rect});
        boxes.push_back({rect, spot.facing});
    }
    std::vector<PlacedToothLabel> legible;
    for (const std::size_t label : legibleToothLabels(boxes))
        legible.push_back(labels[label]);
    return legible;
}

void DXOpenGL::drawToothLabels(const std::vector<PlacedToothLabel> &labels)
{
    for (const PlacedToothLabel &label : labels) {
        drawShade(label.rect);
        const double margin = sideMargin * label.rect.size.height;
        // The texture's first row, the text's top edge, belongs to the upper edge.
        toothLabelTexture(label.text)
            .drawWithBounds(
                {{label.rect.origin.x + margin, label.rect.origin.y + label.rect.size.height},
                 {label.rect.size.width - 2 * margin, -label.rect.size.height}});
    }
}

} // namespace kelo
