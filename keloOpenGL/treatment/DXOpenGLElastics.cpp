// Stringing elastics by clicks, named configurations, and what the elastic menu does.

#include "keloOpenGL/treatment/DXOpenGL.h"
#include "keloOpenGL/treatment/DXOpenGLState.h"

#include "document/DXDocumentModel.h"
#include "document/ElasticModel.h"
#include "document/ModelLookup.h"
#include "keloOpenGL/editing/ElasticChanges.h"
#include "keloOpenGL/menus/ToothNaming.h"
#include "keloOpenGL/menus/TreatmentTexts.h"
#include "platform/presenters/Alert.h"

#include <QtGlobal>

namespace kelo {
namespace {

/// The teeth as people write them: "6, 27".
std::string namesOfTeeth(const std::vector<std::string> &keys)
{
    std::string names;
    for (const std::string &key : keys)
        names += (names.empty() ? "" : ", ") + ToothNaming::nameOf(key);
    return names;
}

Alert missingTeethAlert(const ElasticsConfigType &configuration,
                        const std::vector<std::string> &teeth)
{
    return {translated(QT_TRANSLATE_NOOP("DXOpenGL", "Cannot Place Named Elastic")),
            filled(translated(QT_TRANSLATE_NOOP(
                       "DXOpenGL", "The Elastic Configuration named '%@' cannot be placed because "
                                   "1 or more required teeth for Bracket/Button placement are "
                                   "missing.")),
                   configuration.typeLabel),
            "OK",
            filled(translated(QT_TRANSLATE_NOOP("DXOpenGL", "Missing: %@")), namesOfTeeth(teeth))};
}

} // namespace

void DXOpenGL::goOnWithElasticAt(const std::string &name)
{
    // Not lastClickedToothName: a bracket menu that the right button opened meanwhile changes it.
    const PlacementStep step = state_->elastics.stepForClickOn(name);
    if (step == PlacementStep::Close)
        closeElasticAt(name);
    else if (survives([&] { signalElasticsPlacement(name); }))
        takeElasticStep(step, name);
}

void DXOpenGL::closeElasticAt(const std::string &name)
{
    if (survives([this] { resolveElasticPlacement(); })) state_->events.lastClickedToothName = name;
}

void DXOpenGL::takeElasticStep(PlacementStep step, const std::string &name)
{
    // The pulse before draws frames, which lets in events: one of them may have ended the elastic.
    if (!state_->elastics.take(step, name)) return;
    state_->events.lastClickedToothName = state_->elastics.sequence()->back();
    setNeedsDisplay(true);
}

void DXOpenGL::startElasticColorMenuItemSelected(MenuItem &sender)
{
    const auto size = representedTypeOf<ElasticsSizeType>(sender);
    if (!size || !state_->events.lastClickedToothName) return;
    const std::string name = *state_->events.lastClickedToothName;
    if (survives([&] { signalElasticsPlacement(name); })) beginElasticOn(name, size->typeID);
}

void DXOpenGL::beginElasticOn(const std::string &name, long sizeTypeID)
{
    state_->elastics.begin(name, sizeTypeID);
    state_->firstBracketHighlight.begin(bracketUnderKey(name));
}

std::shared_ptr<DXGLightweightModel> DXOpenGL::bracketUnderKey(const Name &key) const
{
    if (!documentModel() || !key) return nullptr;
    return modelUnderKey(documentModel()->bracketModels(), *key);
}

void DXOpenGL::resolveElasticPlacement()
{
    const auto document = documentModel();
    const auto elastic = document ? strungElastic(state_->elastics, *document) : nullptr;
    // A host that is told of the elastic may end the placement too; it is placed once all the same.
    if (!elastic || survivesPlacing(elastic)) endElasticPlacement();
}

bool DXOpenGL::survivesPlacing(const std::shared_ptr<ElasticModel> &elastic)
{
    const auto document = documentModel();
    if (!survives([&] { document->placeElasticModel(elastic); })) return false;
    state_->elastics.notePlaced();
    return true;
}

void DXOpenGL::endElasticPlacement()
{
    state_->elastics.end();
    if (!state_->events.firstClickedToothName) return;
    const std::string name = *state_->events.firstClickedToothName;
    state_->firstBracketHighlight.end(bracketUnderKey(name));
    signalElasticsPlacement(name);
}

const std::optional<std::vector<std::string>> &DXOpenGL::bracketSequence() const
{
    return state_->elastics.sequence();
}

std::optional<long> DXOpenGL::lastElasticsSizeTypeID() const
{
    return state_->elastics.sizeTypeID();
}

// Placed elastics.

void DXOpenGL::placeSelectedElasticsConfigType(MenuItem &sender)
{
    const auto configuration = representedTypeOf<ElasticsConfigType>(sender);
    if (!configuration || !documentModel()) return;
    const auto missing = missingTeeth(*documentModel(), *configuration);
    if (missing.empty()) placeIfHostAgrees(configuration);
    if (!missing.empty()) AlertPresenter::runModal(missingTeethAlert(*configuration, missing));
}

void DXOpenGL::placeIfHostAgrees(const std::shared_ptr<ElasticsConfigType> &configuration)
{
    // The host may end the view or itself while it asks: from then on only the document is used.
    const auto document = documentModel();
    const auto mayPlaceAgain = state_->delegate ? state_->delegate->mayPlaceAgain : nullptr;
    const bool asks = mayPlaceAgain && isCovered(*document, *configuration);
    if (!asks || mayPlaceAgain(configuration)) placeConfiguration(*document, configuration);
}

std::shared_ptr<ElasticModel> DXOpenGL::lastClickedElastic() const
{
    const auto document = documentModel();
    const auto uniqueID = static_cast<std::uint32_t>(state_->events.lastClickedElasticID);
    return document ? document->elasticModelForUniqueID(uniqueID) : nullptr;
}

void DXOpenGL::updateElasticColorMenuItemSelected(MenuItem &sender)
{
    const auto size = representedTypeOf<ElasticsSizeType>(sender);
    changeDocument([&, elastic = lastClickedElastic()](DXDocumentModel &document) {
        if (size) document.elasticModel_setElasticsSizeType(elastic, size);
    });
}

void DXOpenGL::markAllElasticsSelected(MenuItem &sender)
{
    const auto size = representedTypeOf<ElasticsSizeType>(sender);
    const auto document = documentModel();
    if (size && document) changeElastics(*document, [&] { setSizeOfAllElastics(*document, size); });
}

void DXOpenGL::changeElastics(DXDocumentModel &document, const std::function<void()> &change)
{
    if (!tell(&DXOpenGLDelegate::DXOpenGL_willUpdateDocumentModel, *this, document)) return;
    if (!survives(change)) return;
    if (tell(&DXOpenGLDelegate::DXOpenGL_didUpdateDocumentModel, *this, document))
        setNeedsDisplay(true);
}

void DXOpenGL::removeElasticSelected(MenuItem &)
{
    changeDocument([elastic = lastClickedElastic()](DXDocumentModel &document) {
        document.removeElasticModel(elastic);
    });
}

void DXOpenGL::removeAllElasticsSelected(MenuItem &)
{
    changeDocument(removeAllElastics);
}

void DXOpenGL::nameSelectedElasticsModel(MenuItem &)
{
    const auto document = documentModel();
    if (!document || document->elasticModels().empty()) return;
    if (isInFullScreenMode() && !survives([this] { exitFullScreenModeWithOptions(); })) return;
    const auto elastic = elasticAt(*document, state_->events.currentEventElasticIndex);
    if (elastic) askHostToName(elastic);
}

void DXOpenGL::askHostToName(const std::shared_ptr<ElasticModel> &elastic)
{
    tell(&DXOpenGLDelegate::launchElasticsConfigAssociationSheetWithElasticModel_namingAction,
         elastic, elasticConfigNamingAction);
}

} // namespace kelo
