#pragma once

#include "base/Export.h"
#include "base/Rect.h"
#include "platform/view/Event.h"

#include <optional>

namespace kelo {

/// A drag that turns the jaws and opens the mouth. It is the button's that began it: while it goes
/// on and another button is held too, that one's press, moves and release change nothing. An event
/// that is about no button counts as its own.
class KELO_EXPORT RotateDrag
{
public:
    /// What a move does, in degrees: half a turn over the shorter side of the view.
    struct Turn
    {
        float across = 0.0f; ///< to the right
        float up = 0.0f;
    };

    bool isGoingOn() const { return isGoingOn_; }

    /// Begins at a point of the view.
    void begin(const Point &point, std::optional<MouseButton> button);
    /// From the last point to this one; nothing for another button's move. A view without area
    /// turns by nothing.
    std::optional<Turn> moveTo(const Point &point, std::optional<MouseButton> button,
                               const Size &viewSize);
    /// The button was released; false if it is another one than the drag's.
    bool end(std::optional<MouseButton> button);
    /// Gives a drag up that is none after all.
    void cancel() { isGoingOn_ = false; }

private:
    bool belongsToAnother(std::optional<MouseButton> button) const;

    bool isGoingOn_ = false;
    std::optional<MouseButton> button_; ///< that it began with
    Point last_;
};

} // namespace kelo
