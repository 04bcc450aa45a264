#include "tools/meshcheck/MeshCheck.h"

#include "tests/models/OBJReaderMesh.h"
#include "tests/support/WithoutPrivileges.h"
#include "tests/tools/TetrahedronText.h"
#include "tools/meshcheck/CommandLine.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

namespace kelo {
namespace {

using test::TemporaryFile;

/// `line: reason` for every problem.
std::vector<std::string> problemsIn(const std::string &text)
{
    std::vector<std::string> lines;
    for (const MeshProblem &problem : checkMeshText(text, "tooth.obj")) {
        EXPECT_EQ(problem.file, "tooth.obj");
        lines.push_back(std::to_string(problem.line) + ": " + problem.reason);
    }
    return lines;
}

TEST(Meshcheck, aClosedMeshWoundOutwardsHasNoProblem)
{
    EXPECT_EQ(problemsIn(tetrahedron), std::vector<std::string>{});
    EXPECT_EQ(problemsIn(test::TorusMesh{12, 7}.text()), std::vector<std::string>{});
}

struct ProblemRow
{
    const char *name;
    std::string input;
    std::vector<std::string> expected;
};
const ProblemRow meshProblems[] = {
    {"no line break behind a face",
     tetrahedron.substr(0, tetrahedron.size() - 1),
     {"8: no line break at the end of the file: the face never ends"}},
    {"no line break behind a comment",
     tetrahedron + "# end",
     {"9: no line break at the end of the file"}},
    {"no line break behind a lone blank",
     tetrahedron + " ",
     {"9: no line break at the end of the file"}},
    {"vertex out of range",
     tetrahedron + "f 1 2 5\n",
     {"9: vertex number 5 is out of range: 4 read so far"}},
    {"vertex read later",
     "f 1 2 3\n" + positions,
     {"1: vertex number 1 is out of range: 0 read so far",
      "1: vertex number 2 is out of range: 0 read so far",
      "1: vertex number 3 is out of range: 0 read so far"}},
    {"normal out of range",
     positions + "vn 0 0 1\nf 1//1 2//2 3\n",
     {"6: normal number 2 is out of range: 1 read so far"}},
    {"negative vertex number",
     tetrahedron + "f 1 2 -1\n",
     {"9: negative vertex number -1: relative numbers are not supported"}},
    {"negative normal number",
     tetrahedron + "f 1 2 3//-2\n",
     {"9: negative normal number -2: relative numbers are not supported"}},
    {"zero vertex number", tetrahedron + "f 0 1 2\n", {"9: vertex number 0: numbers begin with 1"}},
    {"zero normal number",
     tetrahedron + "f 1//0 2 3\n",
     {"9: normal number 0: numbers begin with 1"}},
    {"a number beyond 32 bits",
     tetrahedron + "f 1 2 4294967297\n",
     {"9: vertex number 4294967297 is out of range: 4 read so far"}},
    {"malformed coordinate", tetrahedron + "v 1 x 3\n", {"9: malformed number \"x\""}},
    {"a decimal comma", tetrahedron + "v 1,5 2 3\n", {"9: malformed number \"1,5\""}},
    {"unprintable characters are shown as question marks",
     tetrahedron + "v \x01\xff 2 3\n",
     {"9: malformed number \"\\x01\\xff\""}},
    {"a long token is shortened",
     tetrahedron + "v " + std::string(50, 'x') + " 2 3\n",
     {"9: malformed number \"" + std::string(40, 'x') + "...\""}},
    {"a coordinate is missing",
     tetrahedron + "v 1 2\n",
     {"9: malformed number: 2 numbers instead of 3"}},
    {"malformed normal", tetrahedron + "vn 1 2 z\n", {"9: malformed number \"z\""}},
    {"malformed vertex number",
     tetrahedron + "f 1 x/1/1 3\n",
     {"9: malformed vertex number in \"x/1/1\"",
      "9: normal number 1 is out of range: 0 read so far"}},
    {"malformed normal number",
     tetrahedron + "f 1// 2 3\n",
     {"9: malformed normal number in \"1//\""}},
    {"a fourth number",
     "vn 0 0 1\n" + tetrahedron + "f 1/1/1/1 2 3\n",
     {"10: malformed normal number in \"1/1/1/1\""}},
    {"letters behind a vertex number",
     tetrahedron + "f 1a 2 3\n",
     {"9: malformed vertex number in \"1a\""}},
    {"face of two vertices", tetrahedron + "f 1 2\n", {"9: face of 2 vertices"}},
    {"face of one vertex", tetrahedron + "f 1\n", {"9: face of 1 vertex"}},
    {"face of nothing", tetrahedron + "f \n", {"9: face of 0 vertices"}},
    {"empty file", "", {"0: the mesh is empty: no vertices and no faces"}},
    {"no faces", positions, {"0: the mesh is empty: no faces"}},
    {"not a number", tetrahedron + "v nan 0 0\n", {"9: number is not finite: \"nan\""}},
    {"infinite", tetrahedron + "v 0 -inf 0\n", {"9: number is not finite: \"-inf\""}},
    {"infinite by overflow", tetrahedron + "vn 0 0 1e39\n", {"9: number is not finite: \"1e39\""}},
    {"unknown sequence", tetrahedron + "vp 1 2\n", {"9: unknown sequence \"vp\""}},
    {"a lone v", tetrahedron + "v\n", {"9: unknown sequence \"v\""}},
    {"wound inwards",
     positions + "f 1 2 3\nf 1 4 2\nf 1 3 4\nf 2 4 3\n",
     {"5: wrong winding: the closed surface of 4 faces encloses a negative volume "
      "(-0.166667)"}},
    {"the second of two bodies wound inwards",
     tetrahedron + "v 5 0 0\nv 6 0 0\nv 5 1 0\nv 5 0 1\nf 5 6 7\nf 5 8 6\nf 5 7 8\nf 6 8 7\n",
     {"13: wrong winding: the closed surface of 4 faces encloses a negative volume "
      "(-0.166667)"}},
    {"one face turned over",
     positions + "f 1 3 2\nf 1 2 4\nf 1 3 4\nf 2 3 4\n",
     {"7: inconsistent winding: the face is wound against its neighbour on line 5",
      "7: inconsistent winding: the face is wound against its neighbour on line 6",
      "8: inconsistent winding: the face is wound against its neighbour on line 7"}},
    {"one face missing", positions + "f 1 3 2\nf 1 2 4\nf 1 4 3\n", {"5: hole: 3 open edges"}},
    {"two holes",
     positions + "v 9 9 9\nv 8 9 9\nv 9 8 9\nf 1 2 3 4\nf 5 6 7\n",
     {"8: hole: 4 open edges", "9: hole: 3 open edges"}},
    {"three faces at one edge",
     tetrahedron + "v 1 1 -1\nf 1 2 5\n",
     {"5: non-manifold edge: 3 faces share it (lines 5, 6, 10)", "10: hole: 2 open edges"}},
    {"a face on one spot",
     tetrahedron + "v 0 0 0\nf 1 5 1\n",
     {"10: corners of the face coincide: it has no area"}},
    {"positions behind copied vertices",
     "vn 0 0 1\nvn 1 0 0\n" + positions +
         "f 1//1 3//1 2//1\nf 1//2 2//2 4//2\nf 1 4 3\nf 2 3 4\nv 7 7 7\n",
     {"11: position behind faces that gave vertices a second normal: the reader numbers it 7 "
      "instead of 5"}},
};

TEST(Meshcheck, everyKindOfProblemIsToldWithItsLineAndReason)
{
    for (const ProblemRow &problem : meshProblems) {
        SCOPED_TRACE(problem.name);
        EXPECT_EQ(problemsIn(problem.input), problem.expected);
    }
}

TEST(Meshcheck, verticesAtTheSamePositionAreOneForTheShape)
{
    // Every face has its own three vertices; zero is written with both signs.
    EXPECT_EQ(problemsIn("v 0 0 0\nv 0 1 0\nv 1 0 0\nf 1 2 3\n"
                         "v -0 0 0\nv 1 0 -0.0\nv 0 0 1\nf 4 5 6\n"
                         "v 0 -0 0\nv 0 0 1\nv 0 1 0\nf 7 8 9\n"
                         "v 1 0 0\nv 0 1 0\nv 0 0 1\nf 10 11 12\n"),
              std::vector<std::string>{});
}

TEST(Meshcheck, aClosedSurfaceFarFromTheOriginIsJudgedByItsOwnVolume)
{
    EXPECT_EQ(problemsIn("v 5000 0 0\nv 5001 0 0\nv 5000 1 0\nv 5000 0 1\n"
                         "f 1 3 2\nf 1 2 4\nf 1 4 3\nf 2 3 4\n"),
              std::vector<std::string>{});
}

TEST(Meshcheck, linesAreCountedAsInAnEditor)
{
    for (const std::string lineEnd : {"\n", "\r\n", "\r"}) {
        std::string text;
        for (const char *line : {"# tooth", "v 0 0 0", "", "v x 0 0", "f 1"})
            text += line + lineEnd;
        EXPECT_EQ(problemsIn(text),
                  (std::vector<std::string>{"4: malformed number \"x\"", "5: face of 1 vertex"}));
    }
}

TEST(Meshcheck, anEndlessFileIsCheckedToTheEnd)
{
    std::ifstream stream(std::string(KELO_SOURCE_DIR) +
                         "/tests/models/obj/face-without-line-break.obj");
    std::ostringstream bytes;
    bytes << stream.rdbuf();
    const std::vector<std::string> problems = problemsIn(bytes.str());
    ASSERT_FALSE(problems.empty());
    EXPECT_EQ(problems[0], "4: no line break at the end of the file: the face never ends");
}

TEST(Meshcheck, everyTruncationOfATextIsChecked)
{
    const std::string text = "vp\r\n" + tetrahedron + "f 1/2/3 //\nvn 1 2 nan\n";
    for (std::size_t size = 0; size < text.size(); ++size)
        EXPECT_FALSE(problemsIn(text.substr(0, size)).empty()) << size;
}

/// A folder of its own, removed at the end.
class TemporaryFolder
{
public:
    TemporaryFolder()
    {
        std::string name = std::filesystem::temp_directory_path() / "meshesXXXXXX";
        if (!::mkdtemp(name.data())) throw std::runtime_error("no temporary folder");
        path = name;
    }
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;
    ~TemporaryFolder() { std::filesystem::remove_all(path); }

    std::string add(const std::string &name, const std::string &contents) const
    {
        std::filesystem::create_directories((path / name).parent_path());
        std::ofstream(path / name, std::ios::binary) << contents;
        return path / name;
    }

    std::filesystem::path path;
};

struct Outcome
{
    int status;
    std::string out, error;
};

Outcome meshcheck(const std::vector<std::string> &arguments)
{
    std::ostringstream out, error;
    const int status = runMeshcheck(arguments, out, error);
    return {status, out.str(), error.str()};
}

TEST(Meshcheck, filesThatCannotBeReadAreProblems)
{
    const TemporaryFolder folder;
    const std::string missing = folder.path / "missing.obj", pipe = folder.path / "pipe.obj";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(
        checkMeshFile(missing),
        (std::vector<MeshProblem>{{missing, 0, "cannot be read: No such file or directory"}}));
    EXPECT_EQ(checkMeshFile(pipe),
              (std::vector<MeshProblem>{{pipe, 0, "cannot be read: not a regular file"}}));
    EXPECT_EQ(checkMeshFile(folder.path),
              (std::vector<MeshProblem>{{folder.path, 0, "cannot be read: not a regular file"}}));
    EXPECT_EQ(checkMeshFile("/dev/zero"),
              (std::vector<MeshProblem>{{"/dev/zero", 0, "cannot be read: not a regular file"}}));
}

TEST(Meshcheck, aFileThatExistsAndMayNotBeReadIsAProblem)
{
    const TemporaryFile file(tetrahedron);
    ASSERT_EQ(::chmod(file.path.c_str(), 0), 0);
    EXPECT_EQ(test::resultWithoutPrivileges([&] {
                  const auto problems = checkMeshFile(file.path);
                  return problems.size() == 1 ? sentenceOf(problems[0]) : std::string("no problem");
              }),
              file.path + ": cannot be read: Permission denied");
}

TEST(Meshcheck, aMeshBeyondTheLimitsIsAProblemOfTheWholeFile)
{
    const MeshFileLimits limits{.byteCount = 120, .vertexCount = 4, .triangleCount = 4};
    struct Case
    {
        const char *name;
        std::string text;
        std::vector<std::string> expected;
    };
    const Case cases[] = {
        {"at the limits", tetrahedron, {}},
        {"a vertex more", tetrahedron + "v 1 1 1\nnonsense\nv x\n", {"more than 4 vertices"}},
        {"copies of a vertex",
         positions + "vn 0 0 1\nvn 0 1 0\nf 1//1 3//1 2//1\nf 1//2 2//1 4//1\n",
         {"more than 4 vertices"}},
        {"normals", "vn 0 0 1\nvn 0 0 1\nvn 0 0 1\nvn 0 0 1\nvn 0 0 1\n", {"more than 4 normals"}},
        {"triangles", tetrahedron + "f 1 2 3\n", {"more than 4 triangles"}},
        {"triangles of one face", positions + "f 1 2 3 4 1 2 3\n", {"more than 4 triangles"}},
        {"bytes",
         tetrahedron + "# " + std::string(60, 'x') + "\n",
         {"the file has 127 bytes; a mesh may have 120"}}};
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        const TemporaryFile file(c.text);
        std::vector<std::string> reasons;
        for (const MeshProblem &problem :
             checkMeshFile(file.path, Strictness::usual, nullptr, limits)) {
            EXPECT_EQ(problem.line, 0u);
            reasons.push_back(problem.reason);
        }
        EXPECT_EQ(reasons, c.expected);
    }
}

TEST(Meshcheck, aFileOfFourGigabytesIsAProblemAndNotRead)
{
    const TemporaryFile file(tetrahedron);
    ASSERT_EQ(::truncate(file.path.c_str(), 4'294'967'296), 0);
    EXPECT_EQ(checkMeshFile(file.path),
              (std::vector<MeshProblem>{
                  {file.path, 0, "the file has 4294967296 bytes; a mesh may have 268435456"}}));
}

TEST(Meshcheck, ofManyProblemsAHundredAreListedAndTheOthersCounted)
{
    std::string text;
    for (int i = 0; i < 1'000'000; ++i)
        text += "vp\n";
    std::size_t unlistedCount = 0;
    const auto problems = checkMeshText(text, "x.obj", Strictness::usual, &unlistedCount);
    ASSERT_EQ(problems.size(), 100u);
    EXPECT_EQ(problems.back().line, 100u);
    EXPECT_EQ(unlistedCount, 999'901u) << "one of them: the mesh is empty";
}

TEST(Meshcheck, aFolderStandsForItsMeshFilesAndThoseBelow)
{
    const TemporaryFolder folder;
    const std::string second = folder.add("b.obj", tetrahedron);
    const std::string third = folder.add("set/C.OBJ", "f\n");
    const std::string first = folder.add("a.obj", positions);
    folder.add("readme.txt", "f");
    EXPECT_EQ(meshFilesAt(folder.path), (std::vector<std::string>{first, second, third}));
    EXPECT_EQ(meshFilesAt("any/name.txt"), (std::vector<std::string>{"any/name.txt"}));

    const Outcome outcome = meshcheck({folder.path});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, first + ":0: the mesh is empty: no faces\n" + third +
                               ":1: face of 0 vertices\nfiles: 3, problems: 2\n");
    EXPECT_EQ(outcome.error, "");
}

TEST(Meshcheck, cleanFilesGiveStatusZero)
{
    const TemporaryFile file(tetrahedron);
    const Outcome outcome = meshcheck({file.path});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "files: 1, problems: 0\n");
}

TEST(Meshcheck, aFolderWithoutMeshesIsAProblem)
{
    const TemporaryFolder folder;
    const Outcome outcome = meshcheck({folder.path});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out,
              folder.path.string() + ":0: no mesh files in this folder\nfiles: 0, problems: 1\n");
}

TEST(Meshcheck, allFilesTogetherListAHundredProblems)
{
    const TemporaryFolder folder;
    std::string text = tetrahedron;
    for (int i = 0; i < 60; ++i)
        text += "vp\n";
    const std::string first = folder.add("a.obj", text);
    const std::string second = folder.add("b.obj", text);
    folder.add("c.obj", text);
    const Outcome outcome = meshcheck({folder.path});
    std::string expected;
    for (int line = 9; line < 69; ++line)
        expected += first + ":" + std::to_string(line) + ": unknown sequence \"vp\"\n";
    for (int line = 9; line < 49; ++line)
        expected += second + ":" + std::to_string(line) + ": unknown sequence \"vp\"\n";
    EXPECT_EQ(outcome.out, expected + "and 80 more\nfiles: 3, problems: 180\n");
    const nlohmann::json report = nlohmann::json::parse(meshcheck({"--json", folder.path}).out);
    EXPECT_EQ(report.at("problems").size(), 100u);
    EXPECT_EQ(report.at("more"), 80);
}

TEST(Meshcheck, controlCharactersNeverReachTheTerminal)
{
    const TemporaryFolder folder;
    const std::string name = "\x1b[31m\xC2\x9B.obj";
    const std::string file = folder.add(name, "v \x1b]0;title\x07 2 3\n");
    for (const std::vector<std::string> &arguments :
         {std::vector<std::string>{file}, {"--json", file}, {"--\x1b[2J"}}) {
        const Outcome outcome = meshcheck(arguments);
        for (const char c : outcome.out + outcome.error)
            EXPECT_TRUE(c == '\n' || (c >= ' ' && c <= '~')) << int(c);
    }
    EXPECT_NE(meshcheck({file}).out.find("\\x1b[31m\\xc2\\x9b.obj:1: malformed number"),
              std::string::npos)
        << meshcheck({file}).out;
}

TEST(Meshcheck, theJSONReportHoldsFileLineAndReason)
{
    const TemporaryFolder folder;
    const std::string file = folder.add("\xff \"quoted\".obj", "v 0 0 0\nf 1 2 1\n");
    const Outcome outcome = meshcheck({"--json", file});
    EXPECT_EQ(outcome.status, 2);
    const nlohmann::json report = nlohmann::json::parse(outcome.out);
    EXPECT_EQ(report.at("files"), 1);
    ASSERT_EQ(report.at("problems").size(), 1u);
    const nlohmann::json &problem = report.at("problems").at(0);
    EXPECT_EQ(problem.at("file"), folder.path.string() + "/\xef\xbf\xbd \"quoted\".obj");
    EXPECT_EQ(problem.at("line"), 2);
    EXPECT_EQ(problem.at("reason"), "vertex number 2 is out of range: 1 read so far");

    const TemporaryFile clean(tetrahedron);
    const Outcome nothing = meshcheck({clean.path, "--json"});
    EXPECT_EQ(nothing.status, 0);
    EXPECT_EQ(nlohmann::json::parse(nothing.out),
              (nlohmann::json{{"files", 1}, {"problems", nlohmann::json::array()}}));
}

TEST(Meshcheck, wrongUseIsStatusOneWithTheUsage)
{
    const std::string usage = "usage: meshcheck [--json] [--strict] DIR|FILE...\n";
    const Outcome nothing = meshcheck({});
    EXPECT_EQ(nothing.status, 1);
    EXPECT_EQ(nothing.error, "meshcheck: no folder and no file\n" + usage);
    const Outcome unknown = meshcheck({"--jsn", "x.obj"});
    EXPECT_EQ(unknown.status, 1);
    EXPECT_EQ(unknown.error, "meshcheck: unknown option --jsn\n" + usage);
    EXPECT_EQ(unknown.out, "");
}

TEST(Meshcheck, helpTellsTheOptionsAndTheStatuses)
{
    const Outcome outcome = meshcheck({"--help"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.error, "");
    for (const char *part : {"usage: meshcheck [--json] [--strict] DIR|FILE...", "--json", "--help",
                             "Exit status: 0 no problem, 1 wrong use, 2 problems."})
        EXPECT_NE(outcome.out.find(part), std::string::npos) << part;
}

TEST(Meshcheck, behindTwoDashesEverythingIsAName)
{
    const Outcome outcome = meshcheck({"--", "--json"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "--json:0: cannot be read: No such file or directory\n"
                           "files: 1, problems: 1\n");
}

} // namespace
} // namespace kelo
