#pragma once

#include <QByteArray>

namespace kelo {
class HVOGLBasicView;
}

namespace viewer {

class DelegateCallLog;

/// The view's and the document's state as JSON text, for bug reports and tests. Reading it changes
/// nothing.
QByteArray stateAsJSON(const kelo::HVOGLBasicView &view, const DelegateCallLog &callLog);

} // namespace viewer
