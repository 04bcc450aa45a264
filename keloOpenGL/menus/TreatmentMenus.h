#pragma once

#include "document/DXDocumentModel.h"
#include "keloOpenGL/menus/MenuCommand.h"
#include "models/Color.h"
#include "platform/presenters/Menu.h"

#include <any>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kelo {

/// One row of a catalogue as a menu shows it.
struct CatalogueRow
{
    std::string typeLabel;
    long typeID = 0;
    long displayOrder = 0;
    Color color = Color::whiteColor();
    std::any entry; ///< the record, as the row's represented object
};

using CatalogueRows = std::vector<CatalogueRow>;
CatalogueRows catalogueRows(const DXDocumentModel::BracketColorTypes &types);
CatalogueRows catalogueRows(const DXDocumentModel::ElasticsSizeTypes &types);

/// Builds the two context menus of the treatment view from its commands and the host's catalogues,
/// and validates their rows each time they open. Titles are English; the shown titles of rows that
/// no catalogue names are in the user's language.
///
/// Tags say what a row is: -1 acts on one thing; 4 acts on all brackets or elastics; 1 holds the
/// submenu of the rows that act on all; -4 and -2 are headers, -2 that of an existing elastic; -3
/// is a row without action that is always enabled.
class TreatmentMenus
{
public:
    /// Gives what a row with this selector does.
    using Target = std::function<std::function<void(MenuItem &)>(const std::string &actionName)>;

    TreatmentMenus(MenuImageSource images, Target target);

    /// @name Builders
    /// Both throw NoEntityForName for an entity that the default data model does not know.
    /// @{
    /// Adds one row per catalogue entry, in the order of displayOrder: to the submenu of
    /// `parentItem` if there is one, else to the menu, indented. Titles are the format with the
    /// entry's label in place of "%@". For bracket colours, and for sizes with a secondary action,
    /// a row that holds a submenu of rows with the secondary action, and a header, come first. An
    /// empty secondary action is none. Entries of any other entity are white.
    void
    colorMenu_withMenuItem_withAvailableColorTypes_selectedColorTypeID_entityName_format_target_primaryAction_secondaryAction(
        Menu &menu, MenuItem *parentItem, CatalogueRows types, std::optional<long> selectedTypeID,
        const std::string &entityName, const std::string &format, const Target &target,
        const std::string &primaryAction, const std::string &secondaryAction) const;
    /// Adds "Place Named Elastic..." and a row for each configuration that has a sequence. The
    /// format and the secondary action are not looked at.
    void
    elasticsConfigMenu_withAvailableConfigTypes_availableSizeTypes_entityName_format_target_primaryAction_secondaryAction(
        Menu &menu, const DXDocumentModel::ElasticsConfigTypes &configTypes,
        const DXDocumentModel::ElasticsSizeTypes &sizeTypes, const std::string &entityName,
        const std::string &format, const Target &target, const std::string &primaryAction,
        const std::string &secondaryAction) const;
    /// @}

    /// For a tooth, its bracket or its lingual button.
    std::shared_ptr<Menu> bracketMenu(const MenuContext &context) const;
    /// For an elastic, or for a bracket or button when elasticIndex is out of the list.
    std::shared_ptr<Menu> elasticMenu(const MenuContext &context) const;

    /// Whether a row can be chosen, by its menu's title, its action and its tag; gives headers
    /// their titles and images. The naming row sets `namingAction` to 1 for an elastic that has a
    /// configuration, else to 0.
    bool validate(MenuItem &item, const MenuContext &context, int &namingAction) const;

private:
    std::shared_ptr<MenuItem> addItem(Menu &menu, const std::string &title,
                                      const std::string &actionName, long tag,
                                      const Target &target) const;
    /// The rows of a menu that no catalogue names.
    void addCommands(Menu &menu, MenuKind kind, const MenuContext &context) const;
    void addCommand(Menu &menu, const MenuCommand &command) const;
    /// The sizes, for the elastic that the menu is about or for one that begins, and the named
    /// elastics.
    void addSizesOfElastic(Menu &menu, const MenuContext &context) const;
    void addStartsOfElastics(Menu &menu, const MenuContext &context) const;

    MenuImageSource images_;
    Target target_;
};

} // namespace kelo
