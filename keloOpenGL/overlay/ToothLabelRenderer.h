#pragma once

#include "base/Export.h"
#include "base/Rect.h"
#include "geometry/Extents.h"
#include "geometry/Matrix.h"
#include "keloOpenGL/overlay/ToothLabels.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace kelo {

class StringTexture;

/// A tooth in the picture that has a label.
struct LabelledTooth
{
    std::string text;
    Extents tooth; ///< its box, as toothLabelSpot takes it
    bool isUpper = false;
};

/// The scene that labels are placed in, as it is drawn.
struct ToothLabelScene
{
    std::vector<LabelledTooth> teeth;
    Extents lowerArch, upperArch;  ///< the boxes of all teeth of a jaw
    Matrix lowerToEye, upperToEye; ///< each jaw's transform included
    Matrix projection;
    double aspect = 1.0;     ///< see OverlayLayout
    double viewHeight = 1.0; ///< in points
};

/// One label where it is drawn.
struct PlacedToothLabel
{
    std::string text;
    Rect rect; ///< in overlay coordinates, its shade included
};

/// The texts beside the teeth, with their pictures: 13 points high on a dark shade. The pictures
/// belong to the context that is current when they are first asked for.
class KELO_EXPORT ToothLabelRenderer
{
public:
    ToothLabelRenderer();
    ~ToothLabelRenderer();
    ToothLabelRenderer(const ToothLabelRenderer &) = delete;
    ToothLabelRenderer &operator=(const ToothLabelRenderer &) = delete;

    const ToothLabels &labels() const { return labels_; }
    void setLabels(ToothLabels labels);

    /// The labels of the scene's teeth that can be read; see legibleToothLabels.
    std::vector<PlacedToothLabel> placedIn(const ToothLabelScene &scene);
    /// Within an OverlayState; the current colour is opaque white before and after.
    void draw(const std::vector<PlacedToothLabel> &placed);

    /// After the context was lost. Pictures are made again when they are needed.
    void dropPictures();

private:
    StringTexture &pictureOf(const std::string &text);
    Size shownSizeOf(const std::string &text, double unitsPerPoint);

    ToothLabels labels_;
    std::map<std::string, std::unique_ptr<StringTexture>> pictures_; ///< by text
};

} // namespace kelo
