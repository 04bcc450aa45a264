// The menus' contents. What their rows may do is in TreatmentMenuValidation.cpp.

#include "keloOpenGL/menus/TreatmentMenus.h"

#include "document/ElasticModel.h"
#include "document/ModelLookup.h"
#include "keloModel/QKModel.h"
#include "keloModel/TreatmentNote.h"
#include "keloOpenGL/menus/TreatmentTexts.h"
#include "models/DXGLightweightModel.h"

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

std::shared_ptr<MenuItem> TreatmentMenus::addTextItem(Menu &menu, const char *text,
                                                      const std::string &actionName, long tag,
                                                      const Target &target) const
{
    const auto item = addItem(menu, {}, actionName, tag, target);
    setTitle(*item, text);
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
    const bool showsSelection = primaryAction == "bracketColorMenuItemSelected:" ||
                                primaryAction == "updateElasticColorMenuItemSelected:";
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
    const auto header = addTextItem(menu, QT_TRANSLATE_NOOP("DXOpenGL", "Place Named Elastic..."),
                                    "doNothing:", 0, target);
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

void TreatmentMenus::addRemoval(Menu &menu, const char *text, const std::string &actionName,
                                const char *textForAll, const std::string &actionNameForAll) const
{
    addTextItem(menu, text, actionName, -1, target_)->image = images_.remove();
    addTextItem(menu, textForAll, actionNameForAll, 4, target_)->image = images_.doubleRemove();
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

    const auto addPlacing = [&](const char *text, const std::string &action) {
        menu->addItem(MenuItem::separatorItem());
        addTextItem(*menu, text, action, -1, target_)->image = images_.add();
    };
    const auto addRemoving = [&](const char *text, const std::string &action) {
        menu->addItem(MenuItem::separatorItem());
        addTextItem(*menu, text, action, -1, target_)->image = images_.remove();
    };
    if (isHidden(document.buttonModels(), TreatmentNote::buttonNameForToothName(tooth)))
        addPlacing(QT_TRANSLATE_NOOP("DXOpenGL", "Place Lingual Button"), "placeButtonSelected:");
    else
        addRemoving(QT_TRANSLATE_NOOP("DXOpenGL", "Remove Lingual Button"),
                    "removeButtonSelected:");
    const auto toothModel = document.toothModels().find(tooth);
    if (toothModel != document.toothModels().end() && toothModel->second->hiddenPrimary())
        addPlacing(QT_TRANSLATE_NOOP("DXOpenGL", "Place Tooth"), "placeToothSelected:");
    else
        addRemoving(QT_TRANSLATE_NOOP("DXOpenGL", "Remove Tooth"), "removeToothSelected:");
    menu->addItem(MenuItem::separatorItem());
    addRemoval(*menu, QT_TRANSLATE_NOOP("DXOpenGL", "Remove Bracket"),
               "removeBracketSelected:", QT_TRANSLATE_NOOP("DXOpenGL", "Remove All Brackets"),
               "removeAllBracketsSelected:");
    return menu;
}

std::shared_ptr<Menu> TreatmentMenus::elasticMenu(const MenuContext &context) const
{
    const DXDocumentModel &document = *context.document;
    const auto menu = std::make_shared<Menu>(elasticsSizeEntity + " Menu");
    const auto sizes = catalogueRows(document.availableElasticsSizeTypes());
    const auto addSeparator = [&menu] { menu->addItem(MenuItem::separatorItem()); };
    if (context.elasticIndex < document.elasticModels().size()) {
        const auto &size = document.elasticModels()[context.elasticIndex]->elasticsSizeType();
        colorMenu_withMenuItem_withAvailableColorTypes_selectedColorTypeID_entityName_format_target_primaryAction_secondaryAction(
            *menu, nullptr, sizes, size ? std::optional(size->typeID) : std::nullopt,
            elasticsSizeEntity, "%@", target_,
            "updateElasticColorMenuItemSelected:", "markAllElasticsSelected:");
        addSeparator();
        addSeparator();
        addTextItem(*menu, QT_TRANSLATE_NOOP("DXOpenGL", "Name This Elastic..."),
                    "nameSelectedElasticsModel:", -1, target_)
            ->image = images_.pencil();
        addSeparator();
    } else {
        const auto header =
            addItem(*menu, filled("Place/Mark %@", elasticsSizeEntity), "doNothing:", -4, target_);
        header->enabled = false;
        colorMenu_withMenuItem_withAvailableColorTypes_selectedColorTypeID_entityName_format_target_primaryAction_secondaryAction(
            *menu, header.get(), sizes, std::nullopt, elasticsSizeEntity, "%@", target_,
            "startElasticColorMenuItemSelected:", "");
        addSeparator();
        addSeparator();
        if (!document.availableElasticsConfigTypes().empty()) {
            elasticsConfigMenu_withAvailableConfigTypes_availableSizeTypes_entityName_format_target_primaryAction_secondaryAction(
                *menu, document.availableElasticsConfigTypes(),
                document.availableElasticsSizeTypes(), elasticsConfigEntity, "%@", target_,
                "placeSelectedElasticsConfigType:", "");
        }
    }
    addRemoval(*menu, QT_TRANSLATE_NOOP("DXOpenGL", "Remove Elastic"),
               "removeElasticSelected:", QT_TRANSLATE_NOOP("DXOpenGL", "Remove All Elastics"),
               "removeAllElasticsSelected:");
    return menu;
}

} // namespace kelo
