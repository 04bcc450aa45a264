// Stringing elastics by clicks, named configurations, and what the elastic menu does.

#include "keloOpenGL/treatment/DXOpenGL.h"
#include "keloOpenGL/treatment/DXOpenGLState.h"

#include "base/TellDelegate.h"
#include "document/DXDocumentModel.h"
#include "document/ElasticModel.h"
#include "document/ModelLookup.h"
#include "keloOpenGL/editing/ElasticPlacement.h"
#include "keloOpenGL/menus/ToothNaming.h"
#include "keloOpenGL/menus/TreatmentTexts.h"
#include "models/DXGLightweightModel.h"
#include "models/HVOGLMaterial.h"
#include "models/PickIdentifier.h"
#include "platform/presenters/Alert.h"

#include <QtGlobal>

#include <algorithm>

namespace kelo {
namespace {

/// How the bracket that an elastic began on is told from the others while it is being strung.
constexpr double highlightShininess = 2.0;

std::vector<std::string> membersOf(const std::string &bracketSequence)
{
    std::vector<std::string> members;
    std::size_t begin = 0;
    for (;;) {
        const std::size_t comma = bracketSequence.find(',', begin);
        members.push_back(bracketSequence.substr(begin, comma - begin));
        if (comma == std::string::npos) return members;
        begin = comma + 1;
    }
}

/// The teeth of these members that are hidden, each once, as people write them: "6, 27"; empty when
/// none is.
std::string namesOfMissingTeeth(const DXDocumentModel &document,
                                const std::vector<std::string> &members)
{
    std::vector<std::string> missing;
    for (const std::string &member : members) {
        const std::string tooth = toothKeyOfNameKey(member);
        const bool isNew = std::find(missing.begin(), missing.end(), tooth) == missing.end();
        if (isNew && isHidden(document.toothModels(), tooth)) missing.push_back(tooth);
    }
    std::string names;
    for (const std::string &tooth : missing)
        names += (names.empty() ? "" : ", ") + ToothNaming::nameOf(tooth);
    return names;
}

bool hasElasticOver(const DXDocumentModel &document, const std::vector<std::string> &members)
{
    const auto &elastics = document.elasticModels();
    return std::any_of(elastics.begin(), elastics.end(), [&members](const auto &elastic) {
        return elastic->bracketSequence() == members;
    });
}

} // namespace

void DXOpenGL::elasticsMouseDown(const Event &event)
{
    const std::uint32_t identifier = pickIdentifierAtPoint(backingPointForEvent(event));
    const auto document = documentModel();
    if (const auto index = elasticIndexOfPickIdentifier(identifier);
        index && !state_->bracketSequence) {
        if (document && *index < document->elasticModels().size()) {
            state_->currentEventElasticIndex = *index;
            displayElasticMenuForEvent(event);
        }
        return;
    }
    bool isLingualButton = false;
    const Name name =
        bracketNameForIdentifier_includeTeeth_isLingualButton(identifier, true, &isLingualButton);
    state_->currentEventToothName = name;
    // A tooth's key is its bracket's: a click on the tooth counts as one on its shown bracket.
    if (!name || !document ||
        isHidden(isLingualButton ? document->buttonModels() : document->bracketModels(), *name)) {
        rotateMouseDown(event);
        return;
    }
    if (!state_->bracketSequence) {
        state_->currentEventElasticIndex = noElasticIndex;
        displayElasticMenuForEvent(event);
        return;
    }
    goOnWithElasticAt(*name);
}

void DXOpenGL::goOnWithElasticAt(const std::string &name)
{
    // Not lastClickedToothName: a bracket menu that the right button opened meanwhile changes it.
    ElasticPlacement placement{*state_->bracketSequence};
    const PlacementStep step = placement.stepForClickOn(name);
    if (step == PlacementStep::Close) {
        if (survives([this] { resolveElasticPlacement(); })) state_->lastClickedToothName = name;
        return;
    }
    if (!survives([&] { signalElasticsPlacement(name); })) return;
    placement.take(step, name);
    state_->bracketSequence = placement.sequence;
    state_->lastClickedToothName = placement.sequence.back();
    setNeedsDisplay(true);
}

void DXOpenGL::startElasticColorMenuItemSelected(MenuItem &sender)
{
    const auto size = representedTypeOf<ElasticsSizeType>(sender);
    if (!size || !state_->lastClickedToothName) return;
    const std::string name = *state_->lastClickedToothName;
    if (!survives([&] { signalElasticsPlacement(name); })) return;
    state_->bracketSequence = std::vector<std::string>{name};
    state_->lastElasticsSizeTypeID = size->typeID;
    const auto bracket =
        documentModel() ? modelUnderKey(documentModel()->bracketModels(), name) : nullptr;
    if (!bracket) return;
    state_->savedBracketMaterial = bracket->material();
    state_->highlightMaterial = HVOGLMaterial::materialWithColor_shininess(
        state_->savedBracketMaterial ? state_->savedBracketMaterial->color() : std::nullopt,
        highlightShininess);
    bracket->setMaterial(state_->highlightMaterial);
}

void DXOpenGL::resolveElasticPlacement()
{
    const auto document = documentModel();
    // A host that is told of the elastic may end the placement too; it is placed once all the same.
    if (document && state_->bracketSequence && !state_->isPlacing) {
        // All brackets may have been removed meanwhile, by the menu that the right button opens.
        std::vector<std::string> members = *state_->bracketSequence;
        std::erase_if(members, [&document](const std::string &member) {
            return isHidden(
                isButtonKey(member) ? document->buttonModels() : document->bracketModels(), member);
        });
        // What was left out may have stood between two passes of one member.
        members.erase(std::unique(members.begin(), members.end()), members.end());
        const auto &sizes = document->availableElasticsSizeTypes();
        const auto size = sizes.find(state_->lastElasticsSizeTypeID.value_or(0));
        const auto place = [&] {
            document->placeElasticModel(
                ElasticModel::elasticModelWithElasticsConfigType_elasticsSizeType_bracketSequence(
                    nullptr, size == sizes.end() ? nullptr : size->second, members));
        };
        state_->isPlacing = true;
        if (members.size() >= 2 && !survives(place)) return;
        state_->isPlacing = false;
    }
    endElasticPlacement();
}

void DXOpenGL::endElasticPlacement()
{
    state_->bracketSequence.reset();
    if (!state_->firstClickedToothName) return;
    const auto bracket = documentModel() ? modelUnderKey(documentModel()->bracketModels(),
                                                         *state_->firstClickedToothName)
                                         : nullptr;
    // A bracket that was painted meanwhile, by the menu that the right button opens, keeps that.
    if (bracket && state_->savedBracketMaterial && bracket->material() == state_->highlightMaterial)
        bracket->setMaterial(state_->savedBracketMaterial);
    state_->savedBracketMaterial.reset();
    state_->highlightMaterial.reset();
    signalElasticsPlacement(*state_->firstClickedToothName);
}

void DXOpenGL::placeSelectedElasticsConfigType(MenuItem &sender)
{
    const auto configuration = representedTypeOf<ElasticsConfigType>(sender);
    const auto document = documentModel();
    if (!configuration || !document) return;
    const std::vector<std::string> members = membersOf(configuration->bracketSequence);
    const std::string missingTeeth = namesOfMissingTeeth(*document, members);
    if (!missingTeeth.empty()) {
        AlertPresenter::runModal(
            {translated(QT_TRANSLATE_NOOP("DXOpenGL", "Cannot Place Named Elastic")),
             filled(translated(QT_TRANSLATE_NOOP(
                        "DXOpenGL", "The Elastic Configuration named '%@' cannot be placed because "
                                    "1 or more required teeth for Bracket/Button placement are "
                                    "missing.")),
                    configuration->typeLabel),
             "OK", filled(translated(QT_TRANSLATE_NOOP("DXOpenGL", "Missing: %@")), missingTeeth)});
        return;
    }
    // The host may end the view or itself while it asks: from here on only the document is used.
    const auto mayPlaceAgain = state_->delegate ? state_->delegate->mayPlaceAgain : nullptr;
    if (mayPlaceAgain && hasElasticOver(*document, members) && !mayPlaceAgain(configuration))
        return;
    for (const std::string &member : members) {
        if (isButtonKey(member)) {
            if (isHidden(document->buttonModels(), member))
                document->toggleVisibilityOfButton(member);
        } else if (isHidden(document->bracketModels(), member)) {
            document->bracket_makeVisibleAndSetColorWithBracketColorTypeID(member,
                                                                           noBracketColorTypeID);
        }
    }
    document->placeElasticModel(ElasticModel::elasticModelWithElasticsConfigType(configuration));
}

std::shared_ptr<ElasticModel> DXOpenGL::lastClickedElastic() const
{
    const auto document = documentModel();
    if (!document) return nullptr;
    return document->elasticModelForUniqueID(
        static_cast<std::uint32_t>(state_->lastClickedElasticID));
}

void DXOpenGL::updateElasticColorMenuItemSelected(MenuItem &sender)
{
    const auto size = representedTypeOf<ElasticsSizeType>(sender);
    const auto document = documentModel();
    const auto color = [&] {
        if (size && document)
            document->elasticModel_setElasticsSizeType(lastClickedElastic(), size);
    };
    if (survives(color)) setNeedsDisplay(true);
}

void DXOpenGL::markAllElasticsSelected(MenuItem &sender)
{
    const auto size = representedTypeOf<ElasticsSizeType>(sender);
    const auto document = documentModel();
    if (!size || !document) return;
    if (!tellDelegate(teller(), state_->delegate,
                      &DXOpenGLDelegate::DXOpenGL_willUpdateDocumentModel, *this, *document))
        return;
    // A copy: the host may change the list while it is told of a change.
    const DXDocumentModel::ElasticModels elastics = document->elasticModels();
    const auto markEach = [&] {
        for (const auto &elastic : elastics)
            document->elasticModel_setElasticsSizeType(elastic, size);
    };
    if (!survives(markEach)) return;
    if (tellDelegate(teller(), state_->delegate, &DXOpenGLDelegate::DXOpenGL_didUpdateDocumentModel,
                     *this, *document))
        setNeedsDisplay(true);
}

void DXOpenGL::removeElasticSelected(MenuItem &)
{
    const auto document = documentModel();
    const auto remove = [&] {
        if (document) document->removeElasticModel(lastClickedElastic());
    };
    if (survives(remove)) setNeedsDisplay(true);
}

void DXOpenGL::removeAllElasticsSelected(MenuItem &)
{
    const auto document = documentModel();
    const auto removeEach = [&] {
        if (!document) return;
        // A copy: those that a host places when it is told of a removal are not asked about, and
        // would be without end if they were removed too.
        const DXDocumentModel::ElasticModels elastics = document->elasticModels();
        for (const auto &elastic : elastics)
            document->removeElasticModel(elastic);
    };
    if (survives(removeEach)) setNeedsDisplay(true);
}

void DXOpenGL::nameSelectedElasticsModel(MenuItem &)
{
    const auto document = documentModel();
    if (!document || document->elasticModels().empty()) return;
    if (isInFullScreenMode() && !survives([this] { exitFullScreenModeWithOptions(); })) return;
    if (state_->currentEventElasticIndex >= document->elasticModels().size()) return;
    // A copy: the operation may change the list.
    const auto elastic = document->elasticModels()[state_->currentEventElasticIndex];
    tellDelegate(
        teller(), state_->delegate,
        &DXOpenGLDelegate::launchElasticsConfigAssociationSheetWithElasticModel_namingAction,
        elastic, elasticConfigNamingAction);
}

} // namespace kelo
