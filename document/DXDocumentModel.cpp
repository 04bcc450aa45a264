#include "document/DXDocumentModel.h"

#include "document/ModelLookup.h"
#include "keloModel/TreatmentNote.h"
#include "models/ToothModelLoader.h"
#include "platform/Assertion.h"
#include "platform/RunLoop.h"

namespace kelo {
namespace {

DXDocumentModel::Visibilities visibilitiesOf(const DXDocumentModel::Models &models)
{
    DXDocumentModel::Visibilities visibilities;
    for (const auto &[key, model] : models)
        visibilities.emplace(key, !model->hiddenPrimary());
    return visibilities;
}

void assertThatAllAreGiven(const DXDocumentModel::Models &models)
{
    for (const auto &[key, model] : models)
        assertThat(model != nullptr, "A dictionary of models holds no null");
}

void appendModel(DXDocumentModel::ModelList &list,
                 const std::shared_ptr<DXGLightweightModel> &model, const std::string &listName,
                 const std::string &modelName)
{
    if (!model)
        throw ModelNotLoaded("The " + listName + " need the " + modelName +
                             ", which is not loaded");
    list.push_back(model);
}

} // namespace

DXDocumentModel::DXDocumentModel() = default;

DXDocumentModel::~DXDocumentModel()
{
    if (const auto timer = updateAccumulationTimer_.lock()) timer->invalidate();
}

void DXDocumentModel::loadUpperAndLowerGumModels()
{
    setUpperGumModel(ToothModelLoader::standardUpperGumsModel());
    setLowerGumModel(ToothModelLoader::standardLowerGumsModel());
}

void DXDocumentModel::loadToothModelFilesForToothNameKeys(const std::vector<std::string> &keys)
{
    loadToothModelFiles(ToothModelLoader::toothModelFilesForToothNameKeys(keys));
}

void DXDocumentModel::loadToothModelFiles(const Paths &files)
{
    const auto keepAlive = weak_from_this().lock();
    const auto progress = loadingProgress;
    setToothModels(ToothModelLoader::toothModelsFromFiles(files, progress));
}

void DXDocumentModel::loadBracketModelFilesForToothNameKeys(const std::vector<std::string> &keys)
{
    loadBracketModelFiles(ToothModelLoader::bracketModelFilesForToothNameKeys(keys));
}

void DXDocumentModel::loadBracketModelFiles(const Paths &files)
{
    const auto keepAlive = weak_from_this().lock();
    const auto progress = loadingProgress;
    setBracketModels(ToothModelLoader::bracketModelsFromFiles(files, progress));
}

void DXDocumentModel::loadButtonModelFilesForButtonNameKeys(const std::vector<std::string> &keys)
{
    loadButtonModelFiles(ToothModelLoader::buttonModelFilesForButtonNameKeys(keys));
}

void DXDocumentModel::loadButtonModelFiles(const Paths &files)
{
    const auto keepAlive = weak_from_this().lock();
    const auto progress = loadingProgress;
    setButtonModels(ToothModelLoader::buttonModelsFromFiles(files, progress));
}

void DXDocumentModel::setUpperGumModel(std::shared_ptr<DXGLightweightModel> model)
{
    _upperGumModel = std::move(model);
}

void DXDocumentModel::setLowerGumModel(std::shared_ptr<DXGLightweightModel> model)
{
    _lowerGumModel = std::move(model);
}

void DXDocumentModel::setToothModels(Models models)
{
    assertThatAllAreGiven(models);
    _toothModels = std::move(models);
}

void DXDocumentModel::setBracketModels(Models models)
{
    assertThatAllAreGiven(models);
    _bracketModels = std::move(models);
}

void DXDocumentModel::setButtonModels(Models models)
{
    assertThatAllAreGiven(models);
    _buttonModels = std::move(models);
    for (const auto &[key, model] : _buttonModels)
        model->setExtendedHitbox(true);
}

void DXDocumentModel::setAvailableBracketColorTypes(BracketColorTypes types)
{
    _availableBracketColorTypes = std::move(types);
}

void DXDocumentModel::setAvailableElasticsSizeTypes(ElasticsSizeTypes types)
{
    _availableElasticsSizeTypes = std::move(types);
}

void DXDocumentModel::setAvailableElasticsConfigTypes(ElasticsConfigTypes types)
{
    _availableElasticsConfigTypes = std::move(types);
}

DXDocumentModel::ModelList DXDocumentModel::models() const
{
    ModelList list;
    list.reserve(_toothModels.size() + _bracketModels.size() + _buttonModels.size() + 2);
    for (const Models *dictionary : {&_toothModels, &_bracketModels, &_buttonModels}) {
        for (const auto &[key, model] : *dictionary)
            list.push_back(model);
    }
    appendModel(list, _upperGumModel, "models", "upper gum");
    appendModel(list, _lowerGumModel, "models", "lower gum");
    return list;
}

DXDocumentModel::ModelList DXDocumentModel::modelsOfJaw(
    const std::string &jaw, const std::shared_ptr<DXGLightweightModel> &gum,
    const std::vector<std::string> &toothKeys, const std::vector<std::string> &buttonKeys) const
{
    assertThat(toothKeys.size() == buttonKeys.size(),
               "The lists of teeth and of lingual buttons are parallel");
    const std::string listName = jaw + " models";
    ModelList list;
    list.reserve(1 + 3 * toothKeys.size());
    appendModel(list, gum, listName, jaw + " gum");
    for (std::size_t i = 0; i < toothKeys.size(); ++i) {
        const std::string &tooth = toothKeys[i];
        const std::string &button = buttonKeys[i];
        appendModel(list, modelUnderKey(_toothModels, tooth), listName, "tooth \"" + tooth + "\"");
        appendModel(list, modelUnderKey(_bracketModels, tooth), listName,
                    "bracket \"" + tooth + "\"");
        appendModel(list, modelUnderKey(_buttonModels, button), listName,
                    "button \"" + button + "\"");
    }
    return list;
}

DXDocumentModel::ModelList DXDocumentModel::upperModels() const
{
    return modelsOfJaw("upper", _upperGumModel, TreatmentNote::upperToothNameKeys(),
                       TreatmentNote::upperLingualButtonNameKeys());
}

DXDocumentModel::ModelList DXDocumentModel::lowerModels() const
{
    return modelsOfJaw("lower", _lowerGumModel, TreatmentNote::lowerToothNameKeys(),
                       TreatmentNote::lowerLingualButtonNameKeys());
}

DXDocumentModel::Visibilities DXDocumentModel::toothVisibilities() const
{
    return visibilitiesOf(_toothModels);
}

DXDocumentModel::Visibilities DXDocumentModel::bracketVisibilities() const
{
    return visibilitiesOf(_bracketModels);
}

DXDocumentModel::Visibilities DXDocumentModel::buttonVisibilities() const
{
    return visibilitiesOf(_buttonModels);
}

void DXDocumentModel::setToothVisibilities(const Visibilities &visibilities)
{
    const auto keepAlive = weak_from_this().lock();
    for (const auto &[key, visible] : visibilities) {
        setHiddenPrimary(modelUnderKey(_toothModels, key), !visible);
        setHiddenSecondary(modelUnderKey(_bracketModels, key), !visible);
        setHiddenSecondary(modelUnderKey(_buttonModels, TreatmentNote::buttonNameForToothName(key)),
                           !visible);
    }
}

void DXDocumentModel::setBracketVisibilities(const Visibilities &visibilities)
{
    const auto keepAlive = weak_from_this().lock();
    for (const auto &[key, visible] : visibilities)
        setHiddenPrimary(modelUnderKey(_bracketModels, key), !visible);
}

void DXDocumentModel::setButtonVisibilities(const Visibilities &visibilities)
{
    const auto keepAlive = weak_from_this().lock();
    for (const auto &[key, visible] : visibilities)
        setHiddenPrimary(modelUnderKey(_buttonModels, key), !visible);
}

// The toggles copy the key that they are given, because it may stand in something that the delegate
// takes apart: a dictionary of models, an elastic's sequence.

void DXDocumentModel::toggleVisibilityOfBracket(const std::string &givenKey)
{
    const auto keepAlive = weak_from_this().lock();
    const std::string key = givenKey;
    const auto bracket = modelUnderKey(_bracketModels, key);
    setHiddenPrimary(bracket, !isHiddenPrimary(bracket));
    const bool visible = !isHiddenPrimary(bracket);
    accumulateUpdateForBracket_visibility(key, visible);
    tell(&DXDocumentModelDelegate::bracket_visibilityDidChange, key, visible);
    if (isHiddenPrimary(bracket)) refactorElasticModels(key);
}

void DXDocumentModel::toggleVisibilityOfButton(const std::string &givenKey)
{
    const auto keepAlive = weak_from_this().lock();
    const std::string key = givenKey;
    const auto button = modelUnderKey(_buttonModels, key);
    setHiddenPrimary(button, !isHiddenPrimary(button));
    const bool visible = !isHiddenPrimary(button);
    accumulateUpdateForButton_visibility(key, visible);
    tell(&DXDocumentModelDelegate::button_visibilityDidChange, key, visible);
    if (isHiddenPrimary(button)) refactorElasticModels(key);
}

void DXDocumentModel::toggleVisibilityOfTooth(const std::string &givenKey)
{
    const auto keepAlive = weak_from_this().lock();
    const std::string key = givenKey;
    const std::string buttonKey = TreatmentNote::buttonNameForToothName(key);
    const auto tooth = modelUnderKey(_toothModels, key);
    setHiddenPrimary(tooth, !isHiddenPrimary(tooth));
    const bool hidden = isHiddenPrimary(tooth);
    setHiddenSecondary(modelUnderKey(_bracketModels, key), hidden);
    setHiddenSecondary(modelUnderKey(_buttonModels, buttonKey), hidden);
    tell(&DXDocumentModelDelegate::tooth_visibilityDidChange, key, !hidden);
    if (isHiddenPrimary(tooth)) {
        refactorElasticModels(key);
        refactorElasticModels(buttonKey);
    }
}

} // namespace kelo
