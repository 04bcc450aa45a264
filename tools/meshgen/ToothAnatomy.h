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

/// One cusp: a rounded four-sided pyramid. `x` (mesial) and `y` (labial) are fractions of the half
/// widths, `drop` is how far its tip lies below the crown's highest tip (mm), the slopes are
/// millimetres of fall per millimetre along the cusp ridges, towards the middle and outwards.
struct Cusp
{
    double x = 0.0;
    double y = 0.0;
    double drop = 0.0;
    double ridgeSlope = 0.6;
    double innerSlope = 0.85;
    double outerSlope = 1.5;
};

/// A straight ridge between two points of the occlusal surface (marginal or oblique ridge).
struct Ridge
{
    double x0 = 0.0, y0 = 0.0, x1 = 0.0, y1 = 0.0;
    double drop = 1.4;  ///< below the crown's highest tip, mm
    double slope = 1.0; ///< fall to either side
};

/// A developmental groove, carved along a straight line.
struct Groove
{
    double x0 = 0.0, y0 = 0.0, x1 = 0.0, y1 = 0.0;
    double depth = 0.3;
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

    /// Occlusal surfaces of back teeth.
    std::vector<Cusp> cusps;
    std::vector<Ridge> ridges;
    std::vector<Groove> grooves;
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
