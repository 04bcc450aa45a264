#include "viewer/StandardView.h"

#include "keloOpenGL/keloOpenGL.h"

#include <QCoreApplication>

namespace viewer {
namespace {

/// 1/sqrt(3): the axes of the side views are diagonals of a cube.
constexpr double diagonal = 0.57735026;

struct Place
{
    double degrees, x, y, z;
    bool showsUpperArch, showsLowerArch;
    const char *title;
};

const Place &placeOf(StandardView standardView)
{
    static constexpr Place front{
        90.0, -1.0, 0.0, 0.0, true, true, QT_TRANSLATE_NOOP("StandardView", "Front")};
    static constexpr Place right{120.0,
                                 -diagonal,
                                 diagonal,
                                 diagonal,
                                 true,
                                 true,
                                 QT_TRANSLATE_NOOP("StandardView", "Right")};
    static constexpr Place left{120.0,
                                -diagonal,
                                -diagonal,
                                -diagonal,
                                true,
                                true,
                                QT_TRANSLATE_NOOP("StandardView", "Left")};
    static constexpr Place upper{
        180.0, -1.0, 0.0, 0.0, true, false, QT_TRANSLATE_NOOP("StandardView", "Upper Occlusal")};
    static constexpr Place lower{
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
    const Place &place = placeOf(standardView);
    view.setShowsScenePart(kelo::ScenePart::UpperArch, place.showsUpperArch);
    view.setShowsScenePart(kelo::ScenePart::LowerArch, place.showsLowerArch);
    view.setTargetWorldRotationAngle_axis(place.degrees, place.x, place.y, place.z);
    view.setTargetMouthOpenAngle(0.0f);
}

QString titleOfStandardView(StandardView standardView)
{
    return QCoreApplication::translate("StandardView", placeOf(standardView).title);
}

} // namespace viewer
