#pragma once

#include "models/Color.h"
#include "platform/presenters/Menu.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace kelo {

class DXDocumentModel;

// The commands of the treatment view's two context menus, as one table: what a menu shows, when it
// can be chosen and what the view is asked to do are looked up there and nowhere else. A new row of
// a menu is a row of the table, in MenuCommand.cpp, and the method of its selector, in
// treatment/MenuMethods.cpp.

/// Where the pictures of the rows come from, so that menus can be tested without painting.
struct MenuImageSource
{
    using Image = std::shared_ptr<const QImage>;
    std::function<Image(const Color &)> color;       ///< a swatch
    std::function<Image(const Color &)> doubleColor; ///< two swatches
    std::function<Image()> add, placeAll, remove, doubleRemove, pencil;
};

/// What the menus are about: the state of a view when a menu opens.
struct MenuContext
{
    const DXDocumentModel *document = nullptr;
    std::optional<std::string> toothName; ///< under the pointer
    std::uint64_t elasticIndex = 0;       ///< under the pointer; out of the list for none
};

/// A row whose menu is about to open.
struct MenuRow
{
    MenuItem &item;
    const MenuContext &context; ///< with a document
    const MenuImageSource &images;
    int &namingAction; ///< what the naming row found; see elasticConfigNamingAction
};

enum class MenuKind {
    Bracket, ///< for a tooth, its bracket or its lingual button
    Elastic  ///< for an elastic, or for a bracket or button that one may begin on
};

/// The line that sets a row apart from its neighbours.
enum class MenuSeparator { None, Before, After };

struct MenuCommand
{
    using Picture = std::function<MenuImageSource::Image()> MenuImageSource::*;

    MenuKind menu;
    const char *selector;
    /// Whether the row can be chosen. May change its title and its picture.
    bool (*rule)(const MenuRow &row);
    /// The row's text, marked for translation in the context "DXOpenGL". Null for commands whose
    /// rows are made from a catalogue, and for headers.
    const char *text = nullptr;
    Picture picture = nullptr;
    long tag = -1; ///< see TreatmentMenus
    MenuSeparator separator = MenuSeparator::None;
    /// Whether the menu has the row at all. Null for always.
    bool (*isShown)(const MenuContext &context) = nullptr;
    /// Whether the catalogue's row that is in force already has a check mark.
    bool checksSelection = false;
};

/// All commands; those with a text in the order in which the menus have them.
std::span<const MenuCommand> menuCommands();
/// The command of this menu that has the selector; null for none.
const MenuCommand *menuCommand(MenuKind menu, std::string_view selector);
/// Whether a row with this selector checks the selection; false for an unknown selector.
bool checksSelection(std::string_view selector);

/// The menus with this title: "BracketColorType Menu", "ElasticsSizeType Menu", and the titles of
/// their submenus. Nothing for any other.
std::optional<MenuKind> menuKindOfTitle(std::string_view title);

} // namespace kelo
