#pragma once

#include "base/Export.h"

namespace kelo {

/// Lets alerts, context menus, tool tips and the containers of views be shown with Qt's widgets.
/// The views of this library, its documents and its window controllers call it; only a program that
/// shows an alert before it has any of them calls it itself. Calling it again changes nothing.
/// Needs no application yet.
KELO_EXPORT void useWidgetPresenters();

} // namespace kelo
