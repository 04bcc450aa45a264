#pragma once

#include <QByteArray>

namespace kelo {
class DXOpenGL;
class Menu;
} // namespace kelo

namespace viewer {

class DelegateCallLog;

/// The view's and the document's state as JSON text, for bug reports and tests, with the context
/// menu that is open (null: none is). Reading it changes nothing.
QByteArray stateAsJSON(const kelo::DXOpenGL &view, const DelegateCallLog &callLog,
                       const kelo::Menu *openMenu = nullptr);

} // namespace viewer
