#pragma once

#include <QByteArray>

namespace kelo {
class DXOpenGL;
}

namespace viewer {

/// The scene as the view shows it, as one OBJ text: every visible model under its jaw's transform
/// and every band, one group each (`o tooth_8`, `o bracket_8`, `o button_8l`, `o upper_gums`,
/// `o elastic_0`), in millimetres. Parts of the scene that the view leaves out are left out here
/// too, with the bands that run over an arch that is left out.
QByteArray sceneAsOBJ(const kelo::DXOpenGL &view);

} // namespace viewer
