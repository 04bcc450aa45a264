#pragma once

#include <array>
#include <vector>

namespace kelo::meshgen {

/// Widths of a crown in millimetres, as tables of dental anatomy give them.
struct CrownDimensions
{
    double height = 0.0;      ///< from the facial cervical line to the edge or highest cusp
    double mesiodistal = 0.0; ///< greatest width along the arch
    double mesiodistalCervical = 0.0;
    double buccolingual = 0.0; ///< greatest width across the arch
    double buccolingualCervical = 0.0;
    double cervicalCurve = 0.0; ///< how far the cervical line rises on the mesial side
    double bracketHeight = 0.0; ///< from the edge or cusp tip to the middle of a bracket's slot
};

/// How far one side of a crown stands out, at six heights from the cervical line (first) to the
/// edge or the occlusal rim (last), as fractions of half the crown's width in that direction.
using SideProfile = std::array<double, 6>;

/// One cusp: a rounded four-sided pyramid that swells into a lobe. `x` (mesial) and `y` (labial)
/// are fractions of the half widths, `drop` is how far its tip lies below the crown's highest tip
/// (mm), the slopes are millimetres of fall per millimetre along the cusp ridges, inwards along the
/// triangular ridge, and outwards.
struct Cusp
{
    double x = 0.0;
    double y = 0.0;
    double drop = 0.0;
    double ridgeSlope = 0.6;
    double innerSlope = 0.85;
    double outerSlope = 1.5;
    double turn = 0.0;   ///< degrees by which its inner end turns towards mesial
    double bulge = 0.10; ///< of its flanks, 1/mm: 0 makes a pyramid, more makes a lobe
};

/// A point of the occlusal surface, in fractions of the half widths.
struct OcclusalPoint
{
    double x = 0.0; ///< mesial
    double y = 0.0; ///< labial
};

/// A broken line over the occlusal surface.
using OcclusalLine = std::vector<OcclusalPoint>;

/// A marginal or oblique ridge.
struct Ridge
{
    OcclusalLine line;
    double drop = 1.4;  ///< below the crown's highest tip, mm
    double slope = 1.0; ///< fall to either side
};

/// A fissure: a developmental groove between two lobes, or a supplemental one on a lobe.
struct Groove
{
    OcclusalLine line;
    double depth = 0.6;     ///< mm, in addition to the valley that it lies in
    double halfWidth = 0.8; ///< mm, from its line to where the lobes' own form begins
};

/// The furrow between two lobes of a buccal or lingual wall, in which a fissure runs out.
struct WallFurrow
{
    double x = 0.0;         ///< fraction of the half width
    double side = 1.0;      ///< 1 buccal, -1 lingual
    double depth = 0.4;     ///< at the occlusal end, mm
    double halfWidth = 1.0; ///< mm
    double from = 0.35;     ///< where it begins, as a fraction of the crown's height
};

/// The forms that make one tooth recognisable. Mirror images share one record.
struct ToothAnatomy
{
    CrownDimensions dimensions;
    bool anterior = false; ///< incisor or canine: an edge instead of an occlusal surface
    SideProfile mesial{}, distal{}, labial{}, lingual{};
    double labialSquareness = 2.4;  ///< exponent of the outline's labial half: 2 is an ellipse
    double lingualSquareness = 2.2; ///< the same of its lingual half
    double lingualTaper = 0.0;      ///< how much narrower the lingual side is, fraction
    double rhomboid = 0.0;          ///< mesial shift per labial distance: acute mesiobuccal corner
    double lean = 0.0;              ///< labial shift of the edge or cusps against the cervix, mm

    /// Edges of front teeth.
    double mesialCornerDrop = 0.0; ///< rounding of the mesial corner, mm
    double distalCornerDrop = 0.0; ///< rounding of the distal corner, mm
    double cornerPower = 6.0;      ///< high: a corner; low: a slope all along the edge
    double mamelons = 0.0;         ///< amplitude of the edge's three lobes, mm
    double tipShift = 0.0;         ///< of a canine's cusp towards mesial, fraction of half width
    double fossaDepth = 0.0;       ///< of the lingual fossa, mm
    double labialRidge = 0.0;      ///< middle ridge of the labial face, mm
    double cingulum = 0.0;         ///< of the cervical third's lingual bulge, mm
    double marginalRidges = 0.0;   ///< along both sides of the lingual fossa, mm
    double wearTilt = 0.0;         ///< of the edge's facet towards lingual, mm per mm

    /// Occlusal surfaces of back teeth.
    std::vector<Cusp> cusps;
    std::vector<Ridge> ridges;
    std::vector<Groove> grooves;
    std::vector<WallFurrow> furrows;
    double cuspHeight = 1.0;  ///< relief of the occlusal surface: less than 1 for worn cusps
    double grooveDepth = 1.0; ///< factor of all grooves
};

/// Position from the midline, 1 (central incisor) to 7 (second molar), of a universal number.
int positionFromMidline(int toothNumber);

/// Whether the tooth is in the patient's right half.
bool isRightSide(int toothNumber);

/// The anatomy of a tooth by its universal number (2 to 15, 18 to 31), in the sizes of the tables
/// of dental anatomy; the same right and left. Throws std::out_of_range for other numbers.
ToothAnatomy toothAnatomy(int toothNumber);

} // namespace kelo::meshgen
