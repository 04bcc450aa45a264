// The drawing cycle: projection, light, background, and the two jaws.

#include "platform/gl.h"

#include "keloOpenGL/view/HVOGLBasicView.h"

#include "base/Assertion.h"
#include "document/DXDocumentModel.h"
#include "models/DXGLightweightModel.h"
#include "models/HVOGLMaterial.h"
#include "platform/settings/VersionChecker.h"

#include <QScopeGuard>

#include <cmath>
#include <cstdio>

namespace kelo {
namespace {

/// GL_TABLE_TOO_LARGE of the imaging subset, which the headers of a plain context leave out.
constexpr unsigned tableTooLarge = 32817;

const char *errorName(unsigned code)
{
    switch (code) {
    case GL_INVALID_ENUM:
        return "GL_INVALID_ENUM";
    case GL_INVALID_VALUE:
        return "GL_INVALID_VALUE";
    case GL_INVALID_OPERATION:
        return "GL_INVALID_OPERATION";
    case GL_STACK_OVERFLOW:
        return "GL_STACK_OVERFLOW";
    case GL_STACK_UNDERFLOW:
        return "GL_STACK_UNDERFLOW";
    case GL_OUT_OF_MEMORY:
        return "GL_OUT_OF_MEMORY";
    case tableTooLarge:
        return "GL_TABLE_TOO_LARGE";
    default:
        return nullptr;
    }
}

/// An orthographic projection needs room on every axis; without it the matrix cannot be inverted
/// and OpenGL refuses it.
bool hasRoom(double min, double max)
{
    return std::isfinite(min) && std::isfinite(max) && min != max;
}

void setCorner(const Color &color, double x, double y)
{
    color.glColor();
    glVertex2d(x, y);
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
    isFirstDrawRect_ = true;
    cameraSize = {}; // the next cycle sets viewport and projection in the new context
}

void HVOGLBasicView::reshape()
{
    HVOGLMouseView::reshape();
    resizeGL();
}

void HVOGLBasicView::resizeGL()
{
    // A move to a screen of another scale changes the pixels but not the points.
    const PixelSize pixels = VersionChecker::isLionOrLater() && wantsBestResolutionOpenGLSurface()
                                 ? deviceSize()
                                 : PixelSize{static_cast<int>(bounds().size.width),
                                             static_cast<int>(bounds().size.height)};
    if (bounds().size == cameraSize && pixels == viewportSize_) return;
    cameraSize = bounds().size;
    if (makeCurrentContextIfNeeded()) {
        viewportSize_ = pixels;
        glViewport(0, 0, pixels.width, pixels.height);
    }
    adjustWindow(); // what the view shows is known without drawing it, too
}

void HVOGLBasicView::adjustWindow()
{
    const Size size = bounds().size;
    const WindowLimits window = HVFindGoodWindow(size.width, size.height, zoomBox());
    _xMinWindow = window.xMin;
    _xMaxWindow = window.xMax;
    _yMinWindow = window.yMin;
    _yMaxWindow = window.yMax;
    updateProjection();
    setNeedsDisplay(true);
}

void HVOGLBasicView::updateProjection()
{
    if (!makeCurrentContextIfNeeded()) return;
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    if (hasRoom(_xMinWindow, _xMaxWindow) && hasRoom(_yMinWindow, _yMaxWindow) &&
        hasRoom(_zMin, _zMax))
        glOrtho(_xMinWindow, _xMaxWindow, _yMinWindow, _yMaxWindow, _zMin, _zMax);
    glMatrixMode(GL_MODELVIEW);
}

void HVOGLBasicView::updateModelView()
{
    if (!makeCurrentContextIfNeeded()) return;
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glTranslatef(_rotationCenter.x, _rotationCenter.y, _rotationCenter.z);
    glRotatef(_worldRotation[0], _worldRotation[1], _worldRotation[2], _worldRotation[3]);
    glTranslatef(-_rotationCenter.x, -_rotationCenter.y, -_rotationCenter.z);
}

void HVOGLBasicView::loadLightTransform()
{
    glRotatef(_lightRotation[0], _lightRotation[1], _lightRotation[2], _lightRotation[3]);
}

void HVOGLBasicView::updateLighting()
{
    if (!makeCurrentContextIfNeeded()) return;
    glEnable(GL_LIGHTING);
    assertThat(ambientColor_ && diffuseColor_ && specularColor_,
               "the ambient, diffuse and specular light colours must be set");
    glLightfv(GL_LIGHT0, GL_AMBIENT, ambientColor_->rgba());
    glLightfv(GL_LIGHT0, GL_DIFFUSE, diffuseColor_->rgba());
    glLightfv(GL_LIGHT0, GL_SPECULAR, specularColor_->rgba());
    glEnable(GL_LIGHT0);

    // Under an identity matrix the light stays with the viewer, not with the world.
    constexpr GLfloat towardsViewer[] = {0.0f, 0.0f, 1.0f, 0.0f};
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glLoadIdentity();
    loadLightTransform();
    glLightfv(GL_LIGHT0, GL_POSITION, towardsViewer);
    glPopMatrix();
}

void HVOGLBasicView::setupDefaultMaterial()
{
    if (!makeCurrentContextIfNeeded()) return;
    constexpr GLfloat white[] = {1.0f, 1.0f, 1.0f, 0.8f};
    constexpr GLfloat faintRed[] = {0.2f, 0.0f, 0.0f, 0.8f};
    constexpr GLfloat faintGreen[] = {0.0f, 0.2f, 0.0f, 0.8f};
    glColor4fv(white);
    glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE, white);
    glMaterialfv(GL_FRONT_AND_BACK, GL_SPECULAR, white);
    glMaterialfv(GL_FRONT, GL_EMISSION, faintRed);
    glMaterialfv(GL_BACK, GL_EMISSION, faintGreen);
    glMaterialf(GL_FRONT, GL_SHININESS, 32.0f);
}

void HVOGLBasicView::setUpFirstCycle()
{
    openGLContext().setSwapInterval(1);
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_CULL_FACE);
    if (clearColor_) clearColor_->glClearColor();
    updateLighting();
    setupDefaultMaterial();
}

void HVOGLBasicView::drawBackground()
{
    glDisable(GL_LIGHTING);
    glDepthMask(GL_FALSE);
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glLoadIdentity();
    glOrtho(0.0, cameraSize.width, 0.0, cameraSize.height, -1.0, 1.0);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();

    const Color clear = clearColor_.value_or(Color::blackColor());
    glBegin(GL_QUADS);
    setCorner(clear, 0.0, 0.0);
    setCorner(clear.blendedColorWithFraction_ofColor(0.5, Color::blackColor()), cameraSize.width,
              0.0);
    setCorner(clear, cameraSize.width, cameraSize.height);
    setCorner(clear.blendedColorWithFraction_ofColor(0.5, Color::whiteColor()), 0.0,
              cameraSize.height);
    glEnd();

    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
}

void HVOGLBasicView::drawRect(const Rect &)
{
    if (!drawRectEnabled()) return;
    if (!makeCurrentContextIfNeeded()) return;
    if (isFirstDrawRect_) setUpFirstCycle();
    if (cameraSize.width == 0.0 || cameraSize.height == 0.0) resizeGL();
    if (cameraSize.width <= 0.0 || cameraSize.height <= 0.0)
        return; // a view without area has nothing to draw and no projection to draw it with

    drawPicture();
    if (bufferSwappingEnabled()) openGLContext().flushBuffer();
    reportError();
    isFirstDrawRect_ = false;
}

void HVOGLBasicView::drawPicture()
{
    willDrawPicture();
    const auto isDone = qScopeGuard([this] { didDrawPicture(); });
    glClear(GL_DEPTH_BUFFER_BIT);
    drawBackground();
    updateModelView();
    glDepthMask(GL_TRUE);
    updateLighting();
    setupDefaultMaterial();
    drawContent();
    drawExtraContent();
}

void HVOGLBasicView::drawContent()
{
    if (!makeCurrentContextIfNeeded()) return;
    glDisable(GL_BLEND);
    if (!documentModel_) return;
    // What is not loaded is left out: one missing mesh must not hide both jaws. Who loads hears of
    // it (DXDocumentModel's loading operations).
    drawModels(documentModel_->loadedUpperModels(), upperMouthTransform());
    drawModels(documentModel_->loadedLowerModels(), lowerMouthTransform());
}

void HVOGLBasicView::drawModels(const std::vector<std::shared_ptr<DXGLightweightModel>> &models,
                                const Matrix &jawTransform)
{
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glMultMatrixf(jawTransform.m);
    for (const auto &model : models) {
        if (!shouldDraw(*model)) continue;
        if (_isInColorPickMode) {
            if (shouldDrawForColorSelection(*model, jawTransform)) model->drawForColorSelection();
        } else if (!model->hiddenPrimary() && !model->hiddenSecondary()) {
            if (mayBeSeen(*model, jawTransform))
                model->draw();
            else if (model->material())
                model->material()->primeOpenGL(); // a mesh without one takes over the last one's
        }
    }
    glPopMatrix();
}

std::string HVOGLBasicView::errorReport(unsigned code)
{
    std::string report = "OpenGL error: " + std::to_string(static_cast<int>(code)) + " - ";
    if (const char *name = errorName(code)) report += std::string(name) + "\n";
    return report;
}

unsigned HVOGLBasicView::reportError()
{
    if (!makeCurrentContextIfNeeded()) return GL_NO_ERROR;
    const unsigned code = glGetError();
    if (code != GL_NO_ERROR) {
        std::fputs(errorReport(code).c_str(), stdout);
        std::fflush(stdout);
    }
    return code;
}

} // namespace kelo
