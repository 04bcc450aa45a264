#pragma once

#include "tools/lightbake/Mouth.h"
#include "tools/lightbake/RayScene.h"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace kelo::lightbake {

/// How far away a surface may be to take light from a vertex, in millimetres: from the bottom of a
/// fissure to the other jaw's cusps, and from the gum to the bulge of the next tooth. A wider
/// reach makes the palate and the inner sides of the teeth as dark as in a mouth without a lamp.
inline constexpr double reachInMillimetres = 12.0;

/// The opening of the mouth, as the view stores it in degrees, that the second value is for: 20
/// degrees beyond the view's dead zone. The other jaw is then out of reach of nearly everything:
/// opening to the view's limit of 55 changes one vertex in twenty by more than 4 of 255, most of
/// them molars'. While the mouth opens so far, light rises quickly at first: between t = 0, closed,
/// and t = 1, a share of t (2 - t) of the second value differs by 2 of 255 on average from what is
/// there half way.
inline constexpr float openAngleInDegrees = 30.0f;

/// What the rays of one vertex found.
struct VertexLight
{
    /// How much of the light around reaches the vertex, from 0 to 1, weighted by the cosine to the
    /// normal; what is in the way counts less the farther away it is, and not at all beyond the
    /// reach.
    double closed = 1.0;
    double open = 1.0;
    /// Inside of another surface of its jaw, as the root is in the gum.
    bool isBuried = false;
};

/// Teeth and gums of both jaws, which take light from each other and from attachments. Attachments
/// take light from themselves only: which of them a tooth wears changes with the treatment.
class Surroundings
{
public:
    /// The mouth must live as long as the surroundings.
    explicit Surroundings(const Mouth &mouth);

    /// One element for each vertex of the part, which is one of the mouth's. Buried vertices have
    /// the light of their nearest neighbours that are not, so that nothing darkens towards an edge
    /// that another surface hides. May be asked on several threads at once.
    std::vector<VertexLight> lightOf(const Part &part) const;

private:
    /// A jaw with the movement that brings points of the other jaw into its own coordinates.
    struct Jaw
    {
        RayScene scene;
        std::array<std::array<double, 4>, 3> fromOtherWhenOpen{};
    };
    VertexLight lightAt(const OBJVertex &vertex, const Part &part, const RayScene *own) const;

    Jaw upper_;
    Jaw lower_;
};

/// Sets every buried vertex to the mean of its neighbours that are not, from the nearest inwards,
/// and then draws every vertex half way towards the mean of its neighbours: what differs from one
/// vertex to the next is the chance of which rays just missed an edge.
void evenOut(std::vector<VertexLight> &light, std::span<const std::uint32_t> indexes);

} // namespace kelo::lightbake
