#pragma once

namespace kelo {

/// A press on a button of the overlay, which acts where the pointer is over it at the release.
class ButtonPress
{
public:
    void begin() { isTracked_ = isDown_ = true; }
    /// The pointer moved, onto the button or off it.
    void moveTo(bool isOverButton) { isDown_ = isOverButton; }
    /// The release that follows is none of the clinician's: it must not act.
    void giveUp() { isDown_ = false; }
    void end() { isTracked_ = isDown_ = false; }

    /// From the press to the release, wherever the pointer goes.
    bool isTracked() const { return isTracked_; }
    /// Whether a release would act. The button looks pressed meanwhile.
    bool isDown() const { return isDown_; }

private:
    bool isTracked_ = false;
    bool isDown_ = false;
};

} // namespace kelo
