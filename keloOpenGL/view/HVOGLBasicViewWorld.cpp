// What the camera looks at: orientation, centre, zoom box, extents and zoom to fit.

#include "keloOpenGL/view/HVOGLBasicView.h"

#include "base/Assertion.h"
#include "keloOpenGL/view/HVOGLBasicViewParts.h"
#include "keloOpenGL/view/SceneExtents.h"

#include <utility>

namespace kelo {
namespace {

/// The layouts that PackedData.h gives.
static_assert(sizeof(Vector3) == 12 && sizeof(WindowLimits) == 32);
static_assert(sizeof(HVOGLBasicView::Rotation) == 16);

Vector3 centerOfData(const PackedData &centerData, const char *complaint)
{
    assertThat(centerData.size() == sizeof(Vector3), complaint);
    return unpacked<Vector3>(centerData);
}

constexpr const char *noWorldCenter = "world-centre data must be 12 bytes";
constexpr const char *noRotationCenter = "rotation-centre data must be 12 bytes";

} // namespace

const HVOGLBasicView::Rotation &HVOGLBasicView::worldRotation() const
{
    return parts_->camera.worldRotation();
}

void HVOGLBasicView::setWorldRotationAngle_axis(double angleInDegrees, double x, double y, double z)
{
    parts_->camera.setWorldRotation(angleAndAxis(angleInDegrees, x, y, z));
    setNeedsDisplay(true);
}

HVOGLBasicView::Rotation HVOGLBasicView::defaultOrientation() const
{
    return Camera::frontOrientation;
}

void HVOGLBasicView::restoreDefaultOrientation()
{
    const Rotation orientation = defaultOrientation();
    setWorldRotationAngle_axis(orientation[0], orientation[1], orientation[2], orientation[3]);
}

void HVOGLBasicView::setTargetWorldRotationAngle_axis(double angleInDegrees, double x, double y,
                                                      double z)
{
    setWorldRotationAngle_axis(angleInDegrees, x, y, z);
}

void HVOGLBasicView::setTargetWorldRotationData(const PackedData &rotationData)
{
    assertThat(rotationData.size() == sizeof(Rotation), "world-rotation data must be 16 bytes");
    const auto rotation = unpacked<Rotation>(rotationData);
    setTargetWorldRotationAngle_axis(rotation[0], rotation[1], rotation[2], rotation[3]);
}

void HVOGLBasicView::setTargetWorldCenterData(const PackedData &centerData)
{
    setWorldCenterData(centerData);
}

void HVOGLBasicView::setTargetZoomData(const PackedData &zoomData)
{
    setZoomData(zoomData);
}

Vector3 HVOGLBasicView::worldCenter() const
{
    return parts_->camera.worldCenter();
}

void HVOGLBasicView::setWorldCenterData(const PackedData &centerData)
{
    parts_->camera.setWorldCenter(centerOfData(centerData, noWorldCenter));
    setRotationCenterData(rotationCenterDataForWorldCenterData(centerData));
}

PackedData HVOGLBasicView::worldCenterData() const
{
    return packed(worldCenter());
}

PackedData HVOGLBasicView::rotationCenterDataForWorldCenterData(const PackedData &centerData) const
{
    return centerData;
}

Vector3 HVOGLBasicView::rotationCenter() const
{
    return parts_->camera.rotationCenter();
}

void HVOGLBasicView::setRotationCenterData(const PackedData &centerData)
{
    parts_->camera.setRotationCenter(centerOfData(centerData, noRotationCenter));
}

PackedData HVOGLBasicView::rotationCenterData() const
{
    return packed(rotationCenter());
}

void HVOGLBasicView::setZoomData(const PackedData &zoomData)
{
    assertThat(zoomData.size() == sizeof(WindowLimits), "zoom data must be 32 bytes");
    parts_->camera.setZoomBox(unpacked<WindowLimits>(zoomData));
    adjustWindow();
}

PackedData HVOGLBasicView::zoomData() const
{
    return packed(zoomBox());
}

PackedData HVOGLBasicView::zoomDataWithXMin_xMax_yMin_yMax(double xMin, double xMax, double yMin,
                                                           double yMax)
{
    return packed(WindowLimits{xMin, xMax, yMin, yMax});
}

WindowLimits HVOGLBasicView::zoomBox() const
{
    return parts_->camera.zoomBox();
}

WindowLimits HVOGLBasicView::windowLimits() const
{
    return parts_->camera.windowLimits();
}

double HVOGLBasicView::zMin() const
{
    return parts_->camera.zMin();
}

double HVOGLBasicView::zMax() const
{
    return parts_->camera.zMax();
}

const Camera &HVOGLBasicView::camera() const
{
    return parts_->camera;
}

void HVOGLBasicView::setCamera(const Camera &camera)
{
    parts_->camera = camera;
}

PackedData HVOGLBasicView::worldCenterDataForExtents(const Extents &extents)
{
    return packed(centerOfExtents(extents));
}

void HVOGLBasicView::updateExtents()
{
    setModelExtents(extentsOfWholeScene(documentModel().get()));
}

void HVOGLBasicView::setModelExtents(std::shared_ptr<const Extents> extents)
{
    parts_->modelExtents = std::move(extents);
}

std::shared_ptr<const Extents> HVOGLBasicView::extents() const
{
    return parts_->modelExtents ? parts_->modelExtents : extentsOfUnknownScene();
}

std::shared_ptr<const Extents> HVOGLBasicView::extentsForZoomToFit()
{
    updateExtents();
    return extents();
}

double HVOGLBasicView::zoomToFitRadiusForExtents(const Extents &extents) const
{
    return extents.circumscribedRadius();
}

WindowLimits HVOGLBasicView::zoomBoxToFit(const Extents &scene,
                                          const PackedData &worldCenterData) const
{
    const PackedData centerData = rotationCenterDataForWorldCenterData(worldCenterData);
    const Vector3 center = centerOfData(centerData, noRotationCenter);
    const double radius = zoomToFitRadiusForExtents(scene);
    return zoomBoxAbout(center, radius, zoomToFitScaleFactor());
}

void HVOGLBasicView::zoomToFit()
{
    const std::shared_ptr<const Extents> scene = extentsForZoomToFit();
    const PackedData centerData = worldCenterDataForExtents(*scene);
    frame(centerData, zoomBoxToFit(*scene, centerData));
}

void HVOGLBasicView::frame(const PackedData &worldCenterData, const WindowLimits &zoomBox)
{
    // Near and far are placed about the rotation centre that is still in force, not the new one.
    parts_->camera.fitDepth(extents()->radius());
    setWorldCenterData(worldCenterData);
    setZoomData(packed(zoomBox));
}

} // namespace kelo
