#pragma once

#include "base/Export.h"

#include <memory>
#include <vector>

namespace kelo {

class Menu;
class MenuDelegate;

/// The menus that a delegate has opened. Whoever shows a menu may keep it for longer than its
/// delegate lives; with this object ends what the menus know of the delegate.
class KELO_EXPORT OpenMenus
{
public:
    OpenMenus() = default;
    ~OpenMenus();
    OpenMenus(const OpenMenus &) = delete;
    OpenMenus &operator=(const OpenMenus &) = delete;

    /// Gives the menu its delegate. Neither is owned.
    void add(const std::shared_ptr<Menu> &menu, MenuDelegate &delegate);
    /// Takes the delegate from every menu that still has the one it was added with.
    void release();

private:
    struct OpenMenu
    {
        std::weak_ptr<Menu> menu;
        MenuDelegate *delegate;
    };
    std::vector<OpenMenu> menus_;
};

} // namespace kelo
