// Parts of the scene that are left out of the picture.

#include "keloOpenGL/treatment/DXOpenGL.h"
#include "keloOpenGL/treatment/DXOpenGLState.h"

namespace kelo {

bool DXOpenGL::showsScenePart(ScenePart part) const
{
    return state_->sceneParts.shows(part);
}

void DXOpenGL::setShowsScenePart(ScenePart part, bool shows)
{
    state_->sceneParts.setShows(part, shows);
    setNeedsDisplay(true);
}

bool DXOpenGL::shouldDraw(const DXGLightweightModel &model) const
{
    return !state_->sceneParts.leavesOut(model);
}

bool DXOpenGL::drawsElasticOver(const std::vector<std::string> &keys) const
{
    return state_->sceneParts.showsElasticOver(keys);
}

} // namespace kelo
