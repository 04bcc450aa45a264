// What lies under a point: the scene in the colours of its identifiers, and one pixel of it.

#include "keloOpenGL/treatment/DXOpenGL.h"
#include "keloOpenGL/treatment/DXOpenGLState.h"

#include "document/DXDocumentModel.h"
#include "keloOpenGL/picking/CurrentProjection.h"
#include "keloOpenGL/picking/PickBox.h"
#include "keloOpenGL/picking/PickPass.h"
#include "keloOpenGL/view/OffscreenTarget.h"
#include "models/DXGLightweightModel.h"
#include "models/PickIdentifier.h"
#include "platform/settings/VersionChecker.h"

#include <cmath>
#include <functional>
#include <optional>

namespace kelo {
namespace {

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

} // namespace

bool DXOpenGL::canPickOffScreen() const
{
    return OffscreenTarget::isAvailable();
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
    return !state_->onlyPart || state_->onlyPart->mayShow(box, margin, transform);
}

void DXOpenGL::drawColorPickPass(const std::optional<PixelRect> &onlyPart)
{
    beginPickPass(onlyPart);
    updateModelView();
    std::optional<PickBox> box;
    if (onlyPart) box.emplace(*onlyPart, currentWindowProjection());
    const PickState picking(_isInColorPickMode, state_->onlyPart, box);
    drawContent();
    drawExtraContent();
}

void DXOpenGL::pick(const std::optional<PixelRect> &onlyPart, const std::function<void()> &read)
{
    // The view may have changed its size since it was drawn last, if it ever was.
    resizeGL();
    bool isOffScreen = false;
    {
        const PickPassState before;
        std::optional<OffscreenTarget::Binding> target;
        if (canPickOffScreen()) target.emplace(state_->pickTarget, deviceSize(), pickFormats());
        isOffScreen = target && target->isBound();
        drawColorPickPass(onlyPart);
        read();
    }
    // Where the pass had to go to the view's own buffer, its colours must not stay there.
    if (!isOffScreen) drawRect({});
}

std::uint32_t DXOpenGL::pickIdentifierAtPoint(const Point &backingPoint)
{
    std::uint32_t identifier = noPixelPickIdentifier;
    if (!makeCurrentContextIfNeeded()) return identifier;
    const PixelSize size = deviceSize();
    if (!isPixelOf(backingPoint.x, size.width) || !isPixelOf(backingPoint.y, size.height))
        return identifier;
    const int column = static_cast<int>(backingPoint.x);
    const int row = static_cast<int>(backingPoint.y);
    pick(PixelRect{column, row, 1, 1}, [&] { identifier = readPickIdentifier(column, row); });
    return identifier;
}

std::vector<std::uint32_t> DXOpenGL::pickIdentifiers()
{
    const PixelSize size = deviceSize();
    if (size.width <= 0 || size.height <= 0 || !makeCurrentContextIfNeeded()) return {};
    std::vector<std::uint32_t> identifiers;
    pick(std::nullopt, [&] { identifiers = readPickIdentifiers(size); });
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
