#pragma once

#include <functional>
#include <map>
#include <string>

namespace kelo {

class DXOpenGL;
struct MenuItem;

/// What a row of a menu does: an operation of the view, or a function that takes the view.
using MenuMethod = std::function<void(DXOpenGL &view, MenuItem &sender)>;

/// The methods by selector: one for each of the menus' commands (menus/MenuCommand.h), as a test
/// makes sure. A method may destroy the view.
const std::map<std::string, MenuMethod> &menuMethods();

} // namespace kelo
