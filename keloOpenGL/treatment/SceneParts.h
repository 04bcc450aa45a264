#pragma once

#include "base/Export.h"
#include "keloOpenGL/treatment/ScenePart.h"

#include <bitset>
#include <cstdint>
#include <string>
#include <vector>

namespace kelo {

class DXDocumentModel;
class DXGLightweightModel;

/// Which parts of the scene are left out of the picture; at first none. Knows neither GL nor a
/// view.
class KELO_EXPORT SceneParts
{
public:
    bool shows(ScenePart part) const;
    void setShows(ScenePart part, bool shows);

    /// Call before the scene is drawn: takes down which models of the document the next drawing
    /// leaves out. With `showsEverything`, as for prints, none and no elastic. A null document has
    /// no models.
    void beginDrawing(const DXDocumentModel *document, bool showsEverything);

    /// @name Of the drawing that began last
    /// @{
    bool leavesOut(const DXGLightweightModel &model) const;
    /// Whether a band over these keys is drawn: not if it reaches an arch that is left out.
    bool showsElasticOver(const std::vector<std::string> &keys) const;
    /// @}

private:
    bool draws(ScenePart part) const { return showsEverything_ || shows(part); }
    bool drawsArchOf(const std::string &nameKey) const;
    std::vector<std::uint64_t> modelsLeftOutOf(const DXDocumentModel &document) const;

    std::bitset<scenePartCount> hidden_;
    bool showsEverything_ = false;
    std::vector<std::uint64_t> modelsLeftOut_; ///< unique identifiers, ascending
};

} // namespace kelo
