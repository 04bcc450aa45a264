#include "viewer/view/SceneMaterials.h"

#include <functional>
#include <utility>

namespace viewer {
namespace {

using kelo::Color;
using kelo::HVOGLMaterial;

const char *keyOfPart(MaterialPart part)
{
    switch (part) {
    case MaterialPart::Teeth:
        return "Teeth ";
    case MaterialPart::Gums:
        return "Gums ";
    case MaterialPart::Brackets:
        return "Brackets ";
    case MaterialPart::Buttons:
        break;
    }
    return "Buttons ";
}

/// Another store under keys with a prefix.
class PrefixedDefaults : public kelo::UserDefaults
{
public:
    PrefixedDefaults(kelo::UserDefaults &store, std::string prefix)
        : store_(store), prefix_(std::move(prefix))
    {}
    void setData_forKey(const Bytes &data, const std::string &key) override
    {
        store_.setData_forKey(data, prefix_ + key);
    }
    void setFloat_forKey(float value, const std::string &key) override
    {
        store_.setFloat_forKey(value, prefix_ + key);
    }
    void setString_forKey(const std::string &value, const std::string &key) override
    {
        store_.setString_forKey(value, prefix_ + key);
    }
    void removeObjectForKey(const std::string &key) override
    {
        store_.removeObjectForKey(prefix_ + key);
    }
    void performBatch(const std::function<void()> &changes) override
    {
        store_.performBatch(changes);
    }
    std::optional<Bytes> dataForKey(const std::string &key) const override
    {
        return store_.dataForKey(prefix_ + key);
    }
    float floatForKey(const std::string &key) const override
    {
        return store_.floatForKey(prefix_ + key);
    }
    std::optional<std::string> stringForKey(const std::string &key) const override
    {
        return store_.stringForKey(prefix_ + key);
    }

private:
    kelo::UserDefaults &store_;
    std::string prefix_;
};

/// Materials keep one set of defaults; here each part has its own.
void withDefaultsOf(MaterialPart part, const std::function<void()> &action)
{
    kelo::UserDefaults &all = kelo::UserDefaults::standardUserDefaults();
    auto before = kelo::UserDefaults::setStandardUserDefaults(
        std::make_unique<PrefixedDefaults>(all, keyOfPart(part)));
    action();
    kelo::UserDefaults::setStandardUserDefaults(std::move(before));
}

bool isAsTheDocumentPaints(const HVOGLMaterial &material)
{
    const auto &names = HVOGLMaterial::parameterNames();
    return material.dictionaryWithValuesForKeys(names) ==
           kelo::ToothModelLoader::standardMaterialForColor(material.color())
               ->dictionaryWithValuesForKeys(names);
}

Color towardBlack(const Color &color, double fraction)
{
    return color.blendedColorWithFraction_ofColor(fraction, Color::blackColor());
}

Color towardWhite(const Color &color, double fraction)
{
    return color.blendedColorWithFraction_ofColor(fraction, Color::whiteColor());
}

} // namespace

std::shared_ptr<HVOGLMaterial> materialOfPart(MaterialPart part, const Color &color,
                                              double shininess)
{
    // The fractions are those of the library's standard materials.
    auto material = HVOGLMaterial::materialWithColor_shininess(color, shininess);
    switch (part) {
    case MaterialPart::Teeth:
        material->setFrontAmbientColor(towardBlack(color, 0.375));
        material->setFrontSpecularColor(towardWhite(color, 0.85));
        break;
    case MaterialPart::Gums:
        material->setFrontAmbientColor(towardBlack(color, 0.2));
        material->setFrontSpecularColor(towardBlack(color, 0.75));
        break;
    case MaterialPart::Brackets:
    case MaterialPart::Buttons:
        material->setFrontAmbientColor(Color::blackColor());
        material->setFrontSpecularColor(Color::whiteColor());
        break;
    }
    return material;
}

std::shared_ptr<HVOGLMaterial> factoryMaterial(MaterialPart part)
{
    using Loader = kelo::ToothModelLoader;
    switch (part) {
    case MaterialPart::Teeth:
        return Loader::toothModelMaterial();
    case MaterialPart::Gums:
        return Loader::gumModelMaterial();
    case MaterialPart::Brackets:
        return Loader::bracketModelMaterial();
    case MaterialPart::Buttons:
        break;
    }
    return Loader::buttonModelMaterial();
}

SceneMaterials::SceneMaterials(std::shared_ptr<kelo::DXDocumentModel> document)
    : document_(std::move(document))
{
    for (const MaterialPart part : materialParts)
        slot(part) = factoryMaterial(part);
}

std::shared_ptr<HVOGLMaterial> &SceneMaterials::slot(MaterialPart part)
{
    return materials_[static_cast<std::size_t>(part)];
}

const HVOGLMaterial &SceneMaterials::material(MaterialPart part) const
{
    return *materials_[static_cast<std::size_t>(part)];
}

void SceneMaterials::setColor(MaterialPart part, const Color &color)
{
    slot(part) = materialOfPart(part, color, material(part).shininess());
    apply();
}

void SceneMaterials::setShininess(MaterialPart part, double shininess)
{
    slot(part)->setShininess(shininess);
    apply();
}

void SceneMaterials::saveDefaults(MaterialPart part) const
{
    withDefaultsOf(part, [&] { material(part).saveDefaults(); });
}

bool SceneMaterials::hasDefaults(MaterialPart part) const
{
    bool has = false;
    withDefaultsOf(part, [&has] {
        has = kelo::UserDefaults::standardUserDefaults().dataForKey("Model color").has_value();
    });
    return has;
}

void SceneMaterials::restoreDefaults(MaterialPart part)
{
    slot(part) = factoryMaterial(part);
    if (hasDefaults(part)) withDefaultsOf(part, [&] { slot(part)->restoreDefaults(); });
    apply();
}

void SceneMaterials::restoreFactoryDefaults(MaterialPart part)
{
    slot(part)->restoreFactoryDefaults();
    slot(part)->takeValuesFrom(*factoryMaterial(part)); // of the part, not of any material
    apply();
}

void SceneMaterials::restoreAllSaved()
{
    for (const MaterialPart part : materialParts) {
        if (hasDefaults(part)) restoreDefaults(part);
    }
}

void SceneMaterials::apply(const std::string &strungFrom)
{
    const auto give = [](const std::shared_ptr<kelo::DXGLightweightModel> &model,
                         const std::shared_ptr<HVOGLMaterial> &material) {
        if (model && model->material() != material) model->setMaterial(material);
    };
    for (const auto &[key, tooth] : document_->toothModels())
        give(tooth, slot(MaterialPart::Teeth));
    for (const auto &[key, button] : document_->buttonModels())
        give(button, slot(MaterialPart::Buttons));
    give(document_->upperGumModel(), slot(MaterialPart::Gums));
    give(document_->lowerGumModel(), slot(MaterialPart::Gums));
    const auto colors = document_->bracketColorsTypeIDs();
    for (const auto &[key, bracket] : document_->bracketModels()) {
        if (key == strungFrom && bracket->material() &&
            !isAsTheDocumentPaints(*bracket->material()))
            continue;
        const auto color = colors.find(key);
        if (color == colors.end() || color->second == kelo::noBracketColorTypeID)
            give(bracket, slot(MaterialPart::Brackets));
        else if (bracket->material() != slot(MaterialPart::Brackets))
            bracket->material()->setShininess(material(MaterialPart::Brackets).shininess());
    }
}

} // namespace viewer
