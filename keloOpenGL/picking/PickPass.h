#pragma once

#include "base/Export.h"
#include "base/Rect.h"
#include "keloOpenGL/view/OffscreenTarget.h"
#include "keloOpenGL/view/WindowProjection.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace kelo {

// A picking pass draws the scene in flat colours that are its models' identifiers
// (PickIdentifier.h) into a picture that nobody sees, and reads them back. All of it goes to the
// current context.

/// Of the picture that is drawn: eight bits of red, green, blue and alpha, 24 bits of depth.
KELO_EXPORT OffscreenTarget::Formats pickFormats();

/// Makes every state that a pass changes what it was before, at the end of its life.
class KELO_EXPORT PickPassState
{
public:
    PickPassState();
    ~PickPassState();
    PickPassState(const PickPassState &) = delete;
    PickPassState &operator=(const PickPassState &) = delete;
};

/// Turns off whatever mixes or spreads colours, which would make other identifiers of them, sets
/// the tests that a drawing cycle sets, and clears: everything, or `onlyPart`, outside of which
/// nothing is drawn then. Within the life of a PickPassState.
KELO_EXPORT void beginPickPass(const std::optional<PixelRect> &onlyPart);

/// The identifier that was drawn into a pixel, counted from the lower left one, from 0.
/// noPixelPickIdentifier where the picture has no such pixel.
KELO_EXPORT std::uint32_t readPickIdentifier(int column, int row);
/// Those of a whole picture, row by row from the bottom left.
KELO_EXPORT std::vector<std::uint32_t> readPickIdentifiers(const PixelSize &size);

} // namespace kelo
