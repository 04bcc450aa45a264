#pragma once

#include "tools/meshgen/BracketSurface.h"

namespace kelo::meshgen {

/// The slot of every bracket and tube, 0.022 by 0.028 inch.
inline constexpr double slotWidth = 0.56; ///< along the crown
inline constexpr double slotDepth = 0.71; ///< off the tooth

/// The measures of one tooth's bracket, in millimetres.
struct BracketMeasures
{
    PadSize pad;
    double width = 0.0;    ///< of the body, along the arch
    double split = 0.0;    ///< the gap between the mesial and the distal wings
    double wingSpan = 0.0; ///< from the occlusal to the gingival wing tips
    bool tube = false;     ///< a molar's tube instead of a slot with wings
};

/// The measures that suit a tooth, by its universal number.
BracketMeasures bracketMeasures(int toothNumber);

/// Where a bracket sits on its tooth.
struct BracketSeat
{
    SurfaceFrame pad;  ///< of the surface itself
    SurfaceFrame body; ///< of the slot: the same origin, turned by the torque built into the base
};

/// The seat for a bracket that carries `hook`: at the placement's facial axis point, or a little
/// nearer the edge (at most 0.7) and towards the hook (at most 0.3, a tube 0.9) where the hook's
/// post would else rise from between the wings or far beside the body. On a tooth that leans
/// outwards the slot of a twin bracket is turned level, by 15 degrees at most.
BracketSeat bracketSeat(const Mesh &tooth, const ToothPlacement &placement, const Hook &hook);

/// The twin body: mesial and distal wings, each with its occlusal and gingival tie wing, the slot
/// across both and the block between them. `top` is the height of the wings over the frame's plane.
Mesh makeTwinBody(const Mesh &tooth, const SurfaceFrame &frame, const BracketMeasures &measures,
                  double top);

/// The molar tube: a rounded body with a rectangular passage of the slot's size that widens at its
/// mesial and distal mouths.
Mesh makeTubeBody(const Mesh &tooth, const SurfaceFrame &frame, const BracketMeasures &measures,
                  double top);

/// The hook: an arm out of the body at `root`, leaving it along `rootDirection`, that bends into a
/// straight post through the hook's position along its direction and ends in a ball. The post is
/// straight and has the hook's radius for half an elastic's thickness (0.5) on either side of the
/// position.
Mesh makeHookArm(const Vec3 &root, const Vec3 &rootDirection, const Hook &hook);

} // namespace kelo::meshgen
