#include "tools/banddepth/CommandLine.h"

#include "tools/banddepth/Report.h"

#include <charconv>
#include <filesystem>
#include <optional>
#include <ostream>
#include <stdexcept>

namespace kelo {
namespace {

constexpr const char *usage = "usage: banddepth --meshes DIR [--catalogue FILE] [--limit MM]\n";

constexpr const char *help =
    "\n"
    "Measures how deep the centre lines of elastic bands run inside teeth, brackets (with lingual\n"
    "buttons) and gums: every pair of the sequence tables and every named configuration, with the\n"
    "jaws closed and turned by 8, 15, 25, 35 and 45 degrees in both directions.\n"
    "\n"
    "  --meshes DIR      the OBJ files, named as in the library's resource bundle\n"
    "  --catalogue FILE  the named configurations; otherwise DIR/catalogue.json, if it is there\n"
    "  --limit MM        how deep a band of the tables may run in a tooth at the closed mouth\n"
    "  --help            this text\n"
    "\n"
    "Exit status: 0, or 1 if a band runs deeper than the limit, 2 wrong use or bad files.\n";

struct Request
{
    std::string meshes;
    std::string catalogue;
    std::optional<double> limit;
    bool help = false;
};

/// A text that says what is wrong with the arguments.
struct WrongUse : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

double limitFrom(const std::string &text)
{
    double limit = 0.0;
    const char *const end = text.data() + text.size();
    const auto [stopped, error] = std::from_chars(text.data(), end, limit);
    // Written so that a limit that is not a number is refused too.
    if (error != std::errc() || stopped != end || !(limit >= 0.0))
        throw WrongUse("'" + text + "' is no limit in millimetres");
    return limit;
}

Request requestFrom(const std::vector<std::string> &arguments)
{
    Request request;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string &option = arguments[i];
        const auto value = [&]() -> const std::string & {
            if (i + 1 == arguments.size()) throw WrongUse(option + " needs a value");
            return arguments[++i];
        };
        if (option == "--meshes")
            request.meshes = value();
        else if (option == "--catalogue")
            request.catalogue = value();
        else if (option == "--limit")
            request.limit = limitFrom(value());
        else if (option == "--help")
            request.help = true;
        else
            throw WrongUse("unknown option " + option);
    }
    if (!request.help && request.meshes.empty()) throw WrongUse("no folder of meshes");
    return request;
}

std::string catalogueOf(const Request &request)
{
    if (!request.catalogue.empty()) return request.catalogue;
    const auto beside = std::filesystem::path(request.meshes) / "catalogue.json";
    return std::filesystem::exists(beside) ? beside.string() : std::string();
}

int measure(const Request &request, std::ostream &out)
{
    using namespace banddepth;
    std::vector<Band> bands = bandsOfTables();
    if (const std::string catalogue = catalogueOf(request); !catalogue.empty())
        for (Band &band : bandsOfCatalogue(catalogue))
            bands.push_back(std::move(band));
    const Scene scene = sceneOfFolder(request.meshes);
    const std::vector<Finding> findings = allFindings(scene, bands);
    writeReport(scene, bands, findings, out);
    if (!request.limit) return 0;
    const bool isWithin = worstInToothAtClosedMouth(scene, bands, findings) <= *request.limit;
    out << "\nlimit: " << (isWithin ? "kept\n" : "passed\n");
    return isWithin ? 0 : 1;
}

} // namespace

int runBanddepth(const std::vector<std::string> &arguments, std::ostream &out, std::ostream &error)
{
    try {
        const Request request = requestFrom(arguments);
        if (!request.help) return measure(request, out);
        out << usage << help;
        return 0;
    } catch (const WrongUse &wrong) {
        error << "banddepth: " << wrong.what() << '\n' << usage;
    } catch (const std::exception &failure) {
        error << "banddepth: " << failure.what() << '\n';
    }
    return 2;
}

} // namespace kelo
