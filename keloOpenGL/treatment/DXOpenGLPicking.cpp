// What lies under a point: the scene in the colours of its identifiers, and one pixel of it.

#include "platform/gl.h"

#include "keloOpenGL/treatment/DXOpenGL.h"

#include "document/DXDocumentModel.h"
#include "keloOpenGL/picking/CurrentProjection.h"
#include "keloOpenGL/picking/PickBox.h"
#include "keloOpenGL/picking/PickTarget.h"
#include "models/DXGLightweightModel.h"
#include "models/PickIdentifier.h"
#include "platform/VersionChecker.h"

#include <array>
#include <cmath>
#include <memory>
#include <optional>

namespace kelo {
namespace {

/// The three bytes of the pixel before it is read. A point without a pixel leaves them.
constexpr std::array<GLubyte, 3> unreadPixel{
    noPixelPickIdentifier >> 16, noPixelPickIdentifier >> 8 & 0xFF, noPixelPickIdentifier & 0xFF};

std::uint32_t identifierOfPixel(const std::array<GLubyte, 3> &pixel)
{
    return pixel[0] * 0x10000u + pixel[1] * 0x100u + pixel[2];
}

/// Whether the coordinate, cut to a whole number, is one of 0 ... count - 1.
bool isPixelOf(double coordinate, int count)
{
    return coordinate > -1.0 && coordinate < count;
}

/// A pixel's number comes back from points at a fractional scale with the last bits missing, and
/// cut to a whole number would name the pixel before. A millionth of a pixel is far more than those
/// bits and far less than what a pointing device resolves.
double withoutRoundingError(double coordinate)
{
    constexpr double tolerance = 1e-6;
    const double whole = std::round(coordinate);
    return std::abs(coordinate - whole) < tolerance ? whole : coordinate;
}

/// Every state that the pass changes, as it was before.
class DrawingState
{
public:
    DrawingState()
    {
        glPushAttrib(GL_ENABLE_BIT | GL_LIGHTING_BIT | GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT |
                     GL_SCISSOR_BIT | GL_CURRENT_BIT | GL_TRANSFORM_BIT);
        glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
        glMatrixMode(GL_MODELVIEW);
        glPushMatrix();
    }
    ~DrawingState()
    {
        glMatrixMode(GL_MODELVIEW);
        glPopMatrix();
        glPopClientAttrib();
        glPopAttrib();
    }
    DrawingState(const DrawingState &) = delete;
    DrawingState &operator=(const DrawingState &) = delete;
};

/// The colour-pick mode with its box, for as long as this lives, however the scope is left.
class PickState
{
public:
    PickState(bool &flag, const PickBox *&current, const std::optional<PickBox> &box)
        : flag_(flag), current_(current)
    {
        flag_ = true;
        current_ = box ? &*box : nullptr;
    }
    ~PickState()
    {
        flag_ = false;
        current_ = nullptr;
    }
    PickState(const PickState &) = delete;
    PickState &operator=(const PickState &) = delete;

private:
    bool &flag_;
    const PickBox *&current_;
};

void readPixel(int column, int row, std::array<GLubyte, 3> &pixel)
{
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glPixelStorei(GL_PACK_SKIP_ROWS, 0);
    glPixelStorei(GL_PACK_SKIP_PIXELS, 0);
    glReadPixels(column, row, 1, 1, GL_RGB, GL_UNSIGNED_BYTE, pixel.data());
}

} // namespace

bool DXOpenGL::canPickOffScreen() const
{
    return PickTarget::isAvailable();
}

bool DXOpenGL::shouldDrawForColorSelection(const DXGLightweightModel &model,
                                           const Matrix &jawTransform) const
{
    const double margin = model.extendedHitbox() ? extendedHitboxMargin : 0.0;
    return mayShow(model.extents(), margin, jawTransform);
}

bool DXOpenGL::mayBeSeen(const DXGLightweightModel &model, const Matrix &jawTransform) const
{
    return mayShow(model.extents(), 0.0, jawTransform);
}

bool DXOpenGL::mayShow(const Extents &box, double margin, const Matrix &transform) const
{
    return !onlyPart_ || onlyPart_->mayShow(box, margin, transform);
}

void DXOpenGL::drawColorPickPass(const std::optional<PickPixel> &onlyPixel)
{
    // What mixes or spreads colours would make other identifiers of them.
    for (const GLenum capability : {GL_DITHER, GL_BLEND, GL_FOG, GL_TEXTURE_2D, GL_ALPHA_TEST,
                                    GL_COLOR_LOGIC_OP, GL_STENCIL_TEST, GL_LIGHTING})
        glDisable(capability);
    // The first drawing cycle does this too, but a pick may come before it.
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_CULL_FACE);
    glDepthMask(GL_TRUE);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    if (onlyPixel) {
        glEnable(GL_SCISSOR_TEST);
        glScissor(onlyPixel->column, onlyPixel->row, 1, 1);
    } else {
        glDisable(GL_SCISSOR_TEST);
    }
    glClearColor(0.0f, 0.0f, 0.0f, 0.0f);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    updateModelView();
    std::optional<PickBox> box;
    if (onlyPixel)
        box.emplace(PixelRect{onlyPixel->column, onlyPixel->row, 1, 1}, currentWindowProjection());
    const PickState picking(_isInColorPickMode, onlyPart_, box);
    drawContent();
    drawExtraContent();
}

std::uint32_t DXOpenGL::pickIdentifierAtPoint(const Point &backingPoint)
{
    std::array<GLubyte, 3> pixel = unreadPixel;
    if (!makeCurrentContextIfNeeded()) return identifierOfPixel(pixel);
    const PixelSize size = deviceSize();
    if (!isPixelOf(backingPoint.x, size.width) || !isPixelOf(backingPoint.y, size.height))
        return identifierOfPixel(pixel);
    const int column = static_cast<int>(backingPoint.x);
    const int row = static_cast<int>(backingPoint.y);
    // The view may have changed its size since it was drawn last, if it ever was.
    resizeGL();

    bool isOffScreen = false;
    {
        const DrawingState before;
        std::optional<PickTarget::Binding> target;
        if (canPickOffScreen()) target.emplace(*pickTarget_, size);
        isOffScreen = target && target->isBound();
        drawColorPickPass(PickPixel{column, row});
        readPixel(column, row, pixel);
    }
    // Where the pass had to go to the view's own buffer, its colours must not stay there.
    if (!isOffScreen) drawRect({});
    return identifierOfPixel(pixel);
}

std::vector<std::uint32_t> DXOpenGL::pickIdentifiers()
{
    const PixelSize size = deviceSize();
    if (size.width <= 0 || size.height <= 0 || !makeCurrentContextIfNeeded()) return {};
    resizeGL();
    const auto pixelCount = static_cast<std::size_t>(size.width) * size.height;
    std::vector<GLubyte> colors(3 * pixelCount);
    bool isOffScreen = false;
    {
        const DrawingState before;
        std::optional<PickTarget::Binding> target;
        if (canPickOffScreen()) target.emplace(*pickTarget_, size);
        isOffScreen = target && target->isBound();
        drawColorPickPass(std::nullopt);
        glPixelStorei(GL_PACK_ALIGNMENT, 1);
        glReadPixels(0, 0, size.width, size.height, GL_RGB, GL_UNSIGNED_BYTE, colors.data());
    }
    if (!isOffScreen) drawRect({});
    std::vector<std::uint32_t> identifiers(pixelCount);
    for (std::size_t i = 0; i < pixelCount; ++i)
        identifiers[i] = identifierOfPixel({colors[3 * i], colors[3 * i + 1], colors[3 * i + 2]});
    return identifiers;
}

DXOpenGL::Name DXOpenGL::bracketNameForIdentifier_includeTeeth_isLingualButton(
    std::uint32_t identifier, bool includeTeeth, bool *isLingualButton) const
{
    const std::shared_ptr<DXDocumentModel> &document = documentModel();
    if (!document) return std::nullopt;
    const struct
    {
        const DXDocumentModel::Models &models;
        bool isIncluded;
        bool areButtons;
    } kinds[] = {{document->toothModels(), includeTeeth, false},
                 {document->bracketModels(), true, false},
                 {document->buttonModels(), true, true}};
    for (const auto &kind : kinds) {
        if (!kind.isIncluded) continue;
        for (const auto &[key, model] : kind.models) {
            if (model->uniqueID() != identifier) continue;
            if (isLingualButton) *isLingualButton = kind.areButtons;
            return key;
        }
    }
    return std::nullopt;
}

DXOpenGL::Name DXOpenGL::bracketNameAtPoint_includeTeeth_isLingualButton(const Point &backingPoint,
                                                                         bool includeTeeth,
                                                                         bool *isLingualButton)
{
    return bracketNameForIdentifier_includeTeeth_isLingualButton(
        pickIdentifierAtPoint(backingPoint), includeTeeth, isLingualButton);
}

Point DXOpenGL::backingPointForEvent(const Event &event) const
{
    const Point point = convertPoint_fromView(event.locationInWindow, nullptr);
    if (!VersionChecker::isLionOrLater() || !wantsBestResolutionOpenGLSurface()) return point;
    // Not the size of one point in pixels: that is rounded, and scales need not be whole numbers.
    const Point backing = convertPointToBacking(point);
    return {withoutRoundingError(backing.x), withoutRoundingError(backing.y)};
}

} // namespace kelo
