// The context menus of the view: popping them up, and answering for their rows.

#include "keloOpenGL/treatment/DXOpenGL.h"
#include "keloOpenGL/treatment/DXOpenGLState.h"

#include "document/DXDocumentModel.h"
#include "document/ElasticModel.h"
#include "keloOpenGL/menus/MenuImages.h"
#include "keloOpenGL/menus/TreatmentMenus.h"

#include <map>

namespace kelo {
namespace {

using Action = void (DXOpenGL::*)(MenuItem &);

const std::map<std::string, Action> &actionsBySelector()
{
    static const std::map<std::string, Action> actions = {
        {"bracketColorMenuItemSelected:", &DXOpenGL::bracketColorMenuItemSelected},
        {"placeBracketSelected:", &DXOpenGL::placeBracketSelected},
        {"removeBracketSelected:", &DXOpenGL::removeBracketSelected},
        {"placeButtonSelected:", &DXOpenGL::placeButtonSelected},
        {"removeButtonSelected:", &DXOpenGL::removeButtonSelected},
        {"placeToothSelected:", &DXOpenGL::placeToothSelected},
        {"removeToothSelected:", &DXOpenGL::removeToothSelected},
        {"placeAllBracketsSelected:", &DXOpenGL::placeAllBracketsSelected},
        {"markAllBracketsSelected:", &DXOpenGL::markAllBracketsSelected},
        {"removeAllBracketsSelected:", &DXOpenGL::removeAllBracketsSelected},
        {"startElasticColorMenuItemSelected:", &DXOpenGL::startElasticColorMenuItemSelected},
        {"placeSelectedElasticsConfigType:", &DXOpenGL::placeSelectedElasticsConfigType},
        {"updateElasticColorMenuItemSelected:", &DXOpenGL::updateElasticColorMenuItemSelected},
        {"markAllElasticsSelected:", &DXOpenGL::markAllElasticsSelected},
        {"removeElasticSelected:", &DXOpenGL::removeElasticSelected},
        {"removeAllElasticsSelected:", &DXOpenGL::removeAllElasticsSelected},
        {"nameSelectedElasticsModel:", &DXOpenGL::nameSelectedElasticsModel},
        {"doNothing:", &DXOpenGL::doNothing},
    };
    return actions;
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
    return TreatmentMenus(drawnImages(), [this](const std::string &selector) {
        const Action action = actionsBySelector().at(selector);
        // Whoever shows a menu may keep it for longer than the view lives.
        return [this, thisLife = life(), action](MenuItem &sender) {
            if (!thisLife.expired()) (this->*action)(sender);
        };
    });
}

MenuContext DXOpenGL::menuContext() const
{
    return {documentModel().get(), state_->currentEventToothName, state_->currentEventElasticIndex};
}

void DXOpenGL::popUp(const std::shared_ptr<Menu> &menu, const Event &event)
{
    std::erase_if(state_->menus,
                  [](const std::weak_ptr<Menu> &opened) { return opened.expired(); });
    state_->menus.push_back(menu);
    menu->delegate = this;
    ContextMenuPresenter::popUpContextMenu(menu, event, *this);
}

void DXOpenGL::displayBracketMenuForEvent(const Event &event)
{
    if (!documentModel() || !state_->currentEventToothName) return;
    const auto menu = treatmentMenus().bracketMenu(menuContext());
    forgetRepeatActionTimer();
    state_->lastClickedToothName = state_->currentEventToothName;
    popUp(menu, event);
}

void DXOpenGL::displayElasticMenuForEvent(const Event &event)
{
    const auto document = documentModel();
    if (!document) return;
    const auto menu = treatmentMenus().elasticMenu(menuContext());
    if (state_->currentEventElasticIndex < document->elasticModels().size()) {
        state_->lastClickedElasticID =
            document->elasticModels()[state_->currentEventElasticIndex]->uniqueID();
        state_->elasticWasClicked = true;
    } else {
        state_->firstClickedToothName = state_->currentEventToothName;
        state_->lastClickedToothName = state_->currentEventToothName;
    }
    popUp(menu, event);
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
