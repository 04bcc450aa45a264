#include "platform/widgets/Document.h"

#include "platform/widgets/WindowController.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace kelo {

Document::Document() = default;
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
    for (const auto &controller : controllers_)
        controller->showWindow();
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

void Document::close()
{
    if (isClosed_) return;
    isClosed_ = true;
    for (const auto &controller : controllers_)
        controller->close();
    emit closed();
}

} // namespace kelo
