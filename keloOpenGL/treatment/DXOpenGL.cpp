#include "keloOpenGL/treatment/DXOpenGL.h"

#include "keloOpenGL/treatment/WorldTurn.h"
#include "platform/NotificationCenter.h"

namespace kelo {

DXOpenGL::DXOpenGL(const Rect &frame) : HVOGLSmoothView(frame)
{
    const Color white = Color::whiteColor();
    setAmbientColor(white);
    setDiffuseColor(white);
    setSpecularColor(white);
    _lightRotation = {20.0f, 1.0f, 1.0f, 1.0f};
    NotificationCenter::defaultCenter().addObserver(
        this, [this](const Notification &) { modelChanged(); }, "modelChangedNotification");
}

DXOpenGL::~DXOpenGL()
{
    NotificationCenter::defaultCenter().removeObserver(this);
    if (verticalScrollSnapMouthClosedTimer) verticalScrollSnapMouthClosedTimer->invalidate();
}

void DXOpenGL::rotateByDegrees(float degrees)
{
    _worldRotation = worldRotationTurnedByDegrees(_worldRotation, degrees);
    setNeedsDisplay(true);
}

} // namespace kelo
