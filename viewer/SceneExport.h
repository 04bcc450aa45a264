#pragma once

#include <QByteArray>

namespace kelo {
class HVOGLBasicView;
}

namespace viewer {

/// The scene as it stands, as one OBJ text: every visible model under its jaw's transform, one
/// group each (`o tooth_8`, `o bracket_8`, `o button_8l`, `o upper_gums`), in millimetres.
QByteArray sceneAsOBJ(const kelo::HVOGLBasicView &view);

} // namespace viewer
