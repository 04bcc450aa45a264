// What lies under a point: the scene in the colours of its identifiers, and what they are called.

#include "keloOpenGL/treatment/DXOpenGL.h"
#include "keloOpenGL/treatment/DXOpenGLState.h"

#include "document/DXDocumentModel.h"
#include "keloOpenGL/editing/ElasticChanges.h"
#include "keloOpenGL/picking/PickedName.h"
#include "models/DXGLightweightModel.h"
#include "models/PickIdentifier.h"
#include "platform/settings/VersionChecker.h"

#include <QScopeGuard>

#include <cmath>

namespace kelo {
namespace {

/// A pixel's number comes back from points at a fractional scale with the last bits missing, and
/// cut to a whole number would name the pixel before. A millionth of a pixel is far more than those
/// bits and far less than what a pointing device resolves.
double withoutRoundingError(double coordinate)
{
    constexpr double tolerance = 1e-6;
    const double whole = std::round(coordinate);
    return std::abs(coordinate - whole) < tolerance ? whole : coordinate;
}

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
    return state_->picker.mayShow(box, margin, transform) &&
           (!state_->pulse || state_->pulse->frames.mayShow(box, margin, transform));
}

PickedScene DXOpenGL::pickedScene()
{
    return {deviceSize(), canPickOffScreen(), [this] { updateModelView(); },
            [this] { drawPickedScene(); }, [this] { drawRect({}); }};
}

bool DXOpenGL::canPick()
{
    if (!makeCurrentContextIfNeeded()) return false;
    // The view may have changed its size since it was drawn last, if it ever was.
    resizeGL();
    return true;
}

void DXOpenGL::drawPickedScene()
{
    const auto passIsOver = qScopeGuard([this] { setIsInColorPickMode(false); });
    setIsInColorPickMode(true);
    drawContent();
    drawExtraContent();
}

std::uint32_t DXOpenGL::pickIdentifierAtPoint(const Point &backingPoint)
{
    if (!canPick()) return noPixelPickIdentifier;
    return state_->picker.identifierAt(backingPoint, pickedScene());
}

std::vector<std::uint32_t> DXOpenGL::pickIdentifiers()
{
    if (!canPick()) return {};
    return state_->picker.identifiers(pickedScene());
}

DXOpenGL::Name DXOpenGL::bracketNameForIdentifier_includeTeeth_isLingualButton(
    std::uint32_t identifier, bool includeTeeth, bool *isLingualButton) const
{
    if (!documentModel()) return std::nullopt;
    const auto picked = pickedName(*documentModel(), identifier, includeTeeth);
    if (picked && isLingualButton) *isLingualButton = picked->isLingualButton;
    return picked ? Name(picked->key) : std::nullopt;
}

DXOpenGL::Name DXOpenGL::bracketNameAtPoint_includeTeeth_isLingualButton(const Point &backingPoint,
                                                                         bool includeTeeth,
                                                                         bool *isLingualButton)
{
    return bracketNameForIdentifier_includeTeeth_isLingualButton(
        pickIdentifierAtPoint(backingPoint), includeTeeth, isLingualButton);
}

ElasticHit DXOpenGL::elasticHitAtPoint(const Point &backingPoint)
{
    const std::uint32_t identifier = pickIdentifierAtPoint(backingPoint);
    bool isButton = false;
    const Name name =
        bracketNameForIdentifier_includeTeeth_isLingualButton(identifier, true, &isButton);
    return elasticHit(documentModel().get(), identifier, name, isButton);
}

Point DXOpenGL::backingPointForEvent(const Event &event) const
{
    const Point point = pointInView(event);
    if (!VersionChecker::isLionOrLater() || !wantsBestResolutionOpenGLSurface()) return point;
    // Not the size of one point in pixels: that is rounded, and scales need not be whole numbers.
    const Point backing = convertPointToBacking(point);
    return {withoutRoundingError(backing.x), withoutRoundingError(backing.y)};
}

} // namespace kelo
