#include "keloOpenGL/bands/BandRenderer.h"

#include "platform/gl.h"

#include "models/HVOGLMaterial.h"

#include <cstddef>
#include <cstdio>

namespace kelo {
namespace {

/// A soft highlight, as rubber has it.
constexpr double bandShininess = 4.0;

/// No part of a band is further from its nodes, or the straight lines between them: the largest
/// hook's radius, and the band's thickness outside it.
constexpr double rubberBandReach = 1.5;

MutableExtents extentsOf(const std::vector<RubberBandNode> &nodes)
{
    MutableExtents extents;
    for (const RubberBandNode &node : nodes)
        extents.absorbPoint(node.position);
    return extents;
}

void tellMissingHook(const std::string &key)
{
    std::fprintf(stderr,
                 "Hook position for bracket \"%s\" not defined; cannot draw elastics (check the "
                 "bracket names passed -loadBracketModelFiles:; should be @\"2\" - @\"15\" and "
                 "@\"18\" - @\"31\")\n",
                 key.c_str());
}

void setLook(const DrawnBand &band)
{
    if (band.pickID)
        glColor3ub(128, 0, static_cast<GLubyte>(*band.pickID % 256));
    else
        HVOGLMaterial(band.color, bandShininess).primeOpenGL();
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

} // namespace

bool BandRenderer::fillBuffers(const StreamBuffer &indices) const
{
    auto *vertex = vertices_.mapNew<RubberBandVertex>(nodes_.size() * rubberBandVerticesPerNode);
    auto *index = indices.mapNew<std::uint32_t>(nodes_.size() * rubberBandIndicesPerNode);
    if (vertex) writeRubberBandVertices(nodes_, vertex);
    if (index) writeRubberBandIndices(nodes_.size(), index);
    const bool hasVertices = vertex && vertices_.unmap();
    const bool hasIndices = index && indices.unmap();
    return hasVertices && hasIndices;
}

void BandRenderer::draw(const DrawnBand &band, const BandJaws &jaws, const MayShow &mayShow,
                        StreamBuffer &indices)
{
    const std::string *missing =
        calculateRubberBandNodes(band.keys, band.closesLoop, jaws.upperTransform,
                                 jaws.lowerTransform, jaws.mouthOpenAngleInRadians, nodes_);
    if (missing) {
        tellMissingHook(*missing);
        return;
    }
    if (nodes_.empty() || !mayShow(extentsOf(nodes_), rubberBandReach)) return;
    setLook(band);
    vertices_.bind();
    indices.bind();
    if (fillBuffers(indices))
        drawBoundBuffers(rubberBandIndexCount(nodes_.size(), band.closesLoop));
    vertices_.unbind();
    indices.unbind();
}

} // namespace kelo
