#pragma once

#include <QString>

#include <array>

namespace kelo {
class DXOpenGL;
} // namespace kelo

namespace viewer {

/// The directions from which clinicians photograph teeth.
enum class StandardView { Front, Right, Left, UpperOcclusal, LowerOcclusal };

inline constexpr std::array standardViews{StandardView::Front, StandardView::Right,
                                          StandardView::Left, StandardView::UpperOcclusal,
                                          StandardView::LowerOcclusal};

/// Turns the view there, the mouth closed, with an animation. The right view shows the patient's
/// right. An occlusal view leaves out the other arch, which would cover it; every other view shows
/// both arches again.
void showStandardView(kelo::DXOpenGL &view, StandardView standardView);

/// "Front", "Upper Occlusal" and so on, in the user's language.
QString titleOfStandardView(StandardView standardView);

} // namespace viewer
