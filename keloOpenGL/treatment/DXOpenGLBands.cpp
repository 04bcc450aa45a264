// Elastics as bands: drawing them, and listing those of a side.

#include "keloOpenGL/treatment/DXOpenGL.h"
#include "keloOpenGL/treatment/DXOpenGLState.h"

#include "document/DXDocumentModel.h"
#include "document/ElasticModel.h"
#include "keloOpenGL/bands/ElasticBands.h"
#include "keloOpenGL/editing/ElasticChanges.h"

namespace kelo {
namespace {

Matrix identity()
{
    Matrix matrix;
    Matrix_loadIdentity(&matrix);
    return matrix;
}

ElasticDescription descriptionOf(const std::shared_ptr<ElasticModel> &elastic)
{
    const ElasticsSizeType *size = elastic->elasticsSizeType().get();
    return {colorOfSize(size), size ? size->typeLabel : std::string(), elastic->bracketSequence(),
            elastic};
}

} // namespace

void DXOpenGL::drawRubberBand_color_closeLoop_colorPickMode_colorPickID(
    const std::vector<std::string> &keys, const std::optional<Color> &color, bool closeLoop,
    bool colorPickMode, std::uint32_t colorPickID)
{
    drawBand({keys, closeLoop, color, colorPickMode ? std::optional(colorPickID) : std::nullopt});
}

void DXOpenGL::drawBand(const DrawnBand &band)
{
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
    drawPlacedElastics(*document);
    const auto size = elasticsSizeType(*document, state_->elastics.sizeTypeID());
    if (const auto band = strungBand(state_->elastics.sequence(), size.get())) drawBand(*band);
}

void DXOpenGL::drawPlacedElastics(const DXDocumentModel &document)
{
    const auto &elastics = document.elasticModels();
    for (std::uint32_t i = 0; i < elastics.size(); ++i) {
        if (drawsElasticOver(elastics[i]->bracketSequence()))
            drawBand(placedBand(*elastics[i], i, isInColorPickMode()));
    }
}

ElasticDescriptions
DXOpenGL::elasticsForToothNames(const std::vector<std::string> &toothNames) const
{
    ElasticDescriptions descriptions;
    if (!documentModel()) return descriptions;
    for (const auto &elastic : elasticsOver(*documentModel(), toothNames))
        descriptions.push_back(descriptionOf(elastic));
    return descriptions;
}

} // namespace kelo
