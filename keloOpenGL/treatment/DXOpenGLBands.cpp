// Elastics as bands: drawing them, and listing those of a side.

#include "platform/gl.h"

#include "keloOpenGL/treatment/DXOpenGL.h"

#include "document/DXDocumentModel.h"
#include "document/ElasticModel.h"
#include "keloOpenGL/bands/RubberBand.h"
#include "models/HVOGLMaterial.h"

#include <algorithm>
#include <cstdio>

namespace kelo {
namespace {

/// A soft highlight, as rubber has it.
constexpr double bandShininess = 4.0;

/// No part of a band is further from its nodes, or the straight lines between them: the largest
/// hook's radius, and the band's thickness outside it.
constexpr double rubberBandReach = 1.5;

/// Throws away what a bound buffer holds and maps it for writing; null where the driver gives no
/// memory.
template<class Element>
Element *mapNew(GLenum target, std::size_t count)
{
    glBufferData(target, static_cast<GLsizeiptr>(count * sizeof(Element)), nullptr, GL_STREAM_DRAW);
    return static_cast<Element *>(glMapBuffer(target, GL_WRITE_ONLY));
}

bool fillBoundBuffers(std::span<const RubberBandNode> nodes)
{
    auto *vertices =
        mapNew<RubberBandVertex>(GL_ARRAY_BUFFER, nodes.size() * rubberBandVerticesPerNode);
    auto *indices =
        mapNew<std::uint32_t>(GL_ELEMENT_ARRAY_BUFFER, nodes.size() * rubberBandIndicesPerNode);
    if (vertices) writeRubberBandVertices(nodes, vertices);
    if (indices) writeRubberBandIndices(nodes.size(), indices);
    // The driver may have lost what was written, as when the display changed.
    const bool hasVertices = vertices && glUnmapBuffer(GL_ARRAY_BUFFER) == GL_TRUE;
    const bool hasIndices = indices && glUnmapBuffer(GL_ELEMENT_ARRAY_BUFFER) == GL_TRUE;
    return hasVertices && hasIndices;
}

void drawBoundBuffers(std::size_t indexCount)
{
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_NORMAL_ARRAY);
    glVertexPointer(3, GL_FLOAT, sizeof(RubberBandVertex), bufferOffset(0));
    glNormalPointer(GL_FLOAT, sizeof(RubberBandVertex),
                    bufferOffset(offsetof(RubberBandVertex, normal)));
    glDrawElements(GL_QUADS, static_cast<GLsizei>(indexCount), GL_UNSIGNED_INT, bufferOffset(0));
    glDisableClientState(GL_VERTEX_ARRAY);
    glDisableClientState(GL_NORMAL_ARRAY);
}

/// Holds the band with a margin of rubberBandReach.
MutableExtents extentsOf(const std::vector<RubberBandNode> &nodes)
{
    MutableExtents extents;
    for (const RubberBandNode &node : nodes)
        extents.absorbPoint(node.position);
    return extents;
}

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
    const std::string *missing =
        calculateRubberBandNodes(keys, closeLoop, upperMouthTransform(), lowerMouthTransform(),
                                 effectiveMouthOpenAngle(), bandNodes_);
    if (missing) {
        std::fprintf(stderr,
                     "Hook position for bracket \"%s\" not defined; cannot draw elastics (check "
                     "the bracket names passed -loadBracketModelFiles:; should be @\"2\" - "
                     "@\"15\" and @\"18\" - @\"31\")\n",
                     missing->c_str());
        return;
    }
    if (bandNodes_.empty()) return;
    if (!mayShow(extentsOf(bandNodes_), rubberBandReach, identity())) return;

    if (colorPickMode)
        glColor3ub(128, 0, static_cast<GLubyte>(colorPickID % 256));
    else
        HVOGLMaterial(color, bandShininess).primeOpenGL();
    if (elasticsVBOID == 0) {
        glGenBuffers(1, &elasticsVBOID);
        // The tool buttons' buffer too; each user fills it before drawing from it.
        if (elasticsVBOIndexID == 0) glGenBuffers(1, &elasticsVBOIndexID);
    }
    glBindBuffer(GL_ARRAY_BUFFER, elasticsVBOID);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, elasticsVBOIndexID);
    if (fillBoundBuffers(bandNodes_))
        drawBoundBuffers(rubberBandIndexCount(bandNodes_.size(), closeLoop));
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
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
    if (!bracketSequence_ || bracketSequence_->size() < 2) return;
    const auto &sizes = document->availableElasticsSizeTypes();
    const auto size = sizes.find(lastElasticsSizeTypeID_.value_or(0));
    drawRubberBand_color_closeLoop_colorPickMode_colorPickID(
        *bracketSequence_, size == sizes.end() ? std::nullopt : colorOfSize(size->second), false,
        false, 0);
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
