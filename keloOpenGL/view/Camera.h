#pragma once

#include "base/Export.h"
#include "base/Rect.h"
#include "geometry/Extents.h"
#include "geometry/Vector.h"
#include "keloOpenGL/view/HVFindGoodWindow.h"
#include "keloOpenGL/view/RotationQuaternion.h"

namespace kelo {

/// An orthographic camera, as numbers: how the world is turned, which part of it must be visible,
/// and which part is, in a view of a given size. There is no perspective.
///
/// | step        | by                                                                          |
/// |-------------|-----------------------------------------------------------------------------|
/// | model-view  | to the rotation centre, turned by the world rotation, and back              |
/// | projection  | the window limits, and near and far, mapped to the edges of the viewport    |
///
/// The zoom box is the part that must be visible, the window limits are that box widened to the
/// proportions of the view: fitWindow makes them anew, nothing else changes them. Lengths are in
/// units of the scene, near and far along the viewer's axis. SceneRenderer gives a camera to
/// OpenGL.
///
/// A plain value: a picture that is not the view's own, such as a print, is drawn from a copy.
class KELO_EXPORT Camera
{
public:
    /// 90 degrees about (-1, 0, 0): the front of the mouth towards the viewer.
    static constexpr AngleAndAxis frontOrientation{90.0f, -1.0f, 0.0f, 0.0f};

    const AngleAndAxis &worldRotation() const { return worldRotation_; }
    /// The axis is stored as it is, not normalised.
    void setWorldRotation(const AngleAndAxis &rotation) { worldRotation_ = rotation; }

    /// What the view is centred on.
    const Vector3 &worldCenter() const { return worldCenter_; }
    void setWorldCenter(const Vector3 &center) { worldCenter_ = center; }
    /// The point that stays where it is when the world turns.
    const Vector3 &rotationCenter() const { return rotationCenter_; }
    void setRotationCenter(const Vector3 &center) { rotationCenter_ = center; }

    /// -1 to 1 on both axes at first.
    const WindowLimits &zoomBox() const { return zoomBox_; }
    void setZoomBox(const WindowLimits &box) { zoomBox_ = box; }
    /// Near and far; -1 and 1 at first.
    double zMin() const { return zMin_; }
    double zMax() const { return zMax_; }
    /// Places near and far about the present rotation centre, 100 scene radii away: no turn and no
    /// opening of the mouth is ever cut off.
    void fitDepth(double sceneRadius);

    /// The size of the view in points, as it was last drawn in; 0 by 0 at first, and again when the
    /// view must be measured anew.
    const Size &size() const { return size_; }
    void setSize(const Size &size) { size_ = size; }
    /// All 0 until the first fitWindow.
    const WindowLimits &windowLimits() const { return windowLimits_; }
    /// Widens the zoom box to the proportions of a view of this size.
    void fitWindow(const Size &viewSize);

    /// Whether there is something to draw on.
    bool hasArea() const { return size_.width > 0.0 && size_.height > 0.0; }
    /// Whether every axis of the window has two finite, different limits. Without them the
    /// projection could not be inverted, and OpenGL refuses it.
    bool hasVolume() const;

private:
    AngleAndAxis worldRotation_{};
    Vector3 worldCenter_{};
    Vector3 rotationCenter_{};
    WindowLimits zoomBox_{-1.0, 1.0, -1.0, 1.0};
    double zMin_ = -1.0;
    double zMax_ = 1.0;
    Size size_;
    WindowLimits windowLimits_;
};

/// The middle of a box: each coordinate is (min + max), rounded to single precision, times 0.5.
KELO_EXPORT Vector3 centerOfExtents(const Extents &extents);

/// The square zoom box of a half-size of `radius` about a centre, shrunk about its own middle by
/// `scaleFactor`. A factor of exactly 1 leaves it as it is, without rounding.
KELO_EXPORT WindowLimits zoomBoxAbout(const Vector3 &center, double radius, double scaleFactor);

} // namespace kelo
