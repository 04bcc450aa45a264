#pragma once

#include "base/Export.h"

#include <any>
#include <functional>
#include <memory>
#include <string>
#include <vector>

class QImage;

namespace kelo {

struct Event;
class Menu;
class OpenGLView;

enum class MenuItemState { Off, On, Mixed };

/// One row of a menu, as data.
struct KELO_EXPORT MenuItem
{
    /// What scripts and hosts know the row by.
    std::string title;
    /// What the menu shows in the title's place, such as the title in the user's language; empty
    /// to show the title. Who changes the title of a row that has one changes or clears this too.
    std::string shownTitle;
    /// The action's selector, such as "placeToothSelected:"; empty for a row without action.
    std::string actionName;
    std::function<void(MenuItem &)> action;
    long tag = 0;
    bool enabled = true;
    bool separator = false;
    MenuItemState state = MenuItemState::Off;
    int indentationLevel = 0;
    std::shared_ptr<const QImage> image; ///< shown before the title; may be null
    std::shared_ptr<Menu> submenu;       ///< may be null
    std::any representedObject;          ///< what the row stands for, for its action to read
    /// The menu that the row is in, or null. Set by Menu, not owned.
    Menu *menu = nullptr;

    static std::shared_ptr<MenuItem> separatorItem();
    /// Whether there is anything that choosing the row does, or is said to do.
    bool hasAction() const { return action || !actionName.empty(); }
};

/// The record that a row stands for; null when it stands for nothing, or for one of another kind.
template<class Record>
std::shared_ptr<Record> representedTypeOf(const MenuItem &item)
{
    const auto *record = std::any_cast<std::shared_ptr<Record>>(&item.representedObject);
    return record ? *record : nullptr;
}

/// Whoever fills or validates a menu when it is about to open. Not owned by the menu.
class KELO_EXPORT MenuDelegate
{
public:
    virtual ~MenuDelegate() = default;
    /// Called for the menu, and for each of its submenus, every time before it is shown.
    virtual void menuNeedsUpdate(Menu &menu) { (void)menu; }
    /// Whether the row can be chosen; asked for each row with an action while autoenablesItems.
    /// May change the row, its title and image for example.
    virtual bool validateMenuItem(MenuItem &item) { return item.enabled; }
    /// Called once when the menu has closed, with or without a choice, after the chosen row's
    /// action. Not called for submenus.
    virtual void menuDidClose(Menu &menu) { (void)menu; }
};

/// A menu as data: what it shows is decided before, how it is shown is the presenter's affair.
class KELO_EXPORT Menu
{
public:
    explicit Menu(std::string title = {}) : title_(std::move(title)) {}
    ~Menu();
    Menu(const Menu &) = delete;
    Menu &operator=(const Menu &) = delete;

    const std::string &title() const { return title_; }
    std::vector<std::shared_ptr<MenuItem>> &items() { return items_; }
    const std::vector<std::shared_ptr<MenuItem>> &items() const { return items_; }
    std::shared_ptr<MenuItem> addItem(std::shared_ptr<MenuItem> item);
    std::shared_ptr<MenuItem>
    addItemWithTitle_actionName_action(const std::string &title, const std::string &actionName,
                                       std::function<void(MenuItem &)> action);
    /// The first row with this tag, or null. Submenus are not looked through.
    std::shared_ptr<MenuItem> itemWithTag(long tag) const;

    /// Not owned. A submenu without a delegate of its own has its parent's.
    MenuDelegate *delegate = nullptr;
    bool autoenablesItems = true;

    /// Brings the menu up to date: menuNeedsUpdate, then validation of every row with an action
    /// from top to bottom, then the same for the submenus. Rows without an action, and all rows of
    /// a menu that does not autoenable, stay as they are.
    void update();

    /// For presenters, when the menu has disappeared: runs the action of the chosen row (a row of
    /// this menu or of a submenu; null: none was chosen; a disabled row's action does not run),
    /// then tells the delegate menuDidClose.
    void close(const std::shared_ptr<MenuItem> &chosenItem);

private:
    void update(MenuDelegate *inheritedDelegate);

    std::string title_;
    std::vector<std::shared_ptr<MenuItem>> items_;
};

/// Shows context menus. The default presenter pops up a native menu and returns when it has closed;
/// scripts put one that keeps the menu open as data until an item is chosen.
class KELO_EXPORT ContextMenuPresenter
{
public:
    using Presenter =
        std::function<void(const std::shared_ptr<Menu> &, const Event &, OpenGLView &)>;

    /// Updates the menu and shows it at the event's location in the view. The chosen item's action
    /// has run when this returns, unless the presenter defers it.
    static void popUpContextMenu(const std::shared_ptr<Menu> &menu, const Event &event,
                                 OpenGLView &view);
    /// Replaces the presenter and returns the one before it (empty for the default); an empty
    /// function restores the default.
    static Presenter setPresenter(Presenter presenter);
    /// The default presenter, which the one that is set may leave a menu to: a native menu with
    /// icons and check marks, whose transient parent is the top-level window of the view. The run
    /// loop is in the EventTracking mode while the menu is open. The menu opens beside the event's
    /// location, never over it, and the press that it opens for chooses nothing in it: neither its
    /// release, wherever that is, nor the second press of a double click. For a view without a
    /// window the menu opens at the pointer. Without a QApplication no menu can be shown: it closes
    /// at once without a choice.
    /// Buttons and keys that are released over the menu are so for the view, before the choice is
    /// acted on or after it (OpenGLView::lendInput). The view may end while the menu is open; the
    /// menu then closes without a choice and without telling the delegate.
    static void popUpNativeMenu(const std::shared_ptr<Menu> &menu, const Event &event,
                                OpenGLView &view);
};

} // namespace kelo
