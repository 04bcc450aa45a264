#include "platform/presenters/DesktopPresenters.h"

#include "base/Assertion.h"
#include "platform/presenters/Alert.h"
#include "platform/presenters/Menu.h"

#include <cstdio>
#include <utility>

namespace kelo {
namespace {

DesktopPresenters withoutWidgets()
{
    DesktopPresenters presenters;
    presenters.alert = [](const Alert &alert) {
        std::fputs(AlertPresenter::linesOf(alert).c_str(), stderr);
    };
    presenters.contextMenu = [](const std::shared_ptr<Menu> &menu, const Event &, OpenGLView &) {
        menu->close(nullptr);
    };
    presenters.showToolTip = [](const std::string &) {};
    presenters.hideToolTip = [] {};
    presenters.passToOpenMenu = [](QEvent &, const QWindow &) { return false; };
    presenters.container = [](OpenGLView &, ViewSurface &, QWidget *) -> QWidget * {
        throw AssertionFailure("useWidgetPresenters must be called before a view gets a container");
    };
    return presenters;
}

DesktopPresenters &registeredPresenters()
{
    static DesktopPresenters presenters = withoutWidgets();
    return presenters;
}

} // namespace

const DesktopPresenters &desktopPresenters()
{
    return registeredPresenters();
}

void setDesktopPresenters(DesktopPresenters presenters)
{
    const bool isComplete = presenters.alert && presenters.contextMenu && presenters.showToolTip &&
                            presenters.hideToolTip && presenters.passToOpenMenu &&
                            presenters.container;
    assertThat(isComplete, "every desktop presenter must be set");
    registeredPresenters() = std::move(presenters);
}

} // namespace kelo
