#pragma once

#include "platform/view/SurfacelessSurface.h"

namespace kelo {

/// A view on this surface computes as every other does and never draws: its context cannot be made
/// current. Needs neither a display nor OpenGL.
class UndrawnSurface : public SurfacelessSurface
{
public:
    using SurfacelessSurface::SurfacelessSurface;

protected:
    std::shared_ptr<OpenGLContext> makeContext() override;
};

} // namespace kelo
