// Elastics as bands: drawing them, and listing those of a side.

#include "keloOpenGL/treatment/DXOpenGL.h"
#include "keloOpenGL/treatment/DXOpenGLState.h"

#include "document/DXDocumentModel.h"
#include "document/ElasticModel.h"
#include "keloOpenGL/bands/BandRenderer.h"

#include <algorithm>
#include <optional>

namespace kelo {
namespace {

Matrix identity()
{
    Matrix matrix;
    Matrix_loadIdentity(&matrix);
    return matrix;
}

std::optional<Color> colorOfSize(const std::shared_ptr<ElasticsSizeType> &size)
{
    return size ? Color::fromComponents(size->elasticsColor) : std::nullopt;
}

} // namespace

void DXOpenGL::drawRubberBand_color_closeLoop_colorPickMode_colorPickID(
    const std::vector<std::string> &keys, const std::optional<Color> &color, bool closeLoop,
    bool colorPickMode, std::uint32_t colorPickID)
{
    const DrawnBand band{keys, closeLoop, color,
                         colorPickMode ? std::optional(colorPickID) : std::nullopt};
    const BandJaws jaws{upperMouthTransform(), lowerMouthTransform(), effectiveMouthOpenAngle()};
    const auto mayShowBox = [this](const Extents &box, double margin) {
        return mayShow(box, margin, identity());
    };
    state_->bandRenderer.draw(band, jaws, mayShowBox, state_->streamedIndices);
}

void DXOpenGL::drawElastics()
{
    const auto document = documentModel();
    if (!document) return;
    const auto &elastics = document->elasticModels();
    for (std::size_t i = 0; i < elastics.size(); ++i) {
        if (!drawsElasticOver(elastics[i]->bracketSequence())) continue;
        drawRubberBand_color_closeLoop_colorPickMode_colorPickID(
            elastics[i]->bracketSequence(), colorOfSize(elastics[i]->elasticsSizeType()), true,
            isInColorPickMode(), static_cast<std::uint32_t>(i));
    }
    if (!state_->bracketSequence || state_->bracketSequence->size() < 2) return;
    const auto &sizes = document->availableElasticsSizeTypes();
    const auto size = sizes.find(state_->lastElasticsSizeTypeID.value_or(0));
    drawRubberBand_color_closeLoop_colorPickMode_colorPickID(
        *state_->bracketSequence, size == sizes.end() ? std::nullopt : colorOfSize(size->second),
        false, false, 0);
}

ElasticDescriptions
DXOpenGL::elasticsForToothNames(const std::vector<std::string> &toothNames) const
{
    ElasticDescriptions descriptions;
    if (!documentModel()) return descriptions;
    const auto isGiven = [&toothNames](const std::string &key) {
        return std::find(toothNames.begin(), toothNames.end(), key) != toothNames.end();
    };
    for (const auto &elastic : documentModel()->elasticModels()) {
        const auto &keys = elastic->bracketSequence();
        if (std::none_of(keys.begin(), keys.end(), isGiven)) continue;
        const auto &size = elastic->elasticsSizeType();
        descriptions.push_back({colorOfSize(size), size ? size->typeLabel : std::string(), keys});
    }
    return descriptions;
}

} // namespace kelo
