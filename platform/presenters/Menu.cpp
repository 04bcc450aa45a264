#include "platform/presenters/Menu.h"

#include "platform/presenters/DesktopPresenters.h"

#include <utility>

namespace kelo {
namespace {

ContextMenuPresenter::Presenter &menuPresenter()
{
    static ContextMenuPresenter::Presenter presenter;
    return presenter;
}

} // namespace

std::shared_ptr<MenuItem> MenuItem::separatorItem()
{
    auto item = std::make_shared<MenuItem>();
    item->separator = true;
    item->enabled = false;
    return item;
}

Menu::~Menu()
{
    for (const auto &item : items_)
        if (item->menu == this) item->menu = nullptr;
}

std::shared_ptr<MenuItem> Menu::addItem(std::shared_ptr<MenuItem> item)
{
    item->menu = this;
    items_.push_back(item);
    return item;
}

std::shared_ptr<MenuItem>
Menu::addItemWithTitle_actionName_action(const std::string &title, const std::string &actionName,
                                         std::function<void(MenuItem &)> action)
{
    auto item = std::make_shared<MenuItem>();
    item->title = title;
    item->actionName = actionName;
    item->action = std::move(action);
    return addItem(std::move(item));
}

std::shared_ptr<MenuItem> Menu::itemWithTag(long tag) const
{
    for (const auto &item : items_)
        if (item->tag == tag) return item;
    return nullptr;
}

void Menu::update()
{
    update(nullptr);
}

void Menu::update(MenuDelegate *inheritedDelegate)
{
    MenuDelegate *asked = delegate ? delegate : inheritedDelegate;
    if (asked) asked->menuNeedsUpdate(*this);
    // A validation may add or remove rows; it goes on with those that stood here at its start.
    const auto items = items_;
    for (const auto &item : items) {
        // Rows that were put straight into items() learn of their menu here.
        item->menu = this;
        if (asked && autoenablesItems && item->hasAction())
            item->enabled = asked->validateMenuItem(*item);
    }
    for (const auto &item : items)
        if (const auto submenu = item->submenu) submenu->update(asked);
}

void Menu::close(const std::shared_ptr<MenuItem> &chosenItem)
{
    if (chosenItem && chosenItem->enabled) {
        // A copy: the action may rebuild the menu that it is written in.
        if (const auto action = chosenItem->action) action(*chosenItem);
    }
    if (delegate) delegate->menuDidClose(*this);
}

void ContextMenuPresenter::popUpContextMenu(const std::shared_ptr<Menu> &menu, const Event &event,
                                            OpenGLView &view)
{
    menu->update();
    // A copy: the presenter may be replaced while it shows the menu.
    if (const Presenter presenter = menuPresenter())
        presenter(menu, event, view);
    else
        popUpNativeMenu(menu, event, view);
}

void ContextMenuPresenter::popUpNativeMenu(const std::shared_ptr<Menu> &menu, const Event &event,
                                           OpenGLView &view)
{
    desktopPresenters().contextMenu(menu, event, view);
}

ContextMenuPresenter::Presenter ContextMenuPresenter::setPresenter(Presenter presenter)
{
    return std::exchange(menuPresenter(), std::move(presenter));
}

} // namespace kelo
