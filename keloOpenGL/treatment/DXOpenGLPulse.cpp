// The pulse that answers every click of the stringing, and how its frames are drawn.

#include "platform/gl.h"

#include "keloOpenGL/treatment/DXOpenGL.h"
#include "keloOpenGL/treatment/DXOpenGLState.h"

#include "document/DXDocumentModel.h"
#include "document/ModelLookup.h"
#include "keloOpenGL/view/CurrentProjection.h"
#include "models/DXGLightweightModel.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace kelo {
namespace {

/// The bracket or button of this name, if it has a highlight to pulse.
std::shared_ptr<DXGLightweightModel> pulsingModel(const DXDocumentModel *document,
                                                  const std::string &name)
{
    if (!document) return nullptr;
    auto model = modelUnderKey(document->bracketModels(), name);
    if (!model) model = modelUnderKey(document->buttonModels(), name);
    return model && model->material() ? model : nullptr;
}

/// Outside these pixels the model cannot be seen; nothing where this is not known.
std::optional<PixelRect> pixelsOfModel(const DXGLightweightModel &model, const DXOpenGL &view,
                                       const WindowProjection &projection)
{
    const auto document = view.documentModel();
    if (!document) return std::nullopt;
    const std::pair<DXDocumentModel::ModelList, Matrix> jaws[] = {
        {document->loadedUpperModels(), view.upperMouthTransform()},
        {document->loadedLowerModels(), view.lowerMouthTransform()}};
    PixelRect pixels;
    for (const auto &[models, transform] : jaws) {
        const bool isHere = std::any_of(models.begin(), models.end(),
                                        [&](const auto &other) { return other.get() == &model; });
        if (!isHere) continue;
        const auto here = projection.pixelsOf(model.extents(), 0.0, transform);
        if (!here) return std::nullopt;
        pixels = united(pixels, *here);
    }
    return pixels;
}

} // namespace

void DXOpenGL::signalElasticsPlacement(const std::string &name)
{
    const auto model = pulsingModel(documentModel().get(), name);
    if (!model) return;
    const auto pulse = std::make_shared<Pulse>(model, state_->pulse);
    state_->pulse = pulse;
    drawPulse(*pulse);
}

void DXOpenGL::drawPulse(Pulse &pulse)
{
    while (pulse.highlight.step()) {
        if (!survives([this] { display(); })) return; // drawing lets in events that are waiting
    }
    state_->pulse = pulse.before;
}

void DXOpenGL::willDrawPicture()
{
    if (!state_->pulse) return;
    state_->pulse->frames.begin(redrawRequestCount(), !state_->printer.isPrinting());
}

void DXOpenGL::didDrawPicture()
{
    if (state_->pulse) state_->pulse->frames.end(deviceSize(), [this] { return pulsingPart(); });
}

std::optional<FramePart> DXOpenGL::pulsingPart()
{
    if (state_->printer.isPrinting()) return std::nullopt;
    updateModelView();
    const WindowProjection projection = currentWindowProjection();
    const auto pixels = pixelsOfModel(state_->pulse->highlight.model(), *this, projection);
    return pixels ? std::optional(FramePart{*pixels, projection}) : std::nullopt;
}

} // namespace kelo
