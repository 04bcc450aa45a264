#include "document/DXDocumentModel.h"

#include "base/Assertion.h"
#include "base/TellDelegate.h"
#include "document/ModelLookup.h"
#include "keloModel/TreatmentNote.h"
#include "models/ToothModelLoader.h"
#include "platform/time/NotificationCenter.h"
#include "platform/time/RunLoop.h"

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

[[noreturn]] void refuseList(const std::string &listName, const std::string &modelName)
{
    throw ModelNotLoaded("The " + listName + " need the " + modelName + ", which is not loaded");
}

} // namespace

/// The button at an index belongs to the tooth at that index.
struct DXDocumentModel::JawKeys
{
    std::vector<std::string> teeth;
    std::vector<std::string> buttons;
};

DXDocumentModel::DXDocumentModel()
{
    NotificationCenter::defaultCenter().addObserver(
        this, [this](const Notification &mesh) { meshChanged(mesh.object); },
        modelChangedNotification);
}

DXDocumentModel::~DXDocumentModel()
{
    NotificationCenter::defaultCenter().removeObserver(this);
    if (const auto timer = updateAccumulationTimer_.lock()) timer->invalidate();
}

/// The operations that tell the delegate keep the model alive to their end, so that they need not
/// ask afterwards whether it is.
Teller DXDocumentModel::teller() const
{
    return {weak_from_this(), weak_from_this()};
}

void DXDocumentModel::postDocumentModelChangedNotification() const
{
    NotificationCenter::defaultCenter().postNotificationName(documentModelChangedNotification,
                                                             this);
}

bool DXDocumentModel::owns(const void *mesh) const
{
    if (mesh == _upperGumModel.get() || mesh == _lowerGumModel.get()) return mesh != nullptr;
    for (const Models *dictionary : {&_toothModels, &_bracketModels, &_buttonModels}) {
        for (const auto &[key, model] : *dictionary) {
            if (model.get() == mesh) return true;
        }
    }
    return false;
}

void DXDocumentModel::meshChanged(const void *mesh)
{
    // Those that change in one of the operations here are announced with the whole change.
    if (changeDepth_ == 0 && owns(mesh)) postDocumentModelChangedNotification();
}

MeshFailures DXDocumentModel::loadUpperAndLowerGumModels()
{
    MeshFailures failures;
    setUpperGumModel(ToothModelLoader::standardUpperGumsModel(&failures));
    setLowerGumModel(ToothModelLoader::standardLowerGumsModel(&failures));
    return failures;
}

MeshFailures
DXDocumentModel::loadToothModelFilesForToothNameKeys(const std::vector<std::string> &keys)
{
    return loadToothModelFiles(ToothModelLoader::toothModelFilesForToothNameKeys(keys));
}

MeshFailures DXDocumentModel::loadToothModelFiles(const Paths &files)
{
    const auto keepAlive = weak_from_this().lock();
    const auto progress = loadingProgress;
    MeshFailures failures;
    setToothModels(ToothModelLoader::toothModelsFromFiles(files, progress, &failures));
    return failures;
}

MeshFailures
DXDocumentModel::loadBracketModelFilesForToothNameKeys(const std::vector<std::string> &keys)
{
    return loadBracketModelFiles(ToothModelLoader::bracketModelFilesForToothNameKeys(keys));
}

MeshFailures DXDocumentModel::loadBracketModelFiles(const Paths &files)
{
    const auto keepAlive = weak_from_this().lock();
    const auto progress = loadingProgress;
    MeshFailures failures;
    setBracketModels(ToothModelLoader::bracketModelsFromFiles(files, progress, &failures));
    return failures;
}

MeshFailures
DXDocumentModel::loadButtonModelFilesForButtonNameKeys(const std::vector<std::string> &keys)
{
    return loadButtonModelFiles(ToothModelLoader::buttonModelFilesForButtonNameKeys(keys));
}

MeshFailures DXDocumentModel::loadButtonModelFiles(const Paths &files)
{
    const auto keepAlive = weak_from_this().lock();
    const auto progress = loadingProgress;
    MeshFailures failures;
    setButtonModels(ToothModelLoader::buttonModelsFromFiles(files, progress, &failures));
    return failures;
}

void DXDocumentModel::setUpperGumModel(std::shared_ptr<DXGLightweightModel> model)
{
    _upperGumModel = std::move(model);
    forgetJawModels();
}

void DXDocumentModel::setLowerGumModel(std::shared_ptr<DXGLightweightModel> model)
{
    _lowerGumModel = std::move(model);
    forgetJawModels();
}

void DXDocumentModel::setToothModels(Models models)
{
    assertThatAllAreGiven(models);
    _toothModels = std::move(models);
    forgetJawModels();
}

void DXDocumentModel::setBracketModels(Models models)
{
    assertThatAllAreGiven(models);
    _bracketModels = std::move(models);
    forgetJawModels();
}

void DXDocumentModel::setButtonModels(Models models)
{
    assertThatAllAreGiven(models);
    _buttonModels = std::move(models);
    forgetJawModels();
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

DXDocumentModel::JawKeys DXDocumentModel::keysOfJaw(Jaw jaw)
{
    if (jaw == Jaw::Upper)
        return {TreatmentNote::upperToothNameKeys(), TreatmentNote::upperLingualButtonNameKeys()};
    return {TreatmentNote::lowerToothNameKeys(), TreatmentNote::lowerLingualButtonNameKeys()};
}

void DXDocumentModel::forgetJawModels()
{
    upperJaw_ = {};
    lowerJaw_ = {};
}

const DXDocumentModel::JawModels &DXDocumentModel::loadedJaw(Jaw jaw) const
{
    JawModels &listed = jaw == Jaw::Upper ? upperJaw_ : lowerJaw_;
    const auto noteKeys = TreatmentNote::keys();
    if (listed.noteKeys == noteKeys) return listed;
    const JawKeys keys = keysOfJaw(jaw);
    assertThat(keys.teeth.size() == keys.buttons.size(),
               "The lists of teeth and of lingual buttons are parallel");
    ModelList list;
    list.reserve(1 + 3 * keys.teeth.size());
    appendLoaded(list, jaw == Jaw::Upper ? _upperGumModel : _lowerGumModel);
    for (std::size_t i = 0; i < keys.teeth.size(); ++i) {
        appendLoaded(list, modelUnderKey(_toothModels, keys.teeth[i]));
        appendLoaded(list, modelUnderKey(_bracketModels, keys.teeth[i]));
        appendLoaded(list, modelUnderKey(_buttonModels, keys.buttons[i]));
    }
    const bool isComplete = list.size() == 1 + 3 * keys.teeth.size();
    listed = {noteKeys, std::move(list), isComplete};
    return listed;
}

void DXDocumentModel::refuseIncompleteJaw(Jaw jaw) const
{
    // The texts of the refusal are only made here, not for every frame.
    const std::string jawName = jaw == Jaw::Upper ? "upper" : "lower";
    const std::string listName = jawName + " models";
    const JawKeys keys = keysOfJaw(jaw);
    if (!(jaw == Jaw::Upper ? _upperGumModel : _lowerGumModel))
        refuseList(listName, jawName + " gum");
    const auto require = [&](const Models &models, const char *kind, const std::string &key) {
        if (!modelUnderKey(models, key)) refuseList(listName, kind + (" \"" + key) + '"');
    };
    for (std::size_t i = 0; i < keys.teeth.size(); ++i) {
        require(_toothModels, "tooth", keys.teeth[i]);
        require(_bracketModels, "bracket", keys.teeth[i]);
        require(_buttonModels, "button", keys.buttons[i]);
    }
}

DXDocumentModel::ModelList DXDocumentModel::upperModels() const
{
    if (!loadedJaw(Jaw::Upper).isComplete) refuseIncompleteJaw(Jaw::Upper);
    return loadedUpperModels();
}

DXDocumentModel::ModelList DXDocumentModel::lowerModels() const
{
    if (!loadedJaw(Jaw::Lower).isComplete) refuseIncompleteJaw(Jaw::Lower);
    return loadedLowerModels();
}

DXDocumentModel::ModelList DXDocumentModel::loadedUpperModels() const
{
    return loadedJaw(Jaw::Upper).models;
}

DXDocumentModel::ModelList DXDocumentModel::loadedLowerModels() const
{
    return loadedJaw(Jaw::Lower).models;
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
    change([&] {
        for (const auto &[key, visible] : visibilities) {
            setHiddenPrimary(modelUnderKey(_toothModels, key), !visible);
            setHiddenSecondary(modelUnderKey(_bracketModels, key), !visible);
            setHiddenSecondary(
                modelUnderKey(_buttonModels, TreatmentNote::buttonNameForToothName(key)), !visible);
        }
    });
}

void DXDocumentModel::setBracketVisibilities(const Visibilities &visibilities)
{
    const auto keepAlive = weak_from_this().lock();
    change([&] {
        for (const auto &[key, visible] : visibilities)
            setHiddenPrimary(modelUnderKey(_bracketModels, key), !visible);
    });
}

void DXDocumentModel::setButtonVisibilities(const Visibilities &visibilities)
{
    const auto keepAlive = weak_from_this().lock();
    change([&] {
        for (const auto &[key, visible] : visibilities)
            setHiddenPrimary(modelUnderKey(_buttonModels, key), !visible);
    });
}

// The toggles copy the key that they are given, because it may be in something that the delegate
// takes apart: a dictionary of models, an elastic's sequence.

void DXDocumentModel::toggleVisibilityOfBracket(const std::string &givenKey)
{
    const auto keepAlive = weak_from_this().lock();
    const std::string key = givenKey;
    const auto bracket = modelUnderKey(_bracketModels, key);
    bool visible = true;
    change([&] {
        setHiddenPrimary(bracket, !isHiddenPrimary(bracket));
        visible = !isHiddenPrimary(bracket);
        accumulateUpdateForBracket_visibility(key, visible);
    });
    tellDelegate(teller(), delegate_, &DXDocumentModelDelegate::bracket_visibilityDidChange, key,
                 visible);
    if (isHiddenPrimary(bracket)) refactorElasticModels(key);
}

void DXDocumentModel::toggleVisibilityOfButton(const std::string &givenKey)
{
    const auto keepAlive = weak_from_this().lock();
    const std::string key = givenKey;
    const auto button = modelUnderKey(_buttonModels, key);
    bool visible = true;
    change([&] {
        setHiddenPrimary(button, !isHiddenPrimary(button));
        visible = !isHiddenPrimary(button);
        accumulateUpdateForButton_visibility(key, visible);
    });
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
    bool hidden = false;
    change([&] {
        setHiddenPrimary(tooth, !isHiddenPrimary(tooth));
        hidden = isHiddenPrimary(tooth);
        setHiddenSecondary(modelUnderKey(_bracketModels, key), hidden);
        setHiddenSecondary(modelUnderKey(_buttonModels, buttonKey), hidden);
    });
    tellDelegate(teller(), delegate_, &DXDocumentModelDelegate::tooth_visibilityDidChange, key,
                 !hidden);
    if (isHiddenPrimary(tooth)) {
        refactorElasticModels(key);
        refactorElasticModels(buttonKey);
    }
}

} // namespace kelo
