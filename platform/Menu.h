#pragma once

#include "platform/Event.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

class QImage;

namespace kelo {

class Menu;
class OpenGLView;

enum class MenuItemState { Off, On, Mixed };

/// One row of a menu, as data.
struct MenuItem
{
    std::string title;
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

    static std::shared_ptr<MenuItem> separatorItem();
};

/// Whoever fills or validates a menu when it is about to open. Not owned by the menu.
class MenuDelegate
{
public:
    virtual ~MenuDelegate() = default;
    /// Called for the menu, and for each of its submenus, every time before it is shown.
    virtual void menuNeedsUpdate(Menu &menu) { (void)menu; }
    /// Whether the row can be chosen; asked for each row with an action while autoenablesItems.
    virtual bool validateMenuItem(MenuItem &item) { return item.enabled; }
};

/// A menu as data: what it shows is decided before, how it is shown is the presenter's affair.
class Menu
{
public:
    explicit Menu(std::string title = {}) : title_(std::move(title)) {}

    const std::string &title() const { return title_; }
    std::vector<std::shared_ptr<MenuItem>> &items() { return items_; }
    const std::vector<std::shared_ptr<MenuItem>> &items() const { return items_; }
    std::shared_ptr<MenuItem> addItem(std::shared_ptr<MenuItem> item);
    std::shared_ptr<MenuItem> addItemWithTitle_actionName_action(
        const std::string &title, const std::string &actionName,
        std::function<void(MenuItem &)> action);
    /// The first row with this tag, or null.
    std::shared_ptr<MenuItem> itemWithTag(long tag) const;

    MenuDelegate *delegate = nullptr; ///< not owned
    bool autoenablesItems = true;

    /// Brings the menu up to date: menuNeedsUpdate, then validation of every row with an action,
    /// then the same for the submenus.
    void update();

private:
    std::string title_;
    std::vector<std::shared_ptr<MenuItem>> items_;
};

/// Shows context menus. The default presenter pops up a native menu and returns when it has closed;
/// scripts put one that keeps the menu open as data until an item is chosen.
class ContextMenuPresenter
{
public:
    using Presenter =
        std::function<void(const std::shared_ptr<Menu> &, const Event &, OpenGLView &)>;

    /// Updates the menu and shows it at the event's location in the view. The chosen item's action
    /// has run when this returns, unless the presenter defers it.
    static void popUpContextMenu(const std::shared_ptr<Menu> &menu, const Event &event,
                                 OpenGLView &view);
    /// Replaces the presenter and returns the one before it; an empty function brings back the
    /// default.
    static Presenter setPresenter(Presenter presenter);
};

/// The default presenter (platform/widgets): a native menu with icons and check marks, whose
/// transient parent is the top-level window of the view.
void popUpNativeContextMenu(const std::shared_ptr<Menu> &menu, const Event &event,
                            OpenGLView &view);

} // namespace kelo
