// The context menus of the view: popping them up, validating their rows, and running them.

#include "keloOpenGL/treatment/DXOpenGL.h"
#include "keloOpenGL/treatment/DXOpenGLState.h"

#include "document/DXDocumentModel.h"
#include "document/ElasticModel.h"
#include "keloOpenGL/editing/ElasticChanges.h"
#include "keloOpenGL/menus/MenuImages.h"
#include "keloOpenGL/menus/TreatmentMenus.h"
#include "keloOpenGL/treatment/MenuMethods.h"

namespace kelo {
namespace {

/// What a row with this selector does. Whoever shows a menu may keep it for longer than the view
/// lives; then the row does nothing.
std::function<void(MenuItem &)> actionOn(DXOpenGL &view, std::weak_ptr<const void> life,
                                         const std::string &selector)
{
    return [&view, life = std::move(life), &method = menuMethods().at(selector)](MenuItem &sender) {
        if (!life.expired()) method(view, sender);
    };
}

MenuImageSource drawnImages()
{
    return {colorMenuItemImage,    doubleColorMenuItemImage, addMenuItemImage,
            placeAllMenuItemImage, removeMenuItemImage,      doubleRemoveMenuItemImage,
            pencilMenuItemImage};
}

} // namespace

TreatmentMenus DXOpenGL::treatmentMenus()
{
    return {drawnImages(),
            [this](const std::string &selector) { return actionOn(*this, life(), selector); }};
}

MenuContext DXOpenGL::menuContext() const
{
    return {documentModel().get(), state_->events.currentEventToothName,
            state_->events.currentEventElasticIndex};
}

void DXOpenGL::popUp(const std::shared_ptr<Menu> &menu, const Event &event)
{
    state_->openMenus.add(menu, *this);
    ContextMenuPresenter::popUpContextMenu(menu, event, *this);
}

void DXOpenGL::displayBracketMenuForEvent(const Event &event)
{
    if (!documentModel() || !state_->events.currentEventToothName) return;
    const auto menu = treatmentMenus().bracketMenu(menuContext());
    state_->repeatPeriod.end.withdraw();
    state_->events.lastClickedToothName = state_->events.currentEventToothName;
    popUp(menu, event);
}

void DXOpenGL::displayElasticMenuForEvent(const Event &event)
{
    if (!documentModel()) return;
    const auto menu = treatmentMenus().elasticMenu(menuContext());
    const auto elastic = elasticAt(*documentModel(), state_->events.currentEventElasticIndex);
    elastic ? noteMenuAboutElastic(*elastic) : noteMenuAboutMember();
    popUp(menu, event);
}

void DXOpenGL::noteMenuAboutElastic(const ElasticModel &elastic)
{
    state_->events.lastClickedElasticID = elastic.uniqueID();
    state_->events.elasticWasClicked = true;
}

void DXOpenGL::noteMenuAboutMember()
{
    state_->events.firstClickedToothName = state_->events.currentEventToothName;
    state_->events.lastClickedToothName = state_->events.currentEventToothName;
}

bool DXOpenGL::validateMenuItem(MenuItem &item)
{
    return treatmentMenus().validate(item, menuContext(), elasticConfigNamingAction);
}

void DXOpenGL::menuDidClose(Menu &)
{
    const bool controlIsHeld = (currentModifierFlags() & ModifierFlag::Control) != 0;
    if (!controlIsHeld && !repeatActionTimerIsRunning()) restorePermanentMouseMode();
}

} // namespace kelo
