#pragma once

#include "base/Export.h"
#include "base/Rect.h"
#include "geometry/Extents.h"
#include "geometry/Matrix.h"
#include "keloOpenGL/view/OffscreenTarget.h"
#include "keloOpenGL/view/PickBox.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace kelo {

/// A scene to be picked in, and who draws it. The viewport and the projection are set.
struct PickedScene
{
    PixelSize size;             ///< of the drawable, in device pixels
    bool drawsOffScreen = true; ///< false: only into the buffer that is bound
    /// Comes first: loads the matrix from the world to the eye.
    std::function<void()> loadModelView;
    /// Draws everything that can be picked, in flat colours. What ScenePicker::mayShow denies can
    /// be left out.
    std::function<void()> draw;
    /// Draws the picture again. Comes last where the identifiers had to be drawn over it.
    std::function<void()> redraw;
};

/// Tells what lies under the points of a scene: has it drawn in the colours of its identifiers
/// (PickIdentifier.h), where nobody sees it, and reads them back. Works in the current context,
/// whose state is the same before and after.
class KELO_EXPORT ScenePicker
{
public:
    /// The identifier at a point in device pixels, counted from the lower left corner; coordinates
    /// are cut to whole numbers. noPixelPickIdentifier, and nothing is drawn, for a point outside.
    /// Only that pixel is drawn.
    std::uint32_t identifierAt(const Point &pixel, const PickedScene &scene);

    /// Those of all pixels, row by row from the bottom left. Empty for a scene without pixels.
    std::vector<std::uint32_t> identifiers(const PickedScene &scene);

    /// False only during a pick of one pixel, for a box that cannot colour it: one that was grown
    /// by margin on every side and then moved by transform.
    bool mayShow(const Extents &box, double margin, const Matrix &transform) const;

private:
    class Pass;
    void pick(const std::optional<PixelRect> &onlyPart, const PickedScene &scene,
              const std::function<void()> &read);

    OffscreenTarget target_;
    std::optional<PickBox> pixel_; ///< there during a pick of one
};

} // namespace kelo
