#include "keloOpenGL/menus/TreatmentMenus.h"

#include "document/ElasticModel.h"
#include "document/ModelLookup.h"
#include "keloModel/QKModel.h"
#include "keloOpenGL/menus/TreatmentTexts.h"

#include <QtGlobal>

#include <algorithm>
#include <utility>

namespace kelo {
namespace {

const std::string bracketColorEntity = "BracketColorType";
const std::string elasticsSizeEntity = "ElasticsSizeType";
const std::string elasticsConfigEntity = "ElasticsConfigType";

constexpr int rowIndentation = 2;

/// A record without a colour is shown as a white one.
Color colorOrWhite(const std::optional<std::array<double, 4>> &components)
{
    return Color::fromComponents(components).value_or(Color::whiteColor());
}

template<class Type>
CatalogueRow rowOf(const std::shared_ptr<Type> &type,
                   const std::optional<std::array<double, 4>> &color)
{
    return {type->typeLabel, type->typeID, type->displayOrder, colorOrWhite(color), type};
}

} // namespace

CatalogueRows catalogueRows(const DXDocumentModel::BracketColorTypes &types)
{
    CatalogueRows rows;
    for (const auto &[typeID, type] : types)
        rows.push_back(rowOf(type, type->bracketColor));
    return rows;
}

CatalogueRows catalogueRows(const DXDocumentModel::ElasticsSizeTypes &types)
{
    CatalogueRows rows;
    for (const auto &[typeID, type] : types)
        rows.push_back(rowOf(type, type->elasticsColor));
    return rows;
}

TreatmentMenus::TreatmentMenus(MenuImageSource images, Target target)
    : images_(std::move(images)), target_(std::move(target))
{}

std::shared_ptr<MenuItem> TreatmentMenus::addItem(Menu &menu, const std::string &title,
                                                  const std::string &actionName, long tag,
                                                  const Target &target) const
{
    auto item = menu.addItemWithTitle_actionName_action(title, actionName, target(actionName));
    item->tag = tag;
    return item;
}

void TreatmentMenus::
    colorMenu_withMenuItem_withAvailableColorTypes_selectedColorTypeID_entityName_format_target_primaryAction_secondaryAction(
        Menu &menu, MenuItem *parentItem, CatalogueRows types, std::optional<long> selectedTypeID,
        const std::string &entityName, const std::string &format, const Target &target,
        const std::string &primaryAction, const std::string &secondaryAction) const
{
    const QKEntity &entity = QKModel::defaultModel().existingEntityNamed(entityName);
    std::stable_sort(types.begin(), types.end(), [](const CatalogueRow &a, const CatalogueRow &b) {
        return a.displayOrder < b.displayOrder;
    });
    const auto submenu = std::make_shared<Menu>(filled("Color %@ Sub Menu", entity.className));
    const bool isBracketColor = entityName == bracketColorEntity;
    const bool isElasticsSize = entityName == elasticsSizeEntity;
    const bool actsOnAll = isBracketColor || (isElasticsSize && !secondaryAction.empty());
    if (actsOnAll) {
        addItem(menu, "Place/Mark Brackets", "doNothing:", 1, target)->submenu = submenu;
        addItem(menu, filled("Place/Mark %@", entityName), "doNothing:", isBracketColor ? -4 : -2,
                target)
            ->enabled = false;
    }
    const bool showsSelection = checksSelection(primaryAction);
    for (const CatalogueRow &type : types) {
        const std::string title = filled(format, type.typeLabel);
        const auto item = addItem(parentItem ? *submenu : menu, title, primaryAction, -1, target);
        if (!parentItem) item->indentationLevel = rowIndentation;
        if (showsSelection && selectedTypeID == type.typeID) item->state = MenuItemState::On;
        item->representedObject = type.entry;
        item->image =
            images_.color(isBracketColor || isElasticsSize ? type.color : Color::whiteColor());
        if (!actsOnAll) continue;
        const auto itemForAll = addItem(*submenu, title, secondaryAction, 4, target);
        itemForAll->representedObject = type.entry;
        itemForAll->image = images_.doubleColor(type.color);
    }
    if (parentItem) parentItem->submenu = submenu;
}

void TreatmentMenus::
    elasticsConfigMenu_withAvailableConfigTypes_availableSizeTypes_entityName_format_target_primaryAction_secondaryAction(
        Menu &menu, const DXDocumentModel::ElasticsConfigTypes &configTypes,
        const DXDocumentModel::ElasticsSizeTypes &sizeTypes, const std::string &entityName,
        const std::string &, const Target &target, const std::string &primaryAction,
        const std::string &) const
{
    QKModel::defaultModel().existingEntityNamed(entityName);
    const auto header = addItem(menu, {}, "doNothing:", 0, target);
    setTitle(*header, QT_TRANSLATE_NOOP("DXOpenGL", "Place Named Elastic..."));
    if (entityName != elasticsConfigEntity) return;
    bool isEmpty = true;
    for (const auto &configuration : configTypes) {
        if (!configuration->hasAssociatedSequence()) continue;
        isEmpty = false;
        const auto item = addItem(menu, configuration->typeLabel, primaryAction, -1, target);
        item->indentationLevel = rowIndentation;
        item->representedObject = configuration;
        const auto size = configuration->elasticsSizeTypeID > 0
                              ? sizeTypes.find(configuration->elasticsSizeTypeID)
                              : sizeTypes.end();
        item->image =
            images_.color(size == sizeTypes.end() ? Color::whiteColor()
                                                  : colorOrWhite(size->second->elasticsColor));
    }
    if (isEmpty) return;
    header->tag = -4;
    header->image = images_.add();
    menu.addItem(MenuItem::separatorItem());
}

void TreatmentMenus::addCommand(Menu &menu, const MenuCommand &command) const
{
    const auto item = addItem(menu, {}, command.selector, command.tag, target_);
    setTitle(*item, command.text);
    if (command.picture) item->image = (images_.*command.picture)();
}

void TreatmentMenus::addCommands(Menu &menu, MenuKind kind, const MenuContext &context) const
{
    for (const MenuCommand &command : menuCommands()) {
        if (command.menu != kind || !command.text) continue;
        if (command.isShown && !command.isShown(context)) continue;
        if (command.separator == MenuSeparator::Before) menu.addItem(MenuItem::separatorItem());
        addCommand(menu, command);
        if (command.separator == MenuSeparator::After) menu.addItem(MenuItem::separatorItem());
    }
}

std::shared_ptr<Menu> TreatmentMenus::bracketMenu(const MenuContext &context) const
{
    const DXDocumentModel &document = *context.document;
    const std::string tooth = context.toothName.value_or("");
    const bool bracketIsHidden = isHidden(document.bracketModels(), tooth);
    const auto menu = std::make_shared<Menu>(bracketColorEntity + " Menu");
    const auto &selected = document.bracketColorsTypeIDs();
    const auto color = selected.find(tooth);
    colorMenu_withMenuItem_withAvailableColorTypes_selectedColorTypeID_entityName_format_target_primaryAction_secondaryAction(
        *menu, nullptr, catalogueRows(document.availableBracketColorTypes()),
        color == selected.end() ? std::nullopt : std::optional(color->second), bracketColorEntity,
        "%@", target_, bracketIsHidden ? "placeBracketSelected:" : "bracketColorMenuItemSelected:",
        bracketIsHidden ? "placeAllBracketsSelected:" : "markAllBracketsSelected:");
    addCommands(*menu, MenuKind::Bracket, context);
    return menu;
}

void TreatmentMenus::addSizesOfElastic(Menu &menu, const MenuContext &context) const
{
    const DXDocumentModel &document = *context.document;
    const auto &size = document.elasticModels()[context.elasticIndex]->elasticsSizeType();
    colorMenu_withMenuItem_withAvailableColorTypes_selectedColorTypeID_entityName_format_target_primaryAction_secondaryAction(
        menu, nullptr, catalogueRows(document.availableElasticsSizeTypes()),
        size ? std::optional(size->typeID) : std::nullopt, elasticsSizeEntity, "%@", target_,
        "updateElasticColorMenuItemSelected:", "markAllElasticsSelected:");
    menu.addItem(MenuItem::separatorItem());
    menu.addItem(MenuItem::separatorItem());
}

void TreatmentMenus::addStartsOfElastics(Menu &menu, const MenuContext &context) const
{
    const DXDocumentModel &document = *context.document;
    const auto header =
        addItem(menu, filled("Place/Mark %@", elasticsSizeEntity), "doNothing:", -4, target_);
    header->enabled = false;
    colorMenu_withMenuItem_withAvailableColorTypes_selectedColorTypeID_entityName_format_target_primaryAction_secondaryAction(
        menu, header.get(), catalogueRows(document.availableElasticsSizeTypes()), std::nullopt,
        elasticsSizeEntity, "%@", target_, "startElasticColorMenuItemSelected:", "");
    menu.addItem(MenuItem::separatorItem());
    menu.addItem(MenuItem::separatorItem());
    if (document.availableElasticsConfigTypes().empty()) return;
    elasticsConfigMenu_withAvailableConfigTypes_availableSizeTypes_entityName_format_target_primaryAction_secondaryAction(
        menu, document.availableElasticsConfigTypes(), document.availableElasticsSizeTypes(),
        elasticsConfigEntity, "%@", target_, "placeSelectedElasticsConfigType:", "");
}

std::shared_ptr<Menu> TreatmentMenus::elasticMenu(const MenuContext &context) const
{
    const auto menu = std::make_shared<Menu>(elasticsSizeEntity + " Menu");
    if (context.elasticIndex < context.document->elasticModels().size())
        addSizesOfElastic(*menu, context);
    else
        addStartsOfElastics(*menu, context);
    addCommands(*menu, MenuKind::Elastic, context);
    return menu;
}

bool TreatmentMenus::validate(MenuItem &item, const MenuContext &context, int &namingAction) const
{
    if (!item.menu || item.menu->items().empty() || !context.document) return false;
    const auto kind = menuKindOfTitle(item.menu->title());
    const MenuCommand *command = kind ? menuCommand(*kind, item.actionName) : nullptr;
    return command && command->rule({item, context, images_, namingAction});
}

} // namespace kelo
