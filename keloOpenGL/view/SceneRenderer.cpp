#include "platform/gl.h"

#include "keloOpenGL/view/SceneRenderer.h"

#include "base/Assertion.h"
#include "keloOpenGL/view/Camera.h"
#include "keloOpenGL/view/Light.h"
#include "models/DXGLightweightModel.h"
#include "models/HVOGLMaterial.h"

namespace kelo {
namespace {

void setCorner(const Color &color, double x, double y)
{
    color.glColor();
    glVertex2d(x, y);
}

/// The clear colour in two corners, half black in the third and half white in the fourth.
void drawShadedQuad(const Size &size, const Color &clear)
{
    glBegin(GL_QUADS);
    setCorner(clear, 0.0, 0.0);
    setCorner(clear.blendedColorWithFraction_ofColor(0.5, Color::blackColor()), size.width, 0.0);
    setCorner(clear, size.width, size.height);
    setCorner(clear.blendedColorWithFraction_ofColor(0.5, Color::whiteColor()), 0.0, size.height);
    glEnd();
}

void loadLightAs(GLenum number, const Light &light)
{
    assertThat(light.hasAllColors(), "the ambient, diffuse and specular light colours must be set");
    glLightfv(number, GL_AMBIENT, light.ambientColor->rgba());
    glLightfv(number, GL_DIFFUSE, light.diffuseColor->rgba());
    glLightfv(number, GL_SPECULAR, light.specularColor->rgba());
    glEnable(number);

    // Under an identity matrix the light stays with the viewer, not with the world.
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glLoadIdentity();
    SceneRenderer::turnByRotation(light);
    glLightfv(number, GL_POSITION, Light::towardsViewer);
    glPopMatrix();
}

} // namespace

void SceneRenderer::contextWasLost()
{
    isFirstCycle_ = true;
}

void SceneRenderer::setUp(const std::optional<Color> &clearColor)
{
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_CULL_FACE);
    if (clearColor) clearColor->glClearColor();
}

void SceneRenderer::setViewport(const PixelSize &size)
{
    viewport_ = size;
    glViewport(0, 0, size.width, size.height);
}

// OpenGL multiplies the matrices itself, from the camera's numbers: products that were computed
// here would differ from its own in their last bits, and pictures with them.

void SceneRenderer::loadProjection(const Camera &camera)
{
    const WindowLimits &window = camera.windowLimits();
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    if (camera.hasVolume())
        glOrtho(window.xMin, window.xMax, window.yMin, window.yMax, camera.zMin(), camera.zMax());
    glMatrixMode(GL_MODELVIEW);
}

void SceneRenderer::loadModelView(const Camera &camera)
{
    const Vector3 &center = camera.rotationCenter();
    const AngleAndAxis &rotation = camera.worldRotation();
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glTranslatef(center.x, center.y, center.z);
    glRotatef(rotation[0], rotation[1], rotation[2], rotation[3]);
    glTranslatef(-center.x, -center.y, -center.z);
}

void SceneRenderer::turnByRotation(const Light &light)
{
    glRotatef(light.rotation[0], light.rotation[1], light.rotation[2], light.rotation[3]);
}

void SceneRenderer::loadLight(const Light &light)
{
    glEnable(GL_LIGHTING);
    loadLightAs(GL_LIGHT0, light);
}

void SceneRenderer::loadDefaultMaterial()
{
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

void SceneRenderer::drawBackground(const Size &size, const std::optional<Color> &clearColor)
{
    glClear(GL_DEPTH_BUFFER_BIT);
    glDisable(GL_LIGHTING);
    glDepthMask(GL_FALSE);
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glLoadIdentity();
    glOrtho(0.0, size.width, 0.0, size.height, -1.0, 1.0);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    drawShadedQuad(size, clearColor.value_or(Color::blackColor()));
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
}

void SceneRenderer::beginContent()
{
    glDepthMask(GL_TRUE);
}

void SceneRenderer::beginJaws()
{
    glDisable(GL_BLEND);
}

SceneRenderer::JawScope::JawScope(const Matrix &jawTransform)
{
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glMultMatrixf(jawTransform.m);
}

SceneRenderer::JawScope::~JawScope()
{
    glPopMatrix();
}

void SceneRenderer::drawModel(DXGLightweightModel &model, ModelDrawing drawing)
{
    switch (drawing) {
    case ModelDrawing::None:
        break;
    case ModelDrawing::MaterialOnly:
        if (model.material()) model.material()->primeOpenGL();
        break;
    case ModelDrawing::Shaded:
        model.draw();
        break;
    case ModelDrawing::Identifier:
        model.drawForColorSelection();
        break;
    }
}

} // namespace kelo
