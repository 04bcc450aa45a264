#include "tools/lightbake/CommandLine.h"

#include "tools/lightbake/Bake.h"

#include <exception>
#include <ostream>

namespace kelo {
namespace {

constexpr const char *usage = "usage: lightbake DIR\n";

constexpr const char *help =
    "\n"
    "Computes for every vertex of the OBJ files in DIR, named as in the library's resource "
    "bundle,\n"
    "how much light reaches it with the jaws closed and with the jaws apart, and its tone, and\n"
    "writes them next to the mesh: _tooth_8.light for _tooth_8.obj. Files that were made from the\n"
    "same meshes are left alone.\n"
    "\n"
    "  --help  this text\n"
    "\n"
    "Exit status: 0, 1 meshes that cannot be read or files that cannot be written, 2 wrong use.\n";

} // namespace

int runLightbake(const std::vector<std::string> &arguments, std::ostream &out, std::ostream &error)
{
    if (arguments.size() == 1 && arguments[0] == "--help") {
        out << usage << help;
        return 0;
    }
    if (arguments.size() != 1 || arguments[0].starts_with("-")) {
        error << "lightbake: one folder of meshes is needed\n" << usage;
        return 2;
    }
    try {
        const std::size_t count = lightbake::bakeFolder(arguments[0]);
        if (count == 0)
            out << "baked light: nothing has changed\n";
        else
            out << "baked light: " << count << (count == 1 ? " file\n" : " files\n");
        return 0;
    } catch (const std::exception &failure) {
        error << "lightbake: " << failure.what() << '\n';
        return 1;
    }
}

} // namespace kelo
