#pragma once

#include "base/Export.h"
#include "geometry/Extents.h"
#include "models/BakedLight.h"
#include "models/OBJReader.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace kelo {

class HVOGLMaterial;
class OpenGLContext;

/// By how much the box of a model with an extended hit box is larger than the mesh on every side.
inline constexpr double extendedHitboxMargin = 1.0;

/// The name of the notification that a mesh posts, with itself as object, when something about it
/// changed that can be seen.
inline constexpr char modelChangedNotification[] = "modelChangedNotification";

/// One renderable triangle mesh: a tooth, a bracket, a lingual button or a gum. It owns a copy of
/// its vertices and indexes, uploads them once to buffer objects of the OpenGL context that it is
/// drawn in, and draws itself lit, or in the flat colour that identifies it for picking.
///
/// A mesh is to be drawn only when both hidden flags are false; the drawing operations themselves
/// do not look at the flags, the view does.
///
/// Buffer names live with the context that made them. Drawn in another context, or again after its
/// context went, the mesh uploads again from the arrays that it keeps. Without a current
/// context nothing is uploaded or drawn.
///
/// An index outside the vertices is never handed to OpenGL: a mesh that has one draws nothing, and
/// the first time that it is asked to draw it says on standard error
///     Error: Model N has the index I but only V vertices, and is not drawn
///
/// Main thread only.
class KELO_EXPORT DXGLightweightModel
{
public:
    /// Copies the arrays (the caller keeps its own), computes the extents, takes the next unique
    /// identifier and a new default material. Indexes are three per triangle. A pointer may be null
    /// when its count is 0; otherwise AssertionFailure is thrown.
    DXGLightweightModel(const OBJVertex *vertices, std::uint64_t vertexCount,
                        const std::uint32_t *indexes, std::uint64_t indexCount);
    /// Deletes the buffer objects: at once where their context is current, else when it is next.
    ~DXGLightweightModel();
    DXGLightweightModel(const DXGLightweightModel &) = delete;
    DXGLightweightModel &operator=(const DXGLightweightModel &) = delete;

    /// Identity for colour picking: 1 for the first mesh of a process, then one more each time;
    /// never 0, never used again.
    std::uint64_t uniqueID() const { return uniqueID_; }
    /// The identifier that the next mesh will take.
    static std::uint64_t nextUniqueID();
    /// Skips identifiers, for a host that reserves a range of them. Going back would give
    /// an identifier twice: AssertionFailure.
    static void setNextUniqueID(std::uint64_t uniqueID);

    std::span<const OBJVertex> vertices() const { return vertices_; }
    std::span<const std::uint32_t> indexes() const { return indexes_; }
    std::uint64_t vertexCount() const { return vertices_.size(); }
    std::uint64_t indexCount() const { return indexes_.size(); }
    /// The box of the vertex positions; empty extents for a mesh without vertices.
    const Extents &extents() const { return extents_; }

    /// How the mesh is lit; several meshes may share one material.
    const std::shared_ptr<HVOGLMaterial> &material() const { return material_; }
    /// Posts modelChangedNotification.
    void setMaterial(const std::shared_ptr<HVOGLMaterial> &material);

    /// Light and tone that were computed for the vertices; nothing for a mesh that came without.
    const std::optional<BakedLight> &bakedLight() const { return bakedLight_; }
    /// Takes one element for each vertex, AssertionFailure otherwise; `nullopt` removes them. Posts
    /// modelChangedNotification.
    void setBakedLight(std::optional<BakedLight> light);

    /// Hidden by its own visibility: a tooth switched off, a bracket or button not placed.
    bool hiddenPrimary() const { return hiddenPrimary_; }
    /// Hidden because the tooth that carries it is hidden (brackets and buttons only).
    bool hiddenSecondary() const { return hiddenSecondary_; }
    /// These two post modelChangedNotification, also when the value stays the same.
    void setHiddenPrimary(bool hidden);
    void setHiddenSecondary(bool hidden);

    /// Picked by a box 1.0 larger on every side than the extents, instead of by the mesh.
    bool extendedHitbox() const { return extendedHitbox_; }
    /// Posts nothing.
    void setExtendedHitbox(bool extended) { extendedHitbox_ = extended; }

    /// Posts modelChangedNotification through the default notification centre.
    void postModelChangedNotification() const;

    /// @name Drawing, in the current OpenGL context
    /// @{
    /// The names of the vertex and index buffers in the current context; 0 until uploaded there.
    std::uint32_t vboID() const;
    std::uint32_t vboIndexID() const;
    /// Uploads the buffers if the current context has none of this mesh.
    void prepareVBO();
    /// Draws the mesh lit with its material. Leaves no buffer bound and no array enabled.
    void draw();
    /// The same for a shader that reads the baked light: with each vertex its texture coordinate
    /// of unit 1 is (closed, open, tone), the first two from 0 to 1, the tone from -1 to 1. For a
    /// mesh without baked light it is (1, 1, 0) everywhere, the light of a vertex in the open.
    /// Afterwards the current coordinate of the unit is that one, and unit 0 is the client's active
    /// one. Baked light is uploaded the first time that it is drawn with.
    void drawWithBakedLight();
    /// Draws the mesh (or its box, see extendedHitbox) in the colour of its identifier: red is bits
    /// 16 to 22, so never above 127, green bits 8 to 15, blue bits 0 to 7. All other state of the
    /// drawing is the caller's.
    void drawForColorSelection();
    /// @}

private:
    /// The buffers in one context.
    struct Upload
    {
        std::weak_ptr<OpenGLContext> context;
        std::uint32_t vboID = 0;
        std::uint32_t vboIndexID = 0;
        std::uint32_t bakedLightID = 0; ///< 0 until it is drawn with
    };
    Upload &upload(const std::shared_ptr<OpenGLContext> &context);
    bool mayDraw();
    Upload &bindBuffers(const std::shared_ptr<OpenGLContext> &context);
    void bindBakedLight(Upload &upload);
    void deleteBakedLightBuffers();
    void drawElements() const;
    void drawExtendedHitbox() const;

    std::vector<OBJVertex> vertices_;
    std::vector<std::uint32_t> indexes_;
    std::uint32_t largestIndex_ = 0;
    bool saidOutOfRange_ = false;
    std::optional<BakedLight> bakedLight_;
    std::vector<Upload> uploads_;
    std::shared_ptr<HVOGLMaterial> material_;
    Extents extents_;
    std::uint64_t uniqueID_;
    bool hiddenPrimary_ = false;
    bool hiddenSecondary_ = false;
    bool extendedHitbox_ = false;
};

} // namespace kelo
