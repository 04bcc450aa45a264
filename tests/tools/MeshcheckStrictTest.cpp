// The strict check: what a picture of a mesh would suffer from although it loads and is closed.

#include "tools/meshcheck/CommandLine.h"
#include "tools/meshcheck/MeshCheck.h"
#include "tools/meshcheck/MeshSurface.h"

#include "tests/models/OBJReaderMesh.h"
#include "tests/tools/TetrahedronText.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace kelo {
namespace {

/// A cube whose upper side is drawn out downwards through the lower side (two triangles, lines 10
/// and 11) to a point below.
const std::string spike = "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nv 0 0 1\nv 1 0 1\nv 1 1 1\nv 0 1 1\n"
                          "v 0.4 0.3 -1\nf 1 3 2\nf 1 4 3\nf 1 2 6 5\nf 2 3 7 6\nf 3 4 8 7\n"
                          "f 4 1 5 8\nf 5 6 9\nf 6 7 9\nf 7 8 9\nf 8 5 9\n";

/// `line: reason` for every problem.
std::vector<std::string> strictProblemsIn(const std::string &text, Strictness strictness)
{
    std::vector<std::string> lines;
    for (const MeshProblem &problem : checkMeshText(text, "tooth.obj", strictness))
        lines.push_back(std::to_string(problem.line) + ": " + problem.reason);
    return lines;
}

TEST(MeshcheckStrict, tooManyFacesOverOneAnotherEndTheSearch)
{
    // A tetrahedron, whose four faces lie over one another along the x axis: six pairs.
    MeshShape shape;
    shape.positions = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    shape.corners = {0, 2, 1, 0, 1, 3, 0, 3, 2, 1, 2, 3};
    shape.normalOf.assign(12, 0);
    shape.faces = {{0, 5}, {3, 6}, {6, 7}, {9, 8}};
    EXPECT_TRUE(surfaceProblems(shape, 6).listed.empty());
    const auto problems = surfaceProblems(shape, 5).listed;
    ASSERT_EQ(problems.size(), 1u);
    EXPECT_EQ(problems[0].line, 0u);
    EXPECT_EQ(problems[0].reason,
              "too many faces lie over one another: not all crossings were looked for");
}

TEST(MeshcheckStrict, everyKindOfProblemIsToldWithItsLineAndReason)
{
    struct Case
    {
        const char *name;
        std::string input;
        std::vector<std::string> expected;
    };
    const Case cases[] = {
        {"a sound tetrahedron", tetrahedron, {}},
        {"a sound torus", test::TorusMesh{12, 7}.text(), {}},
        {"a face that is a line",
         positions + "v 0.5 0 0\nf 1 3 2\nf 1 5 4\nf 5 2 4\nf 1 2 5\nf 1 4 3\nf 2 3 4\n",
         {"9: the face has no area: it is a needle or a line"}},
        {"a needle that is just high enough",
         positions + "v 0.5 0 0.00015\nf 1 3 2\nf 1 5 4\nf 5 2 4\nf 1 2 5\nf 1 4 3\nf 2 3 4\n",
         {}},
        {"a spike through the other side",
         spike,
         {"16: the face crosses the face on line 10", "17: the face crosses the face on line 10",
          "18: the face crosses the face on line 10", "19: the face crosses the face on line 10"}},
        {"a body pressed flat",
         "v 0 0 0\nv 1 0 0\nv 0.3 1 0\nv 0.4 0.3 0.0001\nf 1 3 2\nf 1 2 4\nf 1 4 3\nf 2 3 4\n",
         {"6: the face is folded flat onto its neighbour on line 5",
          "7: the face is folded flat onto its neighbour on line 5",
          "8: the face is folded flat onto its neighbour on line 5"}},
        {"a normal on the wrong side",
         positions + "vn 0 0 1\nf 1//1 3//1 2//1\nf 1 2 4\nf 1 4 3\nf 2 3 4\n",
         {"6: a normal stands 180 degrees off the face"}},
        {"a normal at 61 degrees",
         positions + "vn 0 0.8746197 -0.4848096\nf 1//1 3 2\nf 1 2 4\nf 1 4 3\nf 2 3 4\n",
         {"6: a normal stands 61 degrees off the face"}},
        {"a normal at 59 degrees, longer than 1",
         positions + "vn 0 1.7143346 -1.0300762\nf 1//1 3 2\nf 1 2 4\nf 1 4 3\nf 2 3 4\n",
         {}},
        {"a normal without length",
         positions + "vn 0 0 0\nf 1 3//1 2\nf 1 2 4\nf 1 4 3\nf 2 3 4\n",
         {"6: a normal stands 180 degrees off the face"}},
        {"a problem of the usual kind comes first",
         positions + "vn 0 0 1\nf 1//1 3//1 2//1\nf 1 2 4\nf 1 4 3\n",
         {"6: hole: 3 open edges"}},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(strictProblemsIn(c.input, Strictness::strict), c.expected);
    }
}

TEST(MeshcheckStrict, bodiesThatRunIntoEachOtherAreNoProblem)
{
    // A corner of the second tetrahedron is inside the first one.
    const std::string both = tetrahedron +
                             "v 0.2 0.2 0.1\nv 1.2 0.2 0.1\nv 0.2 1.2 0.1\nv 0.2 0.2 1.1\n"
                             "f 5 7 6\nf 5 6 8\nf 5 8 7\nf 6 7 8\n";
    EXPECT_EQ(strictProblemsIn(both, Strictness::strict), std::vector<std::string>{});
}

TEST(MeshcheckStrict, withoutItOnlyTheUsualProblemsAreTold)
{
    EXPECT_EQ(strictProblemsIn(spike, Strictness::usual), std::vector<std::string>{});
}

TEST(MeshcheckStrict, theOptionMakesTheProgramStrict)
{
    const test::TemporaryFile file(spike);
    std::ostringstream out;
    std::ostringstream error;
    EXPECT_EQ(runMeshcheck({file.path}, out, error), 0);
    EXPECT_EQ(out.str(), "files: 1, problems: 0\n");
    out.str({});
    EXPECT_EQ(runMeshcheck({"--strict", file.path}, out, error), 2);
    EXPECT_EQ(out.str().substr(0, out.str().find('\n')),
              file.path + ":16: the face crosses the face on line 10");
    EXPECT_NE(out.str().find("files: 1, problems: 4\n"), std::string::npos);
    EXPECT_EQ(error.str(), "");
}

} // namespace
} // namespace kelo
