#include "platform/widgets/Document.h"

#include "platform/widgets/WidgetPresenters.h"
#include "platform/widgets/WindowController.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace kelo {

Document::Document()
{
    useWidgetPresenters();
}

Document::~Document() = default;

WindowController &Document::addWindowController(std::unique_ptr<WindowController> controller)
{
    WindowController &added = *controller;
    controllers_.push_back(std::move(controller));
    added.setDocument(this);
    return added;
}

void Document::showWindows()
{
    if (controllers_.empty()) makeWindowControllers();
    // By index: whoever handles a window's appearing may add windows.
    for (std::size_t i = 0; i < controllers_.size(); ++i)
        controllers_[i]->showWindow();
}

bool Document::respondsToSelector(const std::string &selector) const
{
    static constexpr std::array<std::string_view, 4> commands{
        "saveDocument:", "saveDocumentAs:", "closeDocument:", "showWindows"};
    return std::find(commands.begin(), commands.end(), selector) != commands.end();
}

bool Document::validateMenuItem(MenuItem &item) const
{
    return respondsToSelector(item.actionName);
}

bool Document::close()
{
    if (!closeWindowsExcept(nullptr)) return false;
    if (isClosed_) return true; // before, or by a window whose closing closes the document
    isClosed_ = true;
    emit closed();
    return true;
}

bool Document::closeOtherWindows(const WindowController &remaining)
{
    return closeWindowsExcept(&remaining);
}

bool Document::closeWindowsExcept(const WindowController *remaining)
{
    // By index: whoever handles a window's closing may add windows.
    for (std::size_t i = 0; !isClosed_ && i < controllers_.size(); ++i) {
        WindowController *const controller = controllers_[i].get();
        if (controller != remaining && !controller->close()) return false;
    }
    return true;
}

} // namespace kelo
