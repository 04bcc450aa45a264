// The scene: turning the world, and the elastics over the jaws.

#include "platform/gl.h"

#include "keloOpenGL/treatment/DXOpenGL.h"

#include "keloOpenGL/view/WorldTurn.h"

namespace kelo {

void DXOpenGL::rotateByDegrees(float degrees)
{
    const Rotation turned = worldRotationTurnedByDegrees(worldRotation(), degrees);
    setWorldRotationAngle_axis(turned[0], turned[1], turned[2], turned[3]);
}

void DXOpenGL::drawContent()
{
    collectModelsLeftOut();
    HVOGLSmoothView::drawContent();
    if (!isInColorPickMode()) {
        glEnable(GL_LIGHTING);
        glDisable(GL_BLEND);
        glEnable(GL_CULL_FACE);
    }
    drawElastics();
}

} // namespace kelo
