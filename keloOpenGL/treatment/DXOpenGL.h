#pragma once

#include "keloOpenGL/view/HVOGLSmoothView.h"

namespace kelo {

/// The treatment view: shows the document's jaws and lets the clinician turn them and open the
/// mouth. Made with makeView<DXOpenGL>(frame).
///
/// | input                       | effect                                                    |
/// |-----------------------------|-----------------------------------------------------------|
/// | left drag, mode 2           | across: turns the jaws; up and down: opens the mouth      |
/// | wheel                       | across: turns the jaws; up and down: opens the mouth      |
/// | left, right arrow           | turn by 45 degrees, animated                              |
/// | up, down arrow              | open the mouth by a step, or close it, animated           |
/// | 0                           | front view, mouth closed, animated                        |
///
/// A mouth left within 22 degrees of closed shuts by itself when the drag ends, or half a second
/// after the last turn of the wheel.
class DXOpenGL : public HVOGLSmoothView
{
public:
    explicit DXOpenGL(const Rect &frame);
    ~DXOpenGL() override;

    /// Turns the world about its vertical axis, within the front half, and asks for a redraw.
    void rotateByDegrees(float degrees);
    /// Shuts a mouth that is open by less than 22 degrees, over a quarter of a second.
    void snapMouthClosedIfNeeded();

    void rotateMouseDown(const Event &event) override;
    void rotateMouseDragged(const Event &event) override;
    void rotateMouseUp(const Event &event) override;
    void colorMouseDragged(const Event &event) override;
    void colorMouseUp(const Event &event) override;
    void elasticsMouseDragged(const Event &event) override;
    void elasticsMouseUp(const Event &event) override;
    void scrollWheel(const Event &event) override;
    void keyDown(const Event &event) override;

private:
    void snapMouthClosedTimerExpired();
    void turnTargetByAngle(float angle);

    Point _dragOrigin;
    bool _rotating = false;
    std::shared_ptr<Timer> verticalScrollSnapMouthClosedTimer;
};

} // namespace kelo
