#pragma once

#include <functional>
#include <memory>
#include <string>

class QEvent;
class QWidget;
class QWindow;

namespace kelo {

struct Alert;
struct Event;
class Menu;
class OpenGLView;
class ViewSurface;

/// What shows alerts, menus, tool tips and views on the desktop. The rooms that need something
/// shown ask here, so that they need no widgets; platform/widgets registers itself
/// (useWidgetPresenters). Until then each member does what is possible without widgets.
struct DesktopPresenters
{
    /// Shows the alert and returns when it has been answered. By default: writes
    /// AlertPresenter::linesOf to standard error.
    std::function<void(const Alert &)> alert;
    /// Shows a menu that is up to date at the event's location in the view, and closes it. By
    /// default: closes it without a choice.
    std::function<void(const std::shared_ptr<Menu> &, const Event &, OpenGLView &)> contextMenu;
    /// Shows a short help text beside the pointer. By default: nothing.
    std::function<void(const std::string &)> showToolTip;
    std::function<void()> hideToolTip;
    /// Passes an event of the pointer or the keyboard, which came to a window that is no widget's,
    /// to the menu that is open. Returns whether the event was passed on. By default: false.
    std::function<bool(QEvent &, const QWindow &)> passToOpenMenu;
    /// Creates the widget that shows a view and makes it the host of the view's surface. The caller
    /// (or `parent`) owns the widget. By default: throws AssertionFailure.
    std::function<QWidget *(OpenGLView &, ViewSurface &, QWidget *parent)> container;
};

/// The registered presenters; no member is ever empty.
const DesktopPresenters &desktopPresenters();

/// Registers presenters; all members must be set.
void setDesktopPresenters(DesktopPresenters presenters);

} // namespace kelo
