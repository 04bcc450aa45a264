// The drawing cycle and its hooks.

#include "platform/gl.h"

#include "keloOpenGL/view/HVOGLBasicView.h"

#include "document/DXDocumentModel.h"
#include "keloOpenGL/view/GLErrorReport.h"
#include "keloOpenGL/view/HVOGLBasicViewParts.h"
#include "models/DXGLightweightModel.h"
#include "platform/settings/VersionChecker.h"

#include <QScopeGuard>

namespace kelo {
namespace {

ModelDrawing identifierIf(bool isPicked)
{
    return isPicked ? ModelDrawing::Identifier : ModelDrawing::None;
}

} // namespace

bool HVOGLBasicView::makeCurrentContextIfNeeded()
{
    OpenGLContext &context = openGLContext();
    return context.isCurrent() || context.makeCurrentContext();
}

void HVOGLBasicView::contextWasLost()
{
    HVOGLMouseView::contextWasLost();
    parts_->renderer.contextWasLost();
    parts_->camera.setSize({}); // the next cycle sets viewport and projection in the new context
}

bool HVOGLBasicView::isFirstDrawRect() const
{
    return parts_->renderer.isFirstCycle();
}

bool HVOGLBasicView::isInColorPickMode() const
{
    return parts_->isInColorPickMode;
}

void HVOGLBasicView::setIsInColorPickMode(bool isInColorPickMode)
{
    parts_->isInColorPickMode = isInColorPickMode;
}

const Size &HVOGLBasicView::cameraSize() const
{
    return parts_->camera.size();
}

void HVOGLBasicView::reshape()
{
    HVOGLMouseView::reshape();
    resizeGL();
}

PixelSize HVOGLBasicView::viewportSize() const
{
    if (VersionChecker::isLionOrLater() && wantsBestResolutionOpenGLSurface()) return deviceSize();
    const Size size = bounds().size;
    return {static_cast<int>(size.width), static_cast<int>(size.height)};
}

void HVOGLBasicView::resizeGL()
{
    const PixelSize pixels = viewportSize();
    // A move to a screen of another scale changes the pixels but not the points.
    if (bounds().size == cameraSize() && pixels == parts_->renderer.viewport()) return;
    parts_->camera.setSize(bounds().size);
    if (makeCurrentContextIfNeeded()) parts_->renderer.setViewport(pixels);
    adjustWindow(); // what the view shows is known without drawing it, too
}

void HVOGLBasicView::adjustWindow()
{
    parts_->camera.fitWindow(bounds().size);
    updateProjection();
    setNeedsDisplay(true);
}

void HVOGLBasicView::updateProjection()
{
    if (makeCurrentContextIfNeeded()) SceneRenderer::loadProjection(parts_->camera);
}

void HVOGLBasicView::updateModelView()
{
    if (makeCurrentContextIfNeeded()) SceneRenderer::loadModelView(parts_->camera);
}

void HVOGLBasicView::loadLightTransform()
{
    SceneRenderer::turnByRotation(parts_->light);
}

void HVOGLBasicView::updateLighting()
{
    if (makeCurrentContextIfNeeded()) SceneRenderer::loadLight(parts_->light);
}

void HVOGLBasicView::setupDefaultMaterial()
{
    if (makeCurrentContextIfNeeded()) SceneRenderer::loadDefaultMaterial();
}

void HVOGLBasicView::setUpFirstCycle()
{
    openGLContext().setSwapInterval(1);
    SceneRenderer::setUp(clearColor());
    updateLighting();
    setupDefaultMaterial();
}

bool HVOGLBasicView::isReadyToDraw()
{
    if (isFirstDrawRect()) setUpFirstCycle();
    if (cameraSize().width == 0.0 || cameraSize().height == 0.0) resizeGL();
    // A view without area has nothing to draw and no projection to draw it with.
    return parts_->camera.hasArea();
}

void HVOGLBasicView::drawRect(const Rect &)
{
    if (!drawRectEnabled() || !makeCurrentContextIfNeeded() || !isReadyToDraw()) return;
    drawPicture();
    if (bufferSwappingEnabled()) openGLContext().flushBuffer();
    reportError();
    parts_->renderer.noteCycle();
}

void HVOGLBasicView::drawPicture()
{
    willDrawPicture();
    const auto isDone = qScopeGuard([this] { didDrawPicture(); });
    SceneRenderer::drawScene(cameraSize(), clearColor(), *this);
}

void HVOGLBasicView::drawContent()
{
    if (!makeCurrentContextIfNeeded()) return;
    SceneRenderer::beginJaws();
    if (!documentModel()) return;
    // What is not loaded is left out: one missing mesh must not hide both jaws. Who loads hears of
    // it (DXDocumentModel's loading operations).
    drawModels(documentModel()->loadedUpperModels(), upperMouthTransform());
    drawModels(documentModel()->loadedLowerModels(), lowerMouthTransform());
}

ModelDrawing HVOGLBasicView::drawingOf(const DXGLightweightModel &model,
                                       const Matrix &jawTransform) const
{
    if (!shouldDraw(model)) return ModelDrawing::None;
    if (isInColorPickMode()) return identifierIf(shouldDrawForColorSelection(model, jawTransform));
    if (model.hiddenPrimary() || model.hiddenSecondary()) return ModelDrawing::None;
    return mayBeSeen(model, jawTransform) ? ModelDrawing::Shaded : ModelDrawing::MaterialOnly;
}

void HVOGLBasicView::drawModels(const std::vector<std::shared_ptr<DXGLightweightModel>> &models,
                                const Matrix &jawTransform)
{
    SceneRenderer::drawJaw(models, jawTransform, [&](const DXGLightweightModel &model) {
        return drawingOf(model, jawTransform);
    });
}

std::string HVOGLBasicView::errorReport(unsigned code)
{
    return glErrorReport(code);
}

unsigned HVOGLBasicView::reportError()
{
    return makeCurrentContextIfNeeded() ? reportGLError() : GL_NO_ERROR;
}

} // namespace kelo
