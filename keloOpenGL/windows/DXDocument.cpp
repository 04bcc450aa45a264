#include "keloOpenGL/windows/DXDocument.h"

#include "keloOpenGL/windows/SolidWindowController.h"

#include <algorithm>
#include <utility>

namespace kelo {
namespace {

auto hasNibName(const std::string &name)
{
    return [&name](const auto &controller) { return controller->windowNibName() == name; };
}

} // namespace

DXDocument::DXDocument() : model_(std::make_shared<DXDocumentModel>()) {}

DXDocument::~DXDocument() = default;

void DXDocument::makeWindowControllers()
{
    WindowController &controller =
        addWindowController(std::make_unique<SolidWindowController>("SolidView"));
    controller.setShouldCloseDocument(true);
    windowControllerDidLoadNib(controller);
}

WindowController *
DXDocument::existingWindowControllerForWindowNibName(const std::string &name) const
{
    const auto &controllers = windowControllers();
    const auto found = std::find_if(controllers.begin(), controllers.end(), hasNibName(name));
    return found == controllers.end() ? nullptr : found->get();
}

WindowController &
DXDocument::showUniqueWindowWithNibName_controllerClass(const std::string &name,
                                                        const ControllerClass &make)
{
    WindowController *controller = existingWindowControllerForWindowNibName(name);
    if (!controller) controller = &addWindowController(make(name));
    controller->showWindow();
    return *controller;
}

WindowController &DXDocument::showUniqueWindowWithNibName(const std::string &name)
{
    return showUniqueWindowWithNibName_controllerClass(name, controllerClass<WindowController>());
}

bool DXDocument::respondsToSelector(const std::string &selector) const
{
    if (selector == "saveDocument:" || selector == "saveDocumentAs:") return false;
    return Document::respondsToSelector(selector);
}

bool DXDocument::validateMenuItem(MenuItem &) const
{
    return true;
}

} // namespace kelo
