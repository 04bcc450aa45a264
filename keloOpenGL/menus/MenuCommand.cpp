#include "keloOpenGL/menus/MenuCommand.h"

#include "document/DXDocumentModel.h"
#include "document/ElasticModel.h"
#include "document/ModelLookup.h"
#include "keloModel/TreatmentNote.h"
#include "keloOpenGL/menus/TreatmentTexts.h"
#include "models/DXGLightweightModel.h"
#include "models/HVOGLMaterial.h"

#include <QtGlobal>

#include <algorithm>
#include <array>

namespace kelo {
namespace {

using Components = std::optional<std::array<double, 4>>;

/// Tags 1 and 4. As an unsigned number -4 is above these and not above -1 to -4; it is this
/// comparison that decides.
bool actsOnAll(const MenuItem &item)
{
    return static_cast<std::uint64_t>(item.tag) < static_cast<std::uint64_t>(-4L);
}

/// In red, green or blue; a colour that is absent differs from every one that is there.
bool colorsDiffer(const Components &a, const Components &b)
{
    if (!a || !b) return a.has_value() != b.has_value();
    return (*a)[0] != (*b)[0] || (*a)[1] != (*b)[1] || (*a)[2] != (*b)[2];
}

Components materialColor(const DXDocumentModel &document, const std::string &key)
{
    const auto bracket = modelUnderKey(document.bracketModels(), key);
    const auto material = bracket ? bracket->material() : nullptr;
    if (!material || !material->color()) return std::nullopt;
    const Color &color = *material->color();
    return std::array{color.red, color.green, color.blue, color.alpha};
}

/// The colour that the catalogue has for the elastic's size now.
Components sizeColor(const DXDocumentModel &document, const ElasticModel &elastic)
{
    if (!elastic.elasticsSizeType()) return std::nullopt;
    const auto &sizes = document.availableElasticsSizeTypes();
    const auto found = sizes.find(elastic.elasticsSizeType()->typeID);
    return found == sizes.end() ? std::nullopt : found->second->elasticsColor;
}

// What the menus are about.

std::string toothOf(const MenuContext &context)
{
    return context.toothName.value_or("");
}

bool bracketIsHidden(const MenuContext &context)
{
    return isHidden(context.document->bracketModels(), toothOf(context));
}

bool toothIsHidden(const MenuContext &context)
{
    return isHiddenPrimary(modelUnderKey(context.document->toothModels(), toothOf(context)));
}

bool toothIsPlaced(const MenuContext &context)
{
    return !toothIsHidden(context);
}

bool buttonIsHidden(const MenuContext &context)
{
    return isHidden(context.document->buttonModels(),
                    TreatmentNote::buttonNameForToothName(toothOf(context)));
}

bool buttonIsPlaced(const MenuContext &context)
{
    return !buttonIsHidden(context);
}

/// Null for a menu that is not about an elastic.
std::shared_ptr<ElasticModel> elasticOf(const MenuContext &context)
{
    const auto &elastics = context.document->elasticModels();
    return context.elasticIndex < elastics.size() ? elastics[context.elasticIndex] : nullptr;
}

bool isOnElastic(const MenuContext &context)
{
    return elasticOf(context) != nullptr;
}

bool anyBracketIsShown(const DXDocumentModel &document)
{
    const auto &brackets = document.bracketModels();
    return std::any_of(brackets.begin(), brackets.end(), [](const auto &bracket) {
        return !bracket.second->hiddenPrimary() && !bracket.second->hiddenSecondary();
    });
}

// The rules.

bool ruleOfAnyState(const MenuRow &)
{
    return true;
}

bool ruleOfPlacedTooth(const MenuRow &row)
{
    return toothIsPlaced(row.context);
}

bool ruleOfBracketHeader(const MenuRow &row)
{
    MenuItem &item = row.item;
    if (item.tag != 1 && item.tag != -4) return item.tag == -3;
    const bool isForAll = item.tag == 1;
    if (bracketIsHidden(row.context)) {
        setTitle(item, isForAll ? QT_TRANSLATE_NOOP("DXOpenGL", "Place All Brackets")
                                : QT_TRANSLATE_NOOP("DXOpenGL", "Place Bracket"));
        item.image = isForAll ? row.images.placeAll() : row.images.add();
    } else {
        setTitle(item, isForAll ? QT_TRANSLATE_NOOP("DXOpenGL", "Mark All Brackets")
                                : QT_TRANSLATE_NOOP("DXOpenGL", "Mark Bracket"));
        item.image = isForAll ? row.images.doubleColor(Color::whiteColor())
                              : row.images.color(Color::whiteColor());
    }
    return isForAll;
}

bool ruleOfBracketColor(const MenuRow &row)
{
    if (toothIsHidden(row.context)) return false;
    if (actsOnAll(row.item)) return true;
    const auto type = representedTypeOf<BracketColorType>(row.item);
    return colorsDiffer(type ? type->bracketColor : std::nullopt,
                        materialColor(*row.context.document, toothOf(row.context)));
}

bool ruleOfBracketRemoval(const MenuRow &row)
{
    return actsOnAll(row.item) ? anyBracketIsShown(*row.context.document)
                               : !bracketIsHidden(row.context);
}

bool ruleOfElasticHeader(const MenuRow &row)
{
    MenuItem &item = row.item;
    if (item.tag == 1) {
        item.image = row.images.doubleColor(Color::whiteColor());
        setTitle(item, QT_TRANSLATE_NOOP("DXOpenGL", "Mark All Elastics"));
        return true;
    }
    if (item.tag == -2) {
        item.image = row.images.color(Color::whiteColor());
        setTitle(item, QT_TRANSLATE_NOOP("DXOpenGL", "Mark Elastic"));
        return false;
    }
    if (item.tag != -4) return item.tag == -3;
    if (item.title == "Place Named Elastic...") return false;
    item.image = row.images.add();
    setTitle(item, QT_TRANSLATE_NOOP("DXOpenGL", "Start New Elastic"));
    return true;
}

bool ruleOfNaming(const MenuRow &row)
{
    const auto elastic = elasticOf(row.context);
    if (!elastic) return false;
    const auto &configuration = elastic->elasticsConfigType();
    row.namingAction = configuration ? 1 : 0;
    if (configuration)
        setTitle(row.item, QT_TRANSLATE_NOOP("DXOpenGL", "Rename \"%@\" Elastic..."),
                 configuration->typeLabel);
    else
        setTitle(row.item, QT_TRANSLATE_NOOP("DXOpenGL", "Name This Elastic..."));
    return true;
}

bool ruleOfNamedElastic(const MenuRow &row)
{
    const auto configuration = representedTypeOf<ElasticsConfigType>(row.item);
    return configuration && configuration->hasAssociatedSequence();
}

bool ruleOfElasticColor(const MenuRow &row)
{
    if (actsOnAll(row.item)) return true;
    const auto elastic = elasticOf(row.context);
    if (!elastic) return false;
    const auto type = representedTypeOf<ElasticsSizeType>(row.item);
    return colorsDiffer(type ? type->elasticsColor : std::nullopt,
                        sizeColor(*row.context.document, *elastic));
}

bool ruleOfElasticRemoval(const MenuRow &row)
{
    return actsOnAll(row.item) ? !row.context.document->elasticModels().empty()
                               : isOnElastic(row.context);
}

constexpr MenuCommand commandTable[] = {
    {MenuKind::Bracket, "doNothing:", ruleOfBracketHeader},
    {.menu = MenuKind::Bracket,
     .selector = "bracketColorMenuItemSelected:",
     .rule = ruleOfBracketColor,
     .checksSelection = true},
    {MenuKind::Bracket, "markAllBracketsSelected:", ruleOfBracketColor},
    {MenuKind::Bracket, "placeBracketSelected:", ruleOfPlacedTooth},
    {MenuKind::Bracket, "placeAllBracketsSelected:", ruleOfPlacedTooth},
    {MenuKind::Bracket, "placeButtonSelected:", ruleOfPlacedTooth,
     QT_TRANSLATE_NOOP("DXOpenGL", "Place Lingual Button"), &MenuImageSource::add, -1,
     MenuSeparator::Before, buttonIsHidden},
    {MenuKind::Bracket, "removeButtonSelected:", ruleOfPlacedTooth,
     QT_TRANSLATE_NOOP("DXOpenGL", "Remove Lingual Button"), &MenuImageSource::remove, -1,
     MenuSeparator::Before, buttonIsPlaced},
    {MenuKind::Bracket, "placeToothSelected:", ruleOfAnyState,
     QT_TRANSLATE_NOOP("DXOpenGL", "Place Tooth"), &MenuImageSource::add, -1, MenuSeparator::Before,
     toothIsHidden},
    {MenuKind::Bracket, "removeToothSelected:", ruleOfAnyState,
     QT_TRANSLATE_NOOP("DXOpenGL", "Remove Tooth"), &MenuImageSource::remove, -1,
     MenuSeparator::Before, toothIsPlaced},
    {MenuKind::Bracket, "removeBracketSelected:", ruleOfBracketRemoval,
     QT_TRANSLATE_NOOP("DXOpenGL", "Remove Bracket"), &MenuImageSource::remove, -1,
     MenuSeparator::Before},
    {MenuKind::Bracket, "removeAllBracketsSelected:", ruleOfBracketRemoval,
     QT_TRANSLATE_NOOP("DXOpenGL", "Remove All Brackets"), &MenuImageSource::doubleRemove, 4},

    {MenuKind::Elastic, "doNothing:", ruleOfElasticHeader},
    {MenuKind::Elastic, "startElasticColorMenuItemSelected:", ruleOfAnyState},
    {.menu = MenuKind::Elastic,
     .selector = "updateElasticColorMenuItemSelected:",
     .rule = ruleOfElasticColor,
     .checksSelection = true},
    {MenuKind::Elastic, "markAllElasticsSelected:", ruleOfElasticColor},
    {MenuKind::Elastic, "placeSelectedElasticsConfigType:", ruleOfNamedElastic},
    {MenuKind::Elastic, "nameSelectedElasticsModel:", ruleOfNaming,
     QT_TRANSLATE_NOOP("DXOpenGL", "Name This Elastic..."), &MenuImageSource::pencil, -1,
     MenuSeparator::After, isOnElastic},
    {MenuKind::Elastic, "removeElasticSelected:", ruleOfElasticRemoval,
     QT_TRANSLATE_NOOP("DXOpenGL", "Remove Elastic"), &MenuImageSource::remove},
    {MenuKind::Elastic, "removeAllElasticsSelected:", ruleOfElasticRemoval,
     QT_TRANSLATE_NOOP("DXOpenGL", "Remove All Elastics"), &MenuImageSource::doubleRemove, 4},
};

struct MenuTitle
{
    std::string_view title;
    MenuKind menu;
};

/// No builder makes the "Remove" and "ElasticsConfigType" submenus; hosts may.
constexpr MenuTitle menuTitles[] = {
    {"BracketColorType Menu", MenuKind::Bracket},
    {"Color BracketColorType Sub Menu", MenuKind::Bracket},
    {"Remove BracketColorType Sub Menu", MenuKind::Bracket},
    {"ElasticsSizeType Menu", MenuKind::Elastic},
    {"ElasticsConfigType Sub Menu", MenuKind::Elastic},
    {"Color ElasticsSizeType Sub Menu", MenuKind::Elastic},
    {"Remove ElasticsSizeType Sub Menu", MenuKind::Elastic},
};

} // namespace

std::span<const MenuCommand> menuCommands()
{
    return commandTable;
}

const MenuCommand *menuCommand(MenuKind menu, std::string_view selector)
{
    const auto found = std::find_if(std::begin(commandTable), std::end(commandTable),
                                    [&](const MenuCommand &command) {
                                        return command.menu == menu && command.selector == selector;
                                    });
    return found == std::end(commandTable) ? nullptr : found;
}

bool checksSelection(std::string_view selector)
{
    return std::any_of(std::begin(commandTable), std::end(commandTable),
                       [&](const MenuCommand &command) {
                           return command.checksSelection && command.selector == selector;
                       });
}

std::optional<MenuKind> menuKindOfTitle(std::string_view title)
{
    const auto found = std::find_if(std::begin(menuTitles), std::end(menuTitles),
                                    [&](const MenuTitle &row) { return row.title == title; });
    return found == std::end(menuTitles) ? std::nullopt : std::optional(found->menu);
}

} // namespace kelo
