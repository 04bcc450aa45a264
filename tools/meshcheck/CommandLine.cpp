#include "tools/meshcheck/CommandLine.h"

#include "models/OBJReaderText.h"
#include "tools/meshcheck/MeshCheck.h"

#include <nlohmann/json.hpp>

#include <ostream>

namespace kelo {
namespace {

constexpr const char *usage = "usage: meshcheck [--json] [--strict] DIR|FILE...\n";

constexpr const char *help =
    "\n"
    "Tells what is wrong with OBJ mesh files: one line `file:line: reason` a problem.\n"
    "A folder stands for all files below it whose names end with .obj.\n"
    "Lines are counted as in an editor; line 0 is the file as a whole.\n"
    "At most 100 problems are listed; `and N more` counts the others.\n"
    "\n"
    "  --json   one JSON object instead: {\"files\": N, \"problems\": [{\"file\", \"line\", "
    "\"reason\"}]},\n"
    "           and \"more\": N where not all problems are listed\n"
    "  --strict moreover faces without area, faces that cross or fold onto others of their "
    "surface,\n"
    "           and normals more than 60 degrees off their face\n"
    "  --help   this text\n"
    "  --       what follows are names, not options\n"
    "\n"
    "Exit status: 0 no problem, 1 wrong use, 2 problems.\n";

struct Request
{
    bool json = false;
    Strictness strictness = Strictness::usual;
    std::vector<std::string> paths;
};

struct Report
{
    std::size_t fileCount = 0;
    std::vector<MeshProblem> problems; ///< the first mostListedProblems of all files
    std::size_t unlistedCount = 0;

    std::size_t problemCount() const { return problems.size() + unlistedCount; }
    void add(MeshProblem problem)
    {
        if (problems.size() < mostListedProblems)
            problems.push_back(std::move(problem));
        else
            ++unlistedCount;
    }
};

Report reportOf(const std::vector<std::string> &paths, Strictness strictness)
{
    Report report;
    for (const std::string &path : paths) {
        const std::vector<std::string> files = meshFilesAt(path);
        if (files.empty()) report.add({path, 0, "no mesh files in this folder"});
        for (const std::string &file : files) {
            ++report.fileCount;
            std::size_t unlistedCount = 0;
            for (MeshProblem &problem : checkMeshFile(file, strictness, &unlistedCount))
                report.add(std::move(problem));
            report.unlistedCount += unlistedCount;
        }
    }
    return report;
}

void writeText(const Report &report, std::ostream &out)
{
    for (const MeshProblem &problem : report.problems)
        out << shownText(problem.file, longestShownPath) << ':' << problem.line << ": "
            << problem.reason << '\n';
    if (report.unlistedCount != 0) out << "and " << report.unlistedCount << " more\n";
    out << "files: " << report.fileCount << ", problems: " << report.problemCount() << '\n';
}

void writeJSON(const Report &report, std::ostream &out)
{
    nlohmann::ordered_json problems = nlohmann::ordered_json::array();
    for (const MeshProblem &problem : report.problems)
        problems.push_back(
            {{"file", problem.file}, {"line", problem.line}, {"reason", problem.reason}});
    nlohmann::ordered_json object = {{"files", report.fileCount}, {"problems", problems}};
    if (report.unlistedCount != 0) object["more"] = report.unlistedCount;
    // File names are bytes; those that are no UTF-8 are shown with the replacement character. All
    // of it is ASCII: of the other characters some control a terminal.
    out << object.dump(2, ' ', true, nlohmann::ordered_json::error_handler_t::replace) << '\n';
}

} // namespace

int runMeshcheck(const std::vector<std::string> &arguments, std::ostream &out, std::ostream &error)
{
    Request request;
    bool optionsEnded = false;
    for (const std::string &argument : arguments) {
        if (optionsEnded || !argument.starts_with('-')) {
            request.paths.push_back(argument);
        } else if (argument == "--") {
            optionsEnded = true;
        } else if (argument == "--json") {
            request.json = true;
        } else if (argument == "--strict") {
            request.strictness = Strictness::strict;
        } else if (argument == "--help") {
            out << usage << help;
            return 0;
        } else {
            error << "meshcheck: unknown option " << shownText(argument, longestShownPath) << '\n'
                  << usage;
            return 1;
        }
    }
    if (request.paths.empty()) {
        error << "meshcheck: no folder and no file\n" << usage;
        return 1;
    }
    const Report report = reportOf(request.paths, request.strictness);
    if (request.json)
        writeJSON(report, out);
    else
        writeText(report, out);
    return report.problems.empty() ? 0 : 2;
}

} // namespace kelo
