#include "tools/lightbake/RayScene.h"

#include <embree3/rtcore.h>

#include <cstring>
#include <limits>
#include <stdexcept>

namespace kelo::lightbake {
namespace {

// Without a choice, the widest instructions of the processor at hand are taken, whose results
// differ in the last bits from those of another processor; and the tree is built by as many threads
// as there are. The scenes are small: neither would be felt.
#if defined(__x86_64__)
constexpr const char *deviceConfiguration = "threads=1,isa=sse2";
#else
constexpr const char *deviceConfiguration = "threads=1";
#endif

} // namespace

struct RayScene::Handles
{
    RTCDevice device = nullptr;
    RTCScene scene = nullptr;

    ~Handles()
    {
        if (scene) rtcReleaseScene(scene);
        if (device) rtcReleaseDevice(device);
    }
};

RayScene::RayScene() : handles_(std::make_unique<Handles>())
{
    handles_->device = rtcNewDevice(deviceConfiguration);
    if (!handles_->device) throw std::runtime_error("The ray tracer cannot be started");
    handles_->scene = rtcNewScene(handles_->device);
    // No ray slips through between two triangles.
    rtcSetSceneFlags(handles_->scene, RTC_SCENE_FLAG_ROBUST);
    rtcSetSceneBuildQuality(handles_->scene, RTC_BUILD_QUALITY_HIGH);
}

RayScene::~RayScene() = default;

void RayScene::add(std::span<const OBJVertex> vertices, std::span<const std::uint32_t> indexes,
                   unsigned group)
{
    if (vertices.empty() || indexes.empty()) return;
    RTCGeometry geometry = rtcNewGeometry(handles_->device, RTC_GEOMETRY_TYPE_TRIANGLE);
    auto *positions = static_cast<float *>(
        rtcSetNewGeometryBuffer(geometry, RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3,
                                3 * sizeof(float), vertices.size()));
    auto *triangles = static_cast<std::uint32_t *>(
        rtcSetNewGeometryBuffer(geometry, RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT3,
                                3 * sizeof(std::uint32_t), indexes.size() / 3));
    if (!positions || !triangles) {
        rtcReleaseGeometry(geometry);
        throw std::runtime_error("There is not enough memory for the ray tracer");
    }
    for (const OBJVertex &vertex : vertices) {
        std::memcpy(positions, vertex.position, sizeof vertex.position);
        positions += 3;
    }
    std::memcpy(triangles, indexes.data(), indexes.size() / 3 * 3 * sizeof(std::uint32_t));
    rtcSetGeometryMask(geometry, 1u << group);
    rtcCommitGeometry(geometry);
    rtcAttachGeometry(handles_->scene, geometry);
    rtcReleaseGeometry(geometry);
}

void RayScene::finish()
{
    rtcCommitScene(handles_->scene);
}

std::optional<Hit> RayScene::nearest(const Vec3 &origin, const Vec3 &direction, double farthest,
                                     std::optional<unsigned> leftOutGroup) const
{
    RTCRayHit ray{};
    ray.ray.org_x = static_cast<float>(origin.x);
    ray.ray.org_y = static_cast<float>(origin.y);
    ray.ray.org_z = static_cast<float>(origin.z);
    ray.ray.dir_x = static_cast<float>(direction.x);
    ray.ray.dir_y = static_cast<float>(direction.y);
    ray.ray.dir_z = static_cast<float>(direction.z);
    ray.ray.tfar = static_cast<float>(farthest);
    ray.ray.mask = leftOutGroup ? ~(1u << *leftOutGroup) : ~0u;
    ray.hit.geomID = RTC_INVALID_GEOMETRY_ID;
    RTCIntersectContext context;
    rtcInitIntersectContext(&context);
    rtcIntersect1(handles_->scene, &context, &ray);
    if (ray.hit.geomID == RTC_INVALID_GEOMETRY_ID) return std::nullopt;
    const double along = double(ray.hit.Ng_x) * direction.x + double(ray.hit.Ng_y) * direction.y +
                         double(ray.hit.Ng_z) * direction.z;
    return Hit{double(ray.ray.tfar), along > 0.0};
}

} // namespace kelo::lightbake
