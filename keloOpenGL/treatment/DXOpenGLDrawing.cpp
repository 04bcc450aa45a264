// The scene: turning the world, and the elastics over the jaws.

#include "platform/gl.h"

#include "keloOpenGL/treatment/DXOpenGL.h"
#include "keloOpenGL/treatment/DXOpenGLState.h"

#include "keloOpenGL/view/WorldTurn.h"

namespace kelo {
namespace {

/// Bands are lit, opaque and closed, whatever the models before them were.
void prepareForElastics()
{
    glEnable(GL_LIGHTING);
    glDisable(GL_BLEND);
    glEnable(GL_CULL_FACE);
}

} // namespace

void DXOpenGL::rotateByDegrees(float degrees)
{
    const Rotation turned = worldRotationTurnedByDegrees(worldRotation(), degrees);
    setWorldRotationAngle_axis(turned[0], turned[1], turned[2], turned[3]);
}

void DXOpenGL::drawContent()
{
    state_->sceneParts.beginDrawing(documentModel().get(), state_->printer.isPrinting());
    HVOGLSmoothView::drawContent();
    if (!isInColorPickMode()) prepareForElastics();
    drawElastics();
}

} // namespace kelo
