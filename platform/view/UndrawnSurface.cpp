#include "platform/view/UndrawnSurface.h"

namespace kelo {
namespace {

class UndrawnContext : public OpenGLContext
{
public:
    void setSwapInterval(int interval) override { swapInterval_ = interval; }
    int swapInterval() const override { return swapInterval_; }

protected:
    bool makeSurfaceCurrent() override { return false; }
    bool isSurfaceCurrent() const override { return false; }
    void releaseSurface() override {}
    void swapSurface() override {}

private:
    void destroySurface() override {}

    int swapInterval_ = 1;
};

} // namespace

std::shared_ptr<OpenGLContext> UndrawnSurface::makeContext()
{
    return std::make_shared<UndrawnContext>();
}

std::unique_ptr<ViewSurface> makeUndrawnSurface(OpenGLView &view)
{
    return std::make_unique<UndrawnSurface>(view);
}

} // namespace kelo
