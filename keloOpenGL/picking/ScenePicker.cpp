#include "keloOpenGL/picking/ScenePicker.h"

#include "keloOpenGL/picking/PickPass.h"
#include "keloOpenGL/view/CurrentProjection.h"
#include "models/PickIdentifier.h"

namespace kelo {
namespace {

/// Whether the coordinate, cut to a whole number, is one of 0 ... count - 1.
bool isPixelOf(double coordinate, int count)
{
    return coordinate > -1.0 && coordinate < count;
}

} // namespace

/// The state of one pass, for as long as it lives, however the scope is left.
class ScenePicker::Pass
{
public:
    Pass(ScenePicker &picker, const PickedScene &scene) : picker_(picker)
    {
        if (scene.drawsOffScreen) target_.emplace(picker.target_, scene.size, pickFormats());
    }
    ~Pass() { picker_.pixel_.reset(); }
    Pass(const Pass &) = delete;
    Pass &operator=(const Pass &) = delete;

    bool isOffScreen() const { return target_ && target_->isBound(); }

private:
    ScenePicker &picker_;
    PickPassState stateBefore_;
    std::optional<OffscreenTarget::Binding> target_;
};

void ScenePicker::pick(const std::optional<PixelRect> &onlyPart, const PickedScene &scene,
                       const std::function<void()> &read)
{
    bool isOffScreen = false;
    {
        const Pass pass(*this, scene);
        isOffScreen = pass.isOffScreen();
        beginPickPass(onlyPart);
        scene.loadModelView();
        if (onlyPart) pixel_.emplace(*onlyPart, currentWindowProjection());
        scene.draw();
        read();
    }
    if (!isOffScreen) scene.redraw();
}

std::uint32_t ScenePicker::identifierAt(const Point &pixel, const PickedScene &scene)
{
    std::uint32_t identifier = noPixelPickIdentifier;
    if (!isPixelOf(pixel.x, scene.size.width) || !isPixelOf(pixel.y, scene.size.height))
        return identifier;
    const int column = static_cast<int>(pixel.x);
    const int row = static_cast<int>(pixel.y);
    pick(PixelRect{column, row, 1, 1}, scene,
         [&] { identifier = readPickIdentifier(column, row); });
    return identifier;
}

std::vector<std::uint32_t> ScenePicker::identifiers(const PickedScene &scene)
{
    std::vector<std::uint32_t> identifiers;
    if (scene.size.width > 0 && scene.size.height > 0)
        pick(std::nullopt, scene, [&] { identifiers = readPickIdentifiers(scene.size); });
    return identifiers;
}

bool ScenePicker::mayShow(const Extents &box, double margin, const Matrix &transform) const
{
    return !pixel_ || pixel_->mayShow(box, margin, transform);
}

} // namespace kelo
