#pragma once

#include "tools/lightbake/Mouth.h"
#include "tools/lightbake/Occlusion.h"

#include <vector>

namespace kelo::lightbake {

/// A tooth as the gum divides it.
struct Crown
{
    int toothNumber = 0;
    bool isUpper = true;
    std::vector<Vec3> exposed; ///< its vertices outside of the gum
    std::vector<Vec3> buried;  ///< and those inside
    Vec3 middle;               ///< of the exposed vertices
    double tip = 0.0;          ///< the height z of the edge or of the highest cusp
};

/// The crown of a tooth whose vertices have this light.
Crown crownOf(const Part &tooth, const std::vector<VertexLight> &light);

/// The tone of a place on a crown: from 1, warm, at the gum to -1, grey, at the edge.
///
/// Shade guides and textbooks of dental ceramics divide a crown into thirds: in the cervical third
/// the dentine shines through thin enamel, warmer and more saturated; the middle third has the
/// tooth's own shade; in the incisal third there is hardly any dentine behind the enamel, which
/// looks greyer and lets light through. So with a, the distance to the part that is in the gum, b,
/// the height up to the edge or the highest cusp, and s = a / (a + b),
///     tone = 1 - smoothstep(0, 0.4, s) - smoothstep(0.6, 1, s)
/// which is 0 within the middle third and soft around its borders. Premolars and molars have
/// dentine up to their cusps: half as grey there. Canines have the most dentine and are the
/// yellowest of the front teeth: 0.3 + 0.7 of that.
///
/// A crown of which nothing is in a gum is 0 throughout.
double toneOfEnamel(const Crown &crown, const Vec3 &place);

/// The tone of a place on the gum of one jaw, from -1, pale, at the margin to 1, red, in the
/// vestibule; `normal` is the unit normal there.
///
/// Textbooks of periodontology give 1.5 to 2 mm of free and 2 to 4.5 mm of attached gingiva,
/// keratinised and coral pink; beyond lies the mucosa of the vestibule and of the floor of the
/// mouth, which is thin, and red with vessels. So with d, the distance to the nearest crown in
/// millimetres,
///     tone = 2 smoothstep(2.5, 7.5, d) - 1
/// which is half way where attached gingiva ends. The palate is keratinised throughout: inwards of
/// the upper crowns, from 1 mm outside to 2 mm inside of their middle, and where the surface looks
/// into the mouth, the tone rises to -0.5 only.
///
/// `crowns` are those of the gum's jaw; without any the tone is 0.
double toneOfGum(const std::vector<Crown> &crowns, const Vec3 &place, const Vec3 &normal);

} // namespace kelo::lightbake
