// Parts of the scene that are left out of the picture.

#include "keloOpenGL/treatment/DXOpenGL.h"
#include "keloOpenGL/treatment/DXOpenGLState.h"

#include "document/DXDocumentModel.h"
#include "keloModel/NameKey.h"
#include "keloModel/TreatmentNote.h"
#include "models/DXGLightweightModel.h"

#include <algorithm>

namespace kelo {
namespace {

ScenePart archOfNameKey(const std::string &key)
{
    return isUpperArchKey(key) ? ScenePart::UpperArch : ScenePart::LowerArch;
}

} // namespace

bool DXOpenGL::showsScenePart(ScenePart part) const
{
    return !state_->hiddenParts[static_cast<std::size_t>(part)];
}

void DXOpenGL::setShowsScenePart(ScenePart part, bool shows)
{
    state_->hiddenParts.set(static_cast<std::size_t>(part), !shows);
    setNeedsDisplay(true);
}

bool DXOpenGL::drawsScenePart(ScenePart part) const
{
    return state_->_printMode || showsScenePart(part);
}

void DXOpenGL::collectModelsLeftOut()
{
    state_->modelsLeftOut.clear();
    const auto document = documentModel();
    if (!document || state_->hiddenParts.none() || state_->_printMode) return;
    const auto leaveOut = [this](const DXDocumentModel::Models &models, bool leavesOutAll) {
        for (const auto &[key, model] : models) {
            if (leavesOutAll || !drawsScenePart(archOfNameKey(key)))
                state_->modelsLeftOut.push_back(model->uniqueID());
        }
    };
    leaveOut(document->toothModels(), false);
    leaveOut(document->bracketModels(), !drawsScenePart(ScenePart::Brackets));
    leaveOut(document->buttonModels(), !drawsScenePart(ScenePart::Buttons));
    const std::pair<std::shared_ptr<DXGLightweightModel>, ScenePart> gums[] = {
        {document->upperGumModel(), ScenePart::UpperArch},
        {document->lowerGumModel(), ScenePart::LowerArch}};
    for (const auto &[gum, arch] : gums) {
        if (gum && !(drawsScenePart(ScenePart::Gums) && drawsScenePart(arch)))
            state_->modelsLeftOut.push_back(gum->uniqueID());
    }
    std::sort(state_->modelsLeftOut.begin(), state_->modelsLeftOut.end());
}

bool DXOpenGL::shouldDraw(const DXGLightweightModel &model) const
{
    return !std::binary_search(state_->modelsLeftOut.begin(), state_->modelsLeftOut.end(),
                               model.uniqueID());
}

bool DXOpenGL::drawsElasticOver(const std::vector<std::string> &keys) const
{
    return drawsScenePart(ScenePart::Elastics) &&
           std::all_of(keys.begin(), keys.end(), [this](const std::string &key) {
               return drawsScenePart(archOfNameKey(key));
           });
}

} // namespace kelo
