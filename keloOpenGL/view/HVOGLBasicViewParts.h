#pragma once

#include "keloOpenGL/view/AnimationClock.h"
#include "keloOpenGL/view/Camera.h"
#include "keloOpenGL/view/HVOGLBasicView.h"
#include "keloOpenGL/view/Light.h"
#include "keloOpenGL/view/Mouth.h"
#include "keloOpenGL/view/SceneRenderer.h"

namespace kelo {

/// What a basic view is put together from, and what it remembers. Only its own sources include
/// this.
struct HVOGLBasicView::Parts
{
    Camera camera;
    Light light;
    Mouth mouth;
    SceneRenderer renderer;
    AnimationClock clock;
    std::optional<Color> clearColor;
    std::shared_ptr<DXDocumentModel> documentModel;
    std::shared_ptr<const Extents> modelExtents;
    double lastRenderingTime = 0.0;
    bool isInColorPickMode = false;
};

} // namespace kelo
