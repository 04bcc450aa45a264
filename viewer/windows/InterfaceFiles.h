#pragma once

namespace viewer {

/// Makes the viewer's own interface files and the widgets in them known; once, before one of them
/// is loaded.
void addViewerInterfaceFiles();

} // namespace viewer
