#include "platform/widgets/WidgetPresenters.h"

#include "platform/presenters/DesktopPresenters.h"
#include "platform/widgets/AlertBox.h"
#include "platform/widgets/NativeMenu.h"
#include "platform/widgets/PopupInput.h"
#include "platform/widgets/ToolTip.h"
#include "platform/widgets/ViewContainer.h"

namespace kelo {

void useWidgetPresenters()
{
    static bool isDone = false;
    if (isDone) return;
    setDesktopPresenters({runModalAlertBox, popUpNativeContextMenu, showToolTip, hideToolTip,
                          passToOpenPopup, makeViewContainer});
    isDone = true;
}

} // namespace kelo
