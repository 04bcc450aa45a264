// The scene: turning the world, and the elastics over the jaws.

#include "keloOpenGL/treatment/DXOpenGL.h"

#include "keloOpenGL/treatment/WorldTurn.h"

namespace kelo {

void DXOpenGL::rotateByDegrees(float degrees)
{
    _worldRotation = worldRotationTurnedByDegrees(_worldRotation, degrees);
    setNeedsDisplay(true);
}

} // namespace kelo
