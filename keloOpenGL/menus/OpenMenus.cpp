#include "keloOpenGL/menus/OpenMenus.h"

#include "platform/presenters/Menu.h"

namespace kelo {

OpenMenus::~OpenMenus()
{
    release();
}

void OpenMenus::add(const std::shared_ptr<Menu> &menu, MenuDelegate &delegate)
{
    std::erase_if(menus_, [](const OpenMenu &opened) { return opened.menu.expired(); });
    menus_.push_back({menu, &delegate});
    menu->delegate = &delegate;
}

void OpenMenus::release()
{
    for (const OpenMenu &opened : menus_) {
        const auto menu = opened.menu.lock();
        if (menu && menu->delegate == opened.delegate) menu->delegate = nullptr;
    }
    menus_.clear();
}

} // namespace kelo
