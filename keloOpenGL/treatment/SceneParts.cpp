#include "keloOpenGL/treatment/SceneParts.h"

#include "document/DXDocumentModel.h"
#include "keloModel/NameKey.h"
#include "models/DXGLightweightModel.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>

namespace kelo {

bool SceneParts::shows(ScenePart part) const
{
    return !hidden_[static_cast<std::size_t>(part)];
}

void SceneParts::setShows(ScenePart part, bool shows)
{
    hidden_.set(static_cast<std::size_t>(part), !shows);
}

bool SceneParts::drawsArchOf(const std::string &nameKey) const
{
    return draws(isUpperArchKey(nameKey) ? ScenePart::UpperArch : ScenePart::LowerArch);
}

void SceneParts::beginDrawing(const DXDocumentModel *document, bool showsEverything)
{
    showsEverything_ = showsEverything;
    modelsLeftOut_.clear();
    // Most views show all parts, and need not walk their models for every frame.
    if (document && hidden_.any() && !showsEverything) modelsLeftOut_ = modelsLeftOutOf(*document);
}

std::vector<std::uint64_t> SceneParts::modelsLeftOutOf(const DXDocumentModel &document) const
{
    std::vector<std::uint64_t> identifiers;
    const auto leaveOut = [&](const DXDocumentModel::Models &models, bool leavesOutAll) {
        for (const auto &[key, model] : models) {
            if (leavesOutAll || !drawsArchOf(key)) identifiers.push_back(model->uniqueID());
        }
    };
    leaveOut(document.toothModels(), false);
    leaveOut(document.bracketModels(), !draws(ScenePart::Brackets));
    leaveOut(document.buttonModels(), !draws(ScenePart::Buttons));
    const std::pair<std::shared_ptr<DXGLightweightModel>, ScenePart> gums[] = {
        {document.upperGumModel(), ScenePart::UpperArch},
        {document.lowerGumModel(), ScenePart::LowerArch}};
    for (const auto &[gum, arch] : gums) {
        if (gum && !(draws(ScenePart::Gums) && draws(arch))) identifiers.push_back(gum->uniqueID());
    }
    std::sort(identifiers.begin(), identifiers.end());
    return identifiers;
}

bool SceneParts::leavesOut(const DXGLightweightModel &model) const
{
    return std::binary_search(modelsLeftOut_.begin(), modelsLeftOut_.end(), model.uniqueID());
}

bool SceneParts::showsElasticOver(const std::vector<std::string> &keys) const
{
    return draws(ScenePart::Elastics) &&
           std::all_of(keys.begin(), keys.end(),
                       [this](const std::string &key) { return drawsArchOf(key); });
}

} // namespace kelo
