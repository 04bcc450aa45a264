#include "tools/lightbake/Tone.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kelo::lightbake {
namespace {

using meshgen::dot;
using meshgen::smoothstep;

constexpr int caninePosition = 3;
constexpr double canineShift = 0.3;
constexpr double posteriorGreyShare = 0.5;
constexpr double palateShare = 0.25;

/// 1 for central incisors to 8 for wisdom teeth.
int positionFromMidline(int toothNumber)
{
    const int place = (toothNumber - 1) % 16; // 0 to 15 along the jaw
    return place < 8 ? 8 - place : place - 7;
}

/// The distance to the nearest of the places, infinite without any.
double distanceTo(const std::vector<Vec3> &places, const Vec3 &place)
{
    double leastSquare = std::numeric_limits<double>::infinity();
    for (const Vec3 &each : places)
        leastSquare = std::min(leastSquare, dot(each - place, each - place));
    return std::sqrt(leastSquare);
}

/// How far inwards of the arch a place lies from the middle of a crown, in millimetres.
double inwards(const std::vector<Crown> &crowns, const Crown &crown, const Vec3 &place)
{
    Vec3 centre;
    for (const Crown &each : crowns)
        centre += each.middle / static_cast<double>(crowns.size());
    const Vec3 toCentre = centre - crown.middle;
    return dot(place - crown.middle, normalized(Vec3{toCentre.x, toCentre.y, 0.0}));
}

} // namespace

Crown crownOf(const Part &tooth, const std::vector<VertexLight> &light)
{
    Crown crown;
    crown.toothNumber = tooth.toothNumber;
    crown.isUpper = tooth.isUpper;
    for (std::size_t i = 0; i < light.size(); ++i) {
        const Vec3 place = vecOf(tooth.vertices[i].position);
        (light[i].isBuried ? crown.buried : crown.exposed).push_back(place);
    }
    for (const Vec3 &place : crown.exposed)
        crown.middle += place / static_cast<double>(crown.exposed.size());
    const auto [lowest, highest] =
        std::minmax_element(crown.exposed.begin(), crown.exposed.end(),
                            [](const Vec3 &a, const Vec3 &b) { return a.z < b.z; });
    if (!crown.exposed.empty()) crown.tip = crown.isUpper ? lowest->z : highest->z;
    return crown;
}

double toneOfEnamel(const Crown &crown, const Vec3 &place)
{
    if (crown.buried.empty()) return 0.0;
    const double fromGum = distanceTo(crown.buried, place);
    const double toTip = std::max(crown.isUpper ? place.z - crown.tip : crown.tip - place.z, 0.0);
    const double s = fromGum + toTip > 0.0 ? fromGum / (fromGum + toTip) : 0.0;
    const int position = positionFromMidline(crown.toothNumber);
    const double greyShare = position > caninePosition ? posteriorGreyShare : 1.0;
    const double tone = 1.0 - smoothstep(0.0, 0.4, s) - greyShare * smoothstep(0.6, 1.0, s);
    return position == caninePosition ? canineShift + (1.0 - canineShift) * tone : tone;
}

double toneOfGum(const std::vector<Crown> &crowns, const Vec3 &place, const Vec3 &normal)
{
    const Crown *nearest = nullptr;
    double least = std::numeric_limits<double>::infinity();
    for (const Crown &crown : crowns) {
        const double distance = distanceTo(crown.exposed, place);
        if (distance >= least) continue;
        least = distance;
        nearest = &crown;
    }
    if (!nearest) return 0.0;
    double redness = smoothstep(2.5, 7.5, least);
    if (nearest->isUpper) {
        // The roof of the gum's base lies inwards, too, but looks away from the mouth.
        const double palatal = smoothstep(-1.0, 2.0, inwards(crowns, *nearest, place)) *
                               smoothstep(-0.5, 0.2, -normal.z);
        redness *= 1.0 - (1.0 - palateShare) * palatal;
    }
    return 2.0 * redness - 1.0;
}

} // namespace kelo::lightbake
