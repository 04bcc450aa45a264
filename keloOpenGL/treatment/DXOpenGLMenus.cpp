// The context menus of the view: popping them up, validating their rows, and running them.

#include "keloOpenGL/treatment/DXOpenGL.h"
#include "keloOpenGL/treatment/DXOpenGLState.h"

#include "document/DXDocumentModel.h"
#include "document/ElasticModel.h"
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
    return {documentModel().get(), state_->currentEventToothName, state_->currentEventElasticIndex};
}

void DXOpenGL::popUp(const std::shared_ptr<Menu> &menu, const Event &event)
{
    state_->openMenus.add(menu, *this);
    ContextMenuPresenter::popUpContextMenu(menu, event, *this);
}

void DXOpenGL::displayBracketMenuForEvent(const Event &event)
{
    if (!documentModel() || !state_->currentEventToothName) return;
    const auto menu = treatmentMenus().bracketMenu(menuContext());
    state_->repeatPeriod.withdraw();
    state_->lastClickedToothName = state_->currentEventToothName;
    popUp(menu, event);
}

void DXOpenGL::displayElasticMenuForEvent(const Event &event)
{
    if (!documentModel()) return;
    const auto menu = treatmentMenus().elasticMenu(menuContext());
    noteWhatElasticMenuIsAbout();
    popUp(menu, event);
}

void DXOpenGL::noteWhatElasticMenuIsAbout()
{
    const auto &elastics = documentModel()->elasticModels();
    const std::uint64_t index = state_->currentEventElasticIndex;
    index < elastics.size() ? noteElasticOfMenu(*elastics[index]) : noteBeginOfMenu();
}

void DXOpenGL::noteElasticOfMenu(const ElasticModel &elastic)
{
    state_->lastClickedElasticID = elastic.uniqueID();
    state_->elasticWasClicked = true;
}

void DXOpenGL::noteBeginOfMenu()
{
    state_->firstClickedToothName = state_->currentEventToothName;
    state_->lastClickedToothName = state_->currentEventToothName;
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
