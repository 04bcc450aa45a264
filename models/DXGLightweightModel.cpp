#include "models/DXGLightweightModel.h"

#include "base/Assertion.h"
#include "models/HVOGLMaterial.h"
#include "platform/gl.h"
#include "platform/time/NotificationCenter.h"
#include "platform/view/OpenGLContext.h"

#include <algorithm>
#include <cinttypes>
#include <cstddef>
#include <cstdio>
#include <utility>

namespace kelo {
namespace {

constexpr std::size_t normalOffset = offsetof(OBJVertex, normal);

std::uint64_t &counter()
{
    static std::uint64_t next = 1;
    return next;
}

/// What a vertex has whose mesh came without baked light.
void setBakedLightInTheOpen()
{
    glMultiTexCoord3f(GL_TEXTURE1, 1.0f, 1.0f, 0.0f);
}

/// The one of these uploads that is in the context; null if there is none.
template<class Uploads>
auto uploadIn(Uploads &uploads, const std::shared_ptr<OpenGLContext> &context)
{
    // Compared by owner: a dead context has one of its own, even at the address of another.
    const auto found = std::find_if(uploads.begin(), uploads.end(), [&](const auto &upload) {
        return !upload.context.owner_before(context) && !context.owner_before(upload.context);
    });
    return context && found != uploads.end() ? &*found : nullptr;
}

Extents extentsOf(const std::vector<OBJVertex> &vertices)
{
    MutableExtents extents;
    for (const OBJVertex &vertex : vertices)
        extents.absorb(vertex.position[0], vertex.position[1], vertex.position[2]);
    return Extents(extents);
}

} // namespace

DXGLightweightModel::DXGLightweightModel(const OBJVertex *vertices, std::uint64_t vertexCount,
                                         const std::uint32_t *indexes, std::uint64_t indexCount)
{
    assertThat(vertices || vertexCount == 0, "A model's vertices must be given");
    assertThat(indexes || indexCount == 0, "A model's indexes must be given");
    if (vertexCount > 0) vertices_.assign(vertices, vertices + vertexCount);
    if (indexCount > 0) {
        indexes_.assign(indexes, indexes + indexCount);
        largestIndex_ = *std::max_element(indexes_.begin(), indexes_.end());
    }
    extents_ = extentsOf(vertices_);
    material_ = HVOGLMaterial::material();
    uniqueID_ = counter()++;
}

DXGLightweightModel::~DXGLightweightModel()
{
    for (const Upload &upload : uploads_) {
        if (const auto context = upload.context.lock()) {
            context->deleteBuffer(upload.vboID);
            context->deleteBuffer(upload.vboIndexID);
        }
    }
    deleteBakedLightBuffers();
}

std::uint64_t DXGLightweightModel::nextUniqueID()
{
    return counter();
}

void DXGLightweightModel::setNextUniqueID(std::uint64_t uniqueID)
{
    assertThat(uniqueID >= counter(), "A model's unique identifier is never used again");
    counter() = uniqueID;
}

void DXGLightweightModel::setMaterial(const std::shared_ptr<HVOGLMaterial> &material)
{
    material_ = material;
    postModelChangedNotification();
}

void DXGLightweightModel::setBakedLight(std::optional<BakedLight> light)
{
    assertThat(!light || light->size() == vertices_.size(), "Every vertex has its baked light");
    bakedLight_ = std::move(light);
    deleteBakedLightBuffers(); // the next drawing with it uploads the new one
    postModelChangedNotification();
}

void DXGLightweightModel::deleteBakedLightBuffers()
{
    for (Upload &upload : uploads_) {
        const auto context = upload.context.lock();
        if (context && upload.bakedLightID != 0) context->deleteBuffer(upload.bakedLightID);
        upload.bakedLightID = 0;
    }
}

void DXGLightweightModel::setHiddenPrimary(bool hidden)
{
    hiddenPrimary_ = hidden;
    postModelChangedNotification();
}

void DXGLightweightModel::setHiddenSecondary(bool hidden)
{
    hiddenSecondary_ = hidden;
    postModelChangedNotification();
}

void DXGLightweightModel::postModelChangedNotification() const
{
    NotificationCenter::defaultCenter().postNotificationName(modelChangedNotification, this);
}

std::uint32_t DXGLightweightModel::vboID() const
{
    const Upload *upload = uploadIn(uploads_, OpenGLContext::currentContext());
    return upload ? upload->vboID : 0;
}

std::uint32_t DXGLightweightModel::vboIndexID() const
{
    const Upload *upload = uploadIn(uploads_, OpenGLContext::currentContext());
    return upload ? upload->vboIndexID : 0;
}

void DXGLightweightModel::prepareVBO()
{
    const auto current = OpenGLContext::currentContext();
    if (current && !uploadIn(uploads_, current)) upload(current);
}

DXGLightweightModel::Upload &
DXGLightweightModel::upload(const std::shared_ptr<OpenGLContext> &context)
{
    // Names of contexts that are gone went with them.
    std::erase_if(uploads_, [](const Upload &upload) { return upload.context.expired(); });

    Upload upload;
    upload.context = context;
    glGenBuffers(1, &upload.vboID);
    glGenBuffers(1, &upload.vboIndexID);
    glBindBuffer(GL_ARRAY_BUFFER, upload.vboID);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, upload.vboIndexID);
    glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(vertices_.size() * sizeof(OBJVertex)),
                 vertices_.data(), GL_STATIC_DRAW);
    glBufferData(GL_ELEMENT_ARRAY_BUFFER,
                 static_cast<GLsizeiptr>(indexes_.size() * sizeof(std::uint32_t)), indexes_.data(),
                 GL_STATIC_DRAW);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
    return uploads_.emplace_back(std::move(upload));
}

bool DXGLightweightModel::mayDraw()
{
    // ToothModelLoader refuses such a file with its line; this is for arrays that a host made
    // itself, of which nothing is known but the number of the mesh.
    if (indexes_.empty() || largestIndex_ < vertices_.size()) return true;
    if (!saidOutOfRange_) {
        saidOutOfRange_ = true;
        std::fprintf(stderr,
                     "Error: Model %" PRIu64 " has the index %" PRIu32
                     " but only %zu vertices, and is not drawn\n",
                     uniqueID_, largestIndex_, vertices_.size());
    }
    return false;
}

DXGLightweightModel::Upload &
DXGLightweightModel::bindBuffers(const std::shared_ptr<OpenGLContext> &context)
{
    Upload *known = uploadIn(uploads_, context);
    Upload &bound = known ? *known : upload(context);
    glBindBuffer(GL_ARRAY_BUFFER, bound.vboID);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, bound.vboIndexID);
    return bound;
}

void DXGLightweightModel::bindBakedLight(Upload &upload)
{
    if (upload.bakedLightID != 0) {
        glBindBuffer(GL_ARRAY_BUFFER, upload.bakedLightID);
        return;
    }
    // Floats: a texture coordinate array knows no normalised bytes.
    std::vector<float> coordinates;
    coordinates.reserve(3 * bakedLight_->size());
    for (const BakedVertex &vertex : *bakedLight_) {
        coordinates.push_back(static_cast<float>(vertex.closed) / 255.0f);
        coordinates.push_back(static_cast<float>(vertex.open) / 255.0f);
        coordinates.push_back(static_cast<float>(vertex.tone) / 127.0f);
    }
    glGenBuffers(1, &upload.bakedLightID);
    glBindBuffer(GL_ARRAY_BUFFER, upload.bakedLightID);
    glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(coordinates.size() * sizeof(float)),
                 coordinates.data(), GL_STATIC_DRAW);
}

void DXGLightweightModel::drawElements() const
{
    glDrawElements(GL_TRIANGLES, static_cast<GLsizei>(indexes_.size()), GL_UNSIGNED_INT,
                   bufferOffset(0));
}

void DXGLightweightModel::draw()
{
    const auto context = OpenGLContext::currentContext();
    if (!mayDraw() || !context) return;
    bindBuffers(context);
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_NORMAL_ARRAY);
    glVertexPointer(3, GL_FLOAT, sizeof(OBJVertex), bufferOffset(0));
    glNormalPointer(GL_FLOAT, sizeof(OBJVertex), bufferOffset(normalOffset));
    if (material_) material_->primeOpenGL();
    drawElements();
    glDisableClientState(GL_NORMAL_ARRAY);
    glDisableClientState(GL_VERTEX_ARRAY);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
}

void DXGLightweightModel::drawWithBakedLight()
{
    const auto context = OpenGLContext::currentContext();
    if (!mayDraw() || !context) return;
    if (bakedLight_) {
        bindBakedLight(bindBuffers(context));
        glClientActiveTexture(GL_TEXTURE1);
        glEnableClientState(GL_TEXTURE_COORD_ARRAY);
        glTexCoordPointer(3, GL_FLOAT, 0, bufferOffset(0));
        glClientActiveTexture(GL_TEXTURE0);
    } else {
        setBakedLightInTheOpen();
    }
    draw();
    if (!bakedLight_) return;
    glClientActiveTexture(GL_TEXTURE1);
    glDisableClientState(GL_TEXTURE_COORD_ARRAY);
    glClientActiveTexture(GL_TEXTURE0);
    // What is current after an array is undefined.
    setBakedLightInTheOpen();
}

void DXGLightweightModel::drawForColorSelection()
{
    const auto context = OpenGLContext::currentContext();
    if (!context) return;
    const auto identifier = static_cast<std::uint32_t>(uniqueID_);
    glColor3ub(static_cast<GLubyte>(identifier >> 16 & 0x7F),
               static_cast<GLubyte>(identifier >> 8 & 0xFF),
               static_cast<GLubyte>(identifier & 0xFF));
    if (extendedHitbox_) {
        drawExtendedHitbox(); // needs no indexes
        return;
    }
    if (!mayDraw()) return;
    bindBuffers(context);
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(3, GL_FLOAT, sizeof(OBJVertex), bufferOffset(0));
    drawElements();
    glDisableClientState(GL_VERTEX_ARRAY);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
}

void DXGLightweightModel::drawExtendedHitbox() const
{
    constexpr double margin = extendedHitboxMargin;
    const double x[2]{extents_.xMin() - margin, extents_.xMax() + margin};
    const double y[2]{extents_.yMin() - margin, extents_.yMax() + margin};
    const double z[2]{extents_.zMin() - margin, extents_.zMax() + margin};
    // Which bound (0 the lower, 1 the upper) each corner takes on x, y and z; every side is seen
    // counter-clockwise from outside, so that face culling keeps the near ones.
    static constexpr int corners[6][4][3]{
        {{0, 0, 0}, {0, 0, 1}, {0, 1, 1}, {0, 1, 0}}, // x lower
        {{1, 0, 1}, {1, 0, 0}, {1, 1, 0}, {1, 1, 1}}, // x upper
        {{0, 0, 1}, {0, 0, 0}, {1, 0, 0}, {1, 0, 1}}, // y lower
        {{0, 1, 0}, {0, 1, 1}, {1, 1, 1}, {1, 1, 0}}, // y upper
        {{0, 0, 0}, {0, 1, 0}, {1, 1, 0}, {1, 0, 0}}, // z lower
        {{0, 1, 1}, {0, 0, 1}, {1, 0, 1}, {1, 1, 1}}, // z upper
    };
    glBegin(GL_QUADS);
    for (const auto &side : corners) {
        for (const auto &corner : side)
            glVertex3d(x[corner[0]], y[corner[1]], z[corner[2]]);
    }
    glEnd();
}

} // namespace kelo
