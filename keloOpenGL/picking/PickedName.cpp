#include "keloOpenGL/picking/PickedName.h"

#include "models/DXGLightweightModel.h"

namespace kelo {

std::optional<PickedName> pickedName(const DXDocumentModel &document, std::uint32_t identifier,
                                     bool includesTeeth)
{
    const struct
    {
        const DXDocumentModel::Models &models;
        bool isIncluded;
        bool areButtons;
    } kinds[] = {{document.toothModels(), includesTeeth, false},
                 {document.bracketModels(), true, false},
                 {document.buttonModels(), true, true}};
    for (const auto &kind : kinds) {
        if (!kind.isIncluded) continue;
        for (const auto &[key, model] : kind.models) {
            if (model->uniqueID() == identifier) return PickedName{key, kind.areButtons};
        }
    }
    return std::nullopt;
}

} // namespace kelo
