#include "keloOpenGL/view/SceneExtents.h"

#include "document/DXDocumentModel.h"
#include "models/DXGLightweightModel.h"

#include <exception>

namespace kelo {
namespace {

constexpr double unknownRadius = 100.0;

} // namespace

std::shared_ptr<const Extents> extentsOfWholeScene(const DXDocumentModel *document)
{
    if (!document) return nullptr;
    const auto united = std::make_shared<MutableExtents>();
    try {
        // Throws where a gum is missing.
        for (const auto &model : document->models())
            united->absorbExtents(model->extents());
    } catch (const std::exception &) {
        return nullptr;
    }
    return united->active() ? united : nullptr;
}

std::shared_ptr<const Extents> extentsOfUnknownScene()
{
    return Extents::extentsWithCenter_inscribedRadius(Vector3{0.0f, 0.0f, 0.0f}, unknownRadius);
}

} // namespace kelo
