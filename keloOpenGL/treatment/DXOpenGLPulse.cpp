// The pulse that answers every click of the stringing, and how its frames are drawn.

#include "platform/gl.h"

#include "keloOpenGL/treatment/DXOpenGL.h"
#include "keloOpenGL/treatment/DXOpenGLState.h"

#include "document/DXDocumentModel.h"
#include "document/ModelLookup.h"
#include "keloOpenGL/picking/CurrentProjection.h"
#include "keloOpenGL/picking/PickBox.h"
#include "keloOpenGL/view/KeptPicture.h"
#include "models/DXGLightweightModel.h"
#include "models/HVOGLMaterial.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace kelo {
namespace {

constexpr int pulseSteps = 20;
constexpr double pulseShininessStep = 3.0;

/// Gives a model another material for as long as it lives.
class BorrowedMaterial
{
public:
    BorrowedMaterial(std::shared_ptr<DXGLightweightModel> model,
                     std::shared_ptr<HVOGLMaterial> material)
        : model_(std::move(model)), kept_(model_->material())
    {
        model_->setMaterial(std::move(material));
    }
    ~BorrowedMaterial() { model_->setMaterial(kept_); }
    BorrowedMaterial(const BorrowedMaterial &) = delete;
    BorrowedMaterial &operator=(const BorrowedMaterial &) = delete;

private:
    std::shared_ptr<DXGLightweightModel> model_;
    std::shared_ptr<HVOGLMaterial> kept_;
};

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

/// The frames of a pulse differ in one model. So the first one is drawn whole and kept, and each
/// later one is the kept picture with only those pixels drawn anew that the model may cover. Where
/// anything asked for a redraw meanwhile (an event that was waiting, another change), the next
/// frame is drawn whole again.
struct DXOpenGL::Pulse
{
    std::shared_ptr<DXGLightweightModel> model;
    KeptPicture picture;
    std::optional<PixelRect> part; ///< what the model may cover; there while the picture is kept
    std::optional<PickBox> partBox;
    std::uint64_t redrawRequests = 0; ///< how many there had been when the kept frame began
    bool drawsPart = false;           ///< the frame that is being drawn
};

void DXOpenGL::signalElasticsPlacement(const std::string &name)
{
    const auto document = documentModel();
    if (!document) return;
    auto model = modelUnderKey(document->bracketModels(), name);
    if (!model) model = modelUnderKey(document->buttonModels(), name);
    if (!model || !model->material()) return;
    const auto working = HVOGLMaterial::materialWithColor_shininess(model->material()->color(),
                                                                    model->material()->shininess());
    const BorrowedMaterial borrowed(model, working);
    const auto pulse = std::make_shared<Pulse>();
    pulse->model = model;
    const auto pulseBefore = std::exchange(state_->pulse, pulse);
    for (int step = 0; step < pulseSteps; ++step) {
        const double change = step < pulseSteps / 2 ? -pulseShininessStep : pulseShininessStep;
        working->setShininess(working->shininess() + change);
        if (!survives([this] { display(); })) return; // drawing lets in events that are waiting
    }
    state_->pulse = pulseBefore;
}

void DXOpenGL::willDrawPicture()
{
    if (!state_->pulse) return;
    state_->pulse->drawsPart = state_->pulse->part && !state_->_printMode &&
                               state_->pulse->redrawRequests == redrawRequestCount() &&
                               state_->pulse->picture.restore();
    if (!state_->pulse->drawsPart) {
        state_->pulse->redrawRequests = redrawRequestCount();
        return;
    }
    const PixelRect &part = *state_->pulse->part;
    glEnable(GL_SCISSOR_TEST);
    glScissor(part.column, part.row, part.width, part.height);
    state_->onlyPart = &*state_->pulse->partBox;
}

void DXOpenGL::didDrawPicture()
{
    if (!state_->pulse) return;
    if (state_->pulse->drawsPart) {
        state_->onlyPart = nullptr;
        glDisable(GL_SCISSOR_TEST);
        return;
    }
    state_->pulse->part.reset();
    if (state_->_printMode) return;
    updateModelView();
    const WindowProjection projection = currentWindowProjection();
    const auto part = pixelsOfModel(*state_->pulse->model, *this, projection);
    if (!part || !state_->pulse->picture.keep(deviceSize())) return;
    state_->pulse->part = part;
    state_->pulse->partBox.emplace(*part, projection);
}

} // namespace kelo
