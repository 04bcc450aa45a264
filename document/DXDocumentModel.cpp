#include "document/DXDocumentModelParts.h"

#include "base/Assertion.h"
#include "document/DocumentSanity.h"
#include "document/ModelVisibility.h"
#include "keloModel/TreatmentNote.h"
#include "models/ToothModelLoader.h"
#include "platform/time/NotificationCenter.h"

#include <utility>

namespace kelo {
namespace {

void assertThatAllAreGiven(const DXDocumentModel::Models &models)
{
    for (const auto &[key, model] : models)
        assertThat(model != nullptr, "A dictionary of models holds no null");
}

} // namespace

DXDocumentModel::DXDocumentModel()
    : parts_(std::make_unique<Parts>([this](Timer &timer) { updateAccumulationTimer(timer); }))
{
    NotificationCenter::defaultCenter().addObserver(
        this, [this](const Notification &mesh) { meshChanged(mesh.object); },
        modelChangedNotification);
}

DXDocumentModel::~DXDocumentModel()
{
    NotificationCenter::defaultCenter().removeObserver(this);
}

DXDocumentModelDelegate *DXDocumentModel::delegate() const
{
    return parts_->delegate;
}

const std::shared_ptr<DXGLightweightModel> &DXDocumentModel::upperGumModel() const
{
    return parts_->models.upperGum;
}

const std::shared_ptr<DXGLightweightModel> &DXDocumentModel::lowerGumModel() const
{
    return parts_->models.lowerGum;
}

const DXDocumentModel::Models &DXDocumentModel::toothModels() const
{
    return parts_->models.teeth;
}

const DXDocumentModel::Models &DXDocumentModel::bracketModels() const
{
    return parts_->models.brackets;
}

const DXDocumentModel::Models &DXDocumentModel::buttonModels() const
{
    return parts_->models.buttons;
}

const DXDocumentModel::BracketColorTypes &DXDocumentModel::availableBracketColorTypes() const
{
    return parts_->paint.availableTypes();
}

const DXDocumentModel::ElasticsSizeTypes &DXDocumentModel::availableElasticsSizeTypes() const
{
    return parts_->elasticsSizeTypes;
}

const DXDocumentModel::ElasticsConfigTypes &DXDocumentModel::availableElasticsConfigTypes() const
{
    return parts_->elasticsConfigTypes;
}

const DXDocumentModel::ColorTypeIDs &DXDocumentModel::bracketColorsTypeIDs() const
{
    return parts_->paint.typeIDs();
}

double DXDocumentModel::updateAccumulationTime() const
{
    return parts_->updates.restingTime;
}

const DXDocumentModel::ColorTypeIDs &DXDocumentModel::pendingBracketColorTypeIDUpdates() const
{
    return parts_->updates.bracketColorTypeIDs;
}

const DXDocumentModel::Visibilities &DXDocumentModel::pendingBracketVisibilityUpdates() const
{
    return parts_->updates.bracketVisibilities;
}

const DXDocumentModel::Visibilities &DXDocumentModel::pendingButtonVisibilityUpdates() const
{
    return parts_->updates.buttonVisibilities;
}

DXDocumentModel::ElasticModels &DXDocumentModel::elasticModels()
{
    return parts_->elastics;
}

const DXDocumentModel::ElasticModels &DXDocumentModel::elasticModels() const
{
    return parts_->elastics;
}

void DXDocumentModel::setDelegate(DXDocumentModelDelegate *delegate)
{
    parts_->delegate = delegate;
}

void DXDocumentModel::setUpdateAccumulationTime(double seconds)
{
    parts_->updates.restingTime = seconds;
}

void DXDocumentModel::postDocumentModelChangedNotification() const
{
    NotificationCenter::defaultCenter().postNotificationName(documentModelChangedNotification,
                                                             this);
}

void DXDocumentModel::meshChanged(const void *mesh)
{
    // Those that change in one of the operations here are announced with the whole change.
    if (!parts_->changes.isRunning() && holds(parts_->models, mesh))
        postDocumentModelChangedNotification();
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
    parts_->models.upperGum = std::move(model);
    forgetJawModels();
}

void DXDocumentModel::setLowerGumModel(std::shared_ptr<DXGLightweightModel> model)
{
    parts_->models.lowerGum = std::move(model);
    forgetJawModels();
}

void DXDocumentModel::setToothModels(Models models)
{
    assertThatAllAreGiven(models);
    parts_->models.teeth = std::move(models);
    forgetJawModels();
}

void DXDocumentModel::setBracketModels(Models models)
{
    assertThatAllAreGiven(models);
    parts_->models.brackets = std::move(models);
    forgetJawModels();
}

void DXDocumentModel::setButtonModels(Models models)
{
    assertThatAllAreGiven(models);
    parts_->models.buttons = std::move(models);
    forgetJawModels();
    for (const auto &[key, model] : parts_->models.buttons)
        model->setExtendedHitbox(true);
}

void DXDocumentModel::setAvailableBracketColorTypes(BracketColorTypes types)
{
    parts_->paint.setAvailableTypes(std::move(types));
}

void DXDocumentModel::setAvailableElasticsSizeTypes(ElasticsSizeTypes types)
{
    parts_->elasticsSizeTypes = std::move(types);
}

void DXDocumentModel::setAvailableElasticsConfigTypes(ElasticsConfigTypes types)
{
    parts_->elasticsConfigTypes = std::move(types);
}

void DXDocumentModel::forgetJawModels()
{
    parts_->upperJaw.forget();
    parts_->lowerJaw.forget();
}

DXDocumentModel::ModelList DXDocumentModel::models() const
{
    return completeModels(parts_->models);
}

DXDocumentModel::ModelList DXDocumentModel::upperModels() const
{
    return parts_->upperJaw.complete(parts_->models);
}

DXDocumentModel::ModelList DXDocumentModel::lowerModels() const
{
    return parts_->lowerJaw.complete(parts_->models);
}

DXDocumentModel::ModelList DXDocumentModel::loadedModels() const
{
    return kelo::loadedModels(parts_->models);
}

DXDocumentModel::ModelList DXDocumentModel::loadedUpperModels() const
{
    return parts_->upperJaw.loaded(parts_->models);
}

DXDocumentModel::ModelList DXDocumentModel::loadedLowerModels() const
{
    return parts_->lowerJaw.loaded(parts_->models);
}

DXDocumentModel::Visibilities DXDocumentModel::toothVisibilities() const
{
    return visibilitiesOf(parts_->models.teeth);
}

DXDocumentModel::Visibilities DXDocumentModel::bracketVisibilities() const
{
    return visibilitiesOf(parts_->models.brackets);
}

DXDocumentModel::Visibilities DXDocumentModel::buttonVisibilities() const
{
    return visibilitiesOf(parts_->models.buttons);
}

void DXDocumentModel::setToothVisibilities(const Visibilities &visibilities)
{
    const auto keepAlive = weak_from_this().lock();
    change([&] { kelo::setToothVisibilities(parts_->models, visibilities); });
}

void DXDocumentModel::setBracketVisibilities(const Visibilities &visibilities)
{
    const auto keepAlive = weak_from_this().lock();
    change([&] { setVisibilities(parts_->models.brackets, visibilities); });
}

void DXDocumentModel::setButtonVisibilities(const Visibilities &visibilities)
{
    const auto keepAlive = weak_from_this().lock();
    change([&] { setVisibilities(parts_->models.buttons, visibilities); });
}

// The operations behind the toggles get copies of the key, because it may be in something that the
// delegate takes apart: a dictionary of models, an elastic's sequence.

void DXDocumentModel::toggleVisibilityOfBracket(const std::string &key)
{
    toggleVisibility({parts_->models.brackets, parts_->updates.bracketVisibilities,
                      &DXDocumentModelDelegate::bracket_visibilityDidChange},
                     key);
}

void DXDocumentModel::toggleVisibilityOfButton(const std::string &key)
{
    toggleVisibility({parts_->models.buttons, parts_->updates.buttonVisibilities,
                      &DXDocumentModelDelegate::button_visibilityDidChange},
                     key);
}

void DXDocumentModel::toggleVisibility(const Toggled &toggled, std::string key)
{
    const auto keepAlive = weak_from_this().lock();
    const auto model = modelUnderKey(toggled.models, key);
    const auto toggleIt = [&] { return parts_->updates.note(toggled.updates, key, toggle(model)); };
    tell(toggled.told, key, change(toggleIt));
    if (isHiddenPrimary(model)) refactorElasticModels(key);
}

void DXDocumentModel::toggleVisibilityOfTooth(const std::string &key)
{
    toggleToothAndHooks(key, TreatmentNote::buttonNameForToothName(key));
}

void DXDocumentModel::toggleToothAndHooks(std::string toothKey, std::string buttonKey)
{
    const auto keepAlive = weak_from_this().lock();
    const auto tooth = modelUnderKey(parts_->models.teeth, toothKey);
    const bool visible = change([&] { return toggleTooth(parts_->models, toothKey); });
    tell(&DXDocumentModelDelegate::tooth_visibilityDidChange, toothKey, visible);
    if (isHiddenPrimary(tooth)) refactorElasticModelsAround({toothKey, buttonKey});
}

void DXDocumentModel::showWithTooth(const std::string &bracketKey)
{
    if (isHiddenPrimary(modelUnderKey(parts_->models.brackets, bracketKey)))
        toggleVisibilityOfBracket(bracketKey);
    if (isHiddenPrimary(modelUnderKey(parts_->models.teeth, bracketKey)))
        toggleVisibilityOfTooth(bracketKey);
}

std::vector<std::string> DXDocumentModel::checkSanity() const
{
    std::vector<std::string> complaints = complaintsAboutModels(parts_->models);
    for (const auto &more : {complaintsAboutColors(parts_->paint, parts_->models.brackets),
                             complaintsAboutElastics(parts_->elastics, parts_->models)})
        complaints.insert(complaints.end(), more.begin(), more.end());
    return complaints;
}

} // namespace kelo
