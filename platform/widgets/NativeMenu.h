#pragma once

#include "platform/presenters/Menu.h"

#include <memory>

class QAction;
class QMenu;

namespace kelo {

/// Fills a native menu with the rows of a menu that is up to date, submenus included: shown titles
/// (the titles of rows without one), images at their own sizes in points, check marks, disabled
/// rows and separators; an indented row's title starts with two em spaces a level, as the native
/// menu knows no indentation. An ampersand in a title is shown as it is. The actions do nothing by
/// themselves: itemOfAction tells which row one stands for.
void fillNativeMenu(QMenu &nativeMenu, const Menu &menu);

/// The row that an action of a native menu filled by fillNativeMenu stands for; null for null, and
/// for an action that stands for none. The native menu keeps the rows alive.
std::shared_ptr<MenuItem> itemOfAction(const QAction *action);

/// What ContextMenuPresenter::popUpNativeMenu does.
void popUpNativeContextMenu(const std::shared_ptr<Menu> &menu, const Event &event,
                            OpenGLView &view);

} // namespace kelo
