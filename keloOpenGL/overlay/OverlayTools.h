#pragma once

#include "base/Export.h"
#include "base/Rect.h"
#include "keloOpenGL/overlay/OverlayLayout.h"

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace kelo {

// The tools of the flat overlay, as a table: what each looks like, where it is, what a press on it
// does and what it is for. Nothing here draws. A new tool is a row and its name.

enum class OverlayToolID : std::size_t { Elastics, Brackets, Print };
inline constexpr std::size_t overlayToolCount = 3;

/// The sizes of the tools' pictures, by OverlayToolID; without an area for a tool without a
/// picture.
using OverlayPictureSizes = std::array<TextureSize, overlayToolCount>;

struct OverlayTool
{
    OverlayToolID id;
    const char *name;            ///< by which scripts and hosts ask for the tool
    const char *picture;         ///< the name of a PNG file in the library's bundle
    const char *selectedPicture; ///< shown while the tool's mode is in force; null for the same
    /// The mouse mode that a press enters. Nothing for a button, which acts when it is released.
    std::optional<long> mouseMode;
    bool changesTreatment; ///< is there only while the treatment may be edited
    const char *toolTip;   ///< marked for translation in the context "DXOpenGL"
    /// In overlay coordinates; all zero without a picture.
    Rect (*rect)(const OverlayLayout &layout, const OverlayPictureSizes &sizes);

    bool isThere(bool mayEdit) const { return mayEdit || !changesTreatment; }
};

/// In the order in which they are drawn, which is that of their numbers.
KELO_EXPORT std::span<const OverlayTool> overlayTools();
KELO_EXPORT const OverlayTool &overlayTool(OverlayToolID id);
/// Null for a name that no tool has.
KELO_EXPORT const OverlayTool *overlayToolNamed(std::string_view name);

/// The topmost tool at a point in overlay coordinates, of those that are there; null for none.
KELO_EXPORT const OverlayTool *overlayToolAt(const Point &point, const OverlayLayout &layout,
                                             const OverlayPictureSizes &sizes, bool mayEdit);

/// Where a point of a view of this size is in overlay coordinates: the middle is (0, 0), the top
/// edge y = 1.
KELO_EXPORT Point overlayPoint(const Point &pointInView, const Size &viewSize);

} // namespace kelo
