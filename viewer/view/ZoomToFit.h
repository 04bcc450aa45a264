#pragma once

namespace kelo {
class DXOpenGL;
} // namespace kelo

namespace viewer {

/// Zooms to fit as the view does, and shows the jaws from side to side in a narrow window too. The
/// view's own operation takes a square of the scene whose sides lie inside of the arches: a window
/// that is wider than high shows more to the left and the right, one that is not would cut the
/// molars off. What is shown stays fitted while the window's proportions change; in a window that
/// is a fifth wider than high, or more, the picture is the view's own.
void zoomToFit(kelo::DXOpenGL &view);

} // namespace viewer
