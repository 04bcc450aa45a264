// What the camera looks at: orientation, centre, zoom box, extents and zoom to fit.

#include "keloOpenGL/view/HVOGLBasicView.h"

#include "base/Assertion.h"
#include "document/DXDocumentModel.h"
#include "models/DXGLightweightModel.h"

#include <array>
#include <exception>

namespace kelo {
namespace {

constexpr std::size_t centerByteCount = 12;
constexpr std::size_t zoomByteCount = 32;
constexpr std::size_t rotationByteCount = 16;
/// Near and far lie this many scene radii from the rotation centre, so that no turn and no opening
/// of the mouth is ever cut off.
constexpr double depthInRadii = 100.0;
/// The half-size of the scene while nothing is known of it.
constexpr double defaultRadius = 100.0;

static_assert(sizeof(Vector3) == centerByteCount);

/// min and max, brought closer together (or apart) about their centre.
void scaleRange(double &min, double &max, double factor)
{
    const double halfSize = (max - min) * factor * 0.5;
    const double center = (min + max) * 0.5;
    min = center - halfSize;
    max = center + halfSize;
}

} // namespace

void HVOGLBasicView::setWorldRotationAngle_axis(double angleInDegrees, double x, double y, double z)
{
    _worldRotation = {static_cast<float>(angleInDegrees), static_cast<float>(x),
                      static_cast<float>(y), static_cast<float>(z)};
    setNeedsDisplay(true);
}

HVOGLBasicView::Rotation HVOGLBasicView::defaultOrientation() const
{
    return {90.0f, -1.0f, 0.0f, 0.0f};
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
    assertThat(rotationData.size() == rotationByteCount, "world-rotation data must be 16 bytes");
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

void HVOGLBasicView::setWorldCenterData(const PackedData &centerData)
{
    assertThat(centerData.size() == centerByteCount, "world-centre data must be 12 bytes");
    _worldCenter = unpacked<Vector3>(centerData);
    setRotationCenterData(rotationCenterDataForWorldCenterData(centerData));
}

PackedData HVOGLBasicView::worldCenterData() const
{
    return packed(_worldCenter);
}

PackedData HVOGLBasicView::rotationCenterDataForWorldCenterData(const PackedData &centerData) const
{
    return centerData;
}

void HVOGLBasicView::setRotationCenterData(const PackedData &centerData)
{
    assertThat(centerData.size() == centerByteCount, "rotation-centre data must be 12 bytes");
    _rotationCenter = unpacked<Vector3>(centerData);
}

PackedData HVOGLBasicView::rotationCenterData() const
{
    return packed(_rotationCenter);
}

void HVOGLBasicView::setZoomData(const PackedData &zoomData)
{
    assertThat(zoomData.size() == zoomByteCount, "zoom data must be 32 bytes");
    const auto limits = unpacked<std::array<double, 4>>(zoomData);
    _xMin = limits[0];
    _xMax = limits[1];
    _yMin = limits[2];
    _yMax = limits[3];
    adjustWindow();
}

PackedData HVOGLBasicView::zoomData() const
{
    return zoomDataWithXMin_xMax_yMin_yMax(_xMin, _xMax, _yMin, _yMax);
}

PackedData HVOGLBasicView::zoomDataWithXMin_xMax_yMin_yMax(double xMin, double xMax, double yMin,
                                                           double yMax)
{
    return packed(std::array<double, 4>{xMin, xMax, yMin, yMax});
}

WindowLimits HVOGLBasicView::windowLimits() const
{
    return {_xMinWindow, _xMaxWindow, _yMinWindow, _yMaxWindow};
}

PackedData HVOGLBasicView::worldCenterDataForExtents(const Extents &extents)
{
    const auto center = [](double min, double max) { return static_cast<float>(min + max) * 0.5f; };
    return packed(Vector3{center(extents.xMin(), extents.xMax()),
                          center(extents.yMin(), extents.yMax()),
                          center(extents.zMin(), extents.zMax())});
}

void HVOGLBasicView::updateExtents()
{
    try {
        const auto united = std::make_shared<MutableExtents>();
        if (documentModel()) {
            // Throws where a gum is missing: a scene that is not whole has the default frame.
            for (const auto &model : documentModel()->models())
                united->absorbExtents(model->extents());
        }
        setModelExtents(united->active() ? united : nullptr);
    } catch (const std::exception &) {
        setModelExtents(nullptr);
    }
}

void HVOGLBasicView::setModelExtents(std::shared_ptr<const Extents> extents)
{
    modelExtents_ = std::move(extents);
}

std::shared_ptr<const Extents> HVOGLBasicView::extents() const
{
    if (modelExtents_) return modelExtents_;
    return Extents::extentsWithCenter_inscribedRadius(Vector3{0.0f, 0.0f, 0.0f}, defaultRadius);
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

void HVOGLBasicView::zoomToFit()
{
    const std::shared_ptr<const Extents> scene = extentsForZoomToFit();
    const PackedData worldCenter = worldCenterDataForExtents(*scene);
    const PackedData rotationCenter = rotationCenterDataForWorldCenterData(worldCenter);
    assertThat(rotationCenter.size() == centerByteCount, "rotation-centre data must be 12 bytes");
    const auto center = unpacked<Vector3>(rotationCenter);
    const double radius = zoomToFitRadiusForExtents(*scene);

    double xMin = center.x - radius, xMax = center.x + radius;
    double yMin = center.y - radius, yMax = center.y + radius;
    const double factor = zoomToFitScaleFactor();
    if (factor != 1.0) {
        scaleRange(xMin, xMax, factor);
        scaleRange(yMin, yMax, factor);
    }

    // Near and far are placed about the rotation centre that is still in force, not the new one.
    const double depth = extents()->radius() * depthInRadii;
    _zMin = _rotationCenter.z - depth;
    _zMax = _rotationCenter.z + depth;
    setWorldCenterData(worldCenter);
    setZoomData(zoomDataWithXMin_xMax_yMin_yMax(xMin, xMax, yMin, yMax));
}

} // namespace kelo
