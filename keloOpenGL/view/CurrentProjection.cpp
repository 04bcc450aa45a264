#include "keloOpenGL/view/CurrentProjection.h"

#include "platform/gl.h"

namespace kelo {

WindowProjection currentWindowProjection()
{
    Matrix projection;
    Matrix modelView;
    std::array<int, 4> viewport{};
    glGetFloatv(GL_PROJECTION_MATRIX, projection.m);
    glGetFloatv(GL_MODELVIEW_MATRIX, modelView.m);
    glGetIntegerv(GL_VIEWPORT, viewport.data());
    return WindowProjection(viewport, projection, modelView);
}

} // namespace kelo
