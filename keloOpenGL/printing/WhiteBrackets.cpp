#include "keloOpenGL/printing/WhiteBrackets.h"

#include "document/DXDocumentModel.h"
#include "models/DXGLightweightModel.h"
#include "models/HVOGLMaterial.h"

namespace kelo {

WhiteBrackets::WhiteBrackets(const DXDocumentModel *document)
{
    if (!document) return;
    const auto white = HVOGLMaterial::materialWithColor(Color::whiteColor());
    white->setFrontAmbientColor(Color::blackColor());
    white->setFrontSpecularColor(Color::whiteColor());
    // From here on nothing fails: brackets that were painted are given back by the destructor.
    kept_.reserve(document->bracketModels().size());
    for (const auto &[key, bracket] : document->bracketModels()) {
        kept_.emplace_back(bracket, bracket->material());
        bracket->setMaterial(white);
    }
}

WhiteBrackets::~WhiteBrackets()
{
    for (const auto &[bracket, material] : kept_)
        bracket->setMaterial(material);
}

} // namespace kelo
