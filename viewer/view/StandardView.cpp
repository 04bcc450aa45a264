#include "viewer/view/StandardView.h"

#include "keloOpenGL/keloOpenGL.h"

#include <QCoreApplication>

namespace viewer {
namespace {

/// 1/sqrt(3): the axes of the side views are diagonals of a cube.
constexpr double cubeDiagonal = 0.57735026;

struct Viewpoint
{
    double degrees, x, y, z;
    bool showsUpperArch, showsLowerArch;
    const char *title;
};

const Viewpoint &viewpointOf(StandardView standardView)
{
    static constexpr Viewpoint front{
        90.0, -1.0, 0.0, 0.0, true, true, QT_TRANSLATE_NOOP("StandardView", "Front")};
    static constexpr Viewpoint right{120.0,
                                     -cubeDiagonal,
                                     cubeDiagonal,
                                     cubeDiagonal,
                                     true,
                                     true,
                                     QT_TRANSLATE_NOOP("StandardView", "Right")};
    static constexpr Viewpoint left{120.0,
                                    -cubeDiagonal,
                                    -cubeDiagonal,
                                    -cubeDiagonal,
                                    true,
                                    true,
                                    QT_TRANSLATE_NOOP("StandardView", "Left")};
    static constexpr Viewpoint upper{
        180.0, -1.0, 0.0, 0.0, true, false, QT_TRANSLATE_NOOP("StandardView", "Upper Occlusal")};
    static constexpr Viewpoint lower{
        0.0, -1.0, 0.0, 0.0, false, true, QT_TRANSLATE_NOOP("StandardView", "Lower Occlusal")};
    switch (standardView) {
    case StandardView::Right:
        return right;
    case StandardView::Left:
        return left;
    case StandardView::UpperOcclusal:
        return upper;
    case StandardView::LowerOcclusal:
        return lower;
    case StandardView::Front:
        break;
    }
    return front;
}

} // namespace

void showStandardView(kelo::DXOpenGL &view, StandardView standardView)
{
    const Viewpoint &place = viewpointOf(standardView);
    view.setShowsScenePart(kelo::ScenePart::UpperArch, place.showsUpperArch);
    view.setShowsScenePart(kelo::ScenePart::LowerArch, place.showsLowerArch);
    view.setTargetWorldRotationAngle_axis(place.degrees, place.x, place.y, place.z);
    view.setTargetMouthOpenAngle(0.0f);
}

QString titleOfStandardView(StandardView standardView)
{
    return QCoreApplication::translate("StandardView", viewpointOf(standardView).title);
}

} // namespace viewer
