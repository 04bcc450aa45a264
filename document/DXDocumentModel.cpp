#include "document/DXDocumentModel.h"

#include "document/ModelLookup.h"
#include "keloModel/TreatmentNote.h"
#include "models/ToothModelLoader.h"
#include "platform/Assertion.h"
#include "platform/RunLoop.h"
#include "platform/TellDelegate.h"

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

void appendLoaded(DXDocumentModel::ModelList &list, std::shared_ptr<DXGLightweightModel> model)
{
    if (model) list.push_back(std::move(model));
}

/// The keys of one jaw; the button at an index belongs to the tooth at that index.
struct JawKeys
{
    std::vector<std::string> teeth;
    std::vector<std::string> buttons;
};

JawKeys upperKeys()
{
    return {TreatmentNote::upperToothNameKeys(), TreatmentNote::upperLingualButtonNameKeys()};
}

JawKeys lowerKeys()
{
    return {TreatmentNote::lowerToothNameKeys(), TreatmentNote::lowerLingualButtonNameKeys()};
}

[[noreturn]] void refuseList(const std::string &listName, const std::string &modelName)
{
    throw ModelNotLoaded("The " + listName + " need the " + modelName + ", which is not loaded");
}

} // namespace

DXDocumentModel::DXDocumentModel() = default;

DXDocumentModel::~DXDocumentModel()
{
    if (const auto timer = updateAccumulationTimer_.lock()) timer->invalidate();
}

// The operations that tell the delegate keep the model alive to their end, so that they need not
// ask afterwards whether it is.
Teller DXDocumentModel::teller() const
{
    return {weak_from_this(), weak_from_this()};
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

DXDocumentModel::ModelList DXDocumentModel::loadedModels() const
{
    ModelList list;
    list.reserve(_toothModels.size() + _bracketModels.size() + _buttonModels.size() + 2);
    for (const Models *dictionary : {&_toothModels, &_bracketModels, &_buttonModels}) {
        for (const auto &[key, model] : *dictionary)
            list.push_back(model);
    }
    appendLoaded(list, _upperGumModel);
    appendLoaded(list, _lowerGumModel);
    return list;
}

DXDocumentModel::ModelList DXDocumentModel::models() const
{
    if (!_upperGumModel) refuseList("models", "upper gum");
    if (!_lowerGumModel) refuseList("models", "lower gum");
    return loadedModels();
}

DXDocumentModel::ModelList
DXDocumentModel::loadedModelsOfJaw(const std::shared_ptr<DXGLightweightModel> &gum,
                                   const std::vector<std::string> &toothKeys,
                                   const std::vector<std::string> &buttonKeys) const
{
    assertThat(toothKeys.size() == buttonKeys.size(),
               "The lists of teeth and of lingual buttons are parallel");
    ModelList list;
    list.reserve(1 + 3 * toothKeys.size());
    appendLoaded(list, gum);
    for (std::size_t i = 0; i < toothKeys.size(); ++i) {
        appendLoaded(list, modelUnderKey(_toothModels, toothKeys[i]));
        appendLoaded(list, modelUnderKey(_bracketModels, toothKeys[i]));
        appendLoaded(list, modelUnderKey(_buttonModels, buttonKeys[i]));
    }
    return list;
}

DXDocumentModel::ModelList DXDocumentModel::modelsOfJaw(
    const std::string &jaw, const std::shared_ptr<DXGLightweightModel> &gum,
    const std::vector<std::string> &toothKeys, const std::vector<std::string> &buttonKeys) const
{
    ModelList list = loadedModelsOfJaw(gum, toothKeys, buttonKeys);
    if (list.size() == 1 + 3 * toothKeys.size()) return list;
    // The texts of the refusal are only made here, not for every frame.
    const std::string listName = jaw + " models";
    if (!gum) refuseList(listName, jaw + " gum");
    const auto require = [&](const Models &models, const char *kind, const std::string &key) {
        if (!modelUnderKey(models, key)) refuseList(listName, kind + (" \"" + key) + '"');
    };
    for (std::size_t i = 0; i < toothKeys.size(); ++i) {
        require(_toothModels, "tooth", toothKeys[i]);
        require(_bracketModels, "bracket", toothKeys[i]);
        require(_buttonModels, "button", buttonKeys[i]);
    }
    return list;
}

DXDocumentModel::ModelList DXDocumentModel::upperModels() const
{
    const JawKeys keys = upperKeys();
    return modelsOfJaw("upper", _upperGumModel, keys.teeth, keys.buttons);
}

DXDocumentModel::ModelList DXDocumentModel::lowerModels() const
{
    const JawKeys keys = lowerKeys();
    return modelsOfJaw("lower", _lowerGumModel, keys.teeth, keys.buttons);
}

DXDocumentModel::ModelList DXDocumentModel::loadedUpperModels() const
{
    const JawKeys keys = upperKeys();
    return loadedModelsOfJaw(_upperGumModel, keys.teeth, keys.buttons);
}

DXDocumentModel::ModelList DXDocumentModel::loadedLowerModels() const
{
    const JawKeys keys = lowerKeys();
    return loadedModelsOfJaw(_lowerGumModel, keys.teeth, keys.buttons);
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
    tellDelegate(teller(), delegate_, &DXDocumentModelDelegate::bracket_visibilityDidChange, key,
                 visible);
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
    tellDelegate(teller(), delegate_, &DXDocumentModelDelegate::button_visibilityDidChange, key,
                 visible);
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
    tellDelegate(teller(), delegate_, &DXDocumentModelDelegate::tooth_visibilityDidChange, key,
                 !hidden);
    if (isHiddenPrimary(tooth)) {
        refactorElasticModels(key);
        refactorElasticModels(buttonKey);
    }
}

} // namespace kelo
