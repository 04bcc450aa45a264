#include "tests/tools/BandDepthShapes.h"
#include "tools/banddepth/CommandLine.h"
#include "tools/banddepth/Report.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace kelo::banddepth {
namespace {

using test::cubeAround;
using test::TemporaryFolder;

/// Three meshes far from every anchor, two bands of the tables and a configuration.
struct Example
{
    std::vector<Band> bands{{"6-25", {"6", "25"}, true},
                            {"8-26", {"8", "26"}, true},
                            {"Box (7,10,23,26)", {"7", "10", "23", "26"}, false}};
    Scene scene{{{Kind::tooth, "tooth 6", true, cubeAround({500, 0, 0}, 1.0).mesh()},
                 {Kind::tooth, "tooth 25", false, cubeAround({510, 0, 0}, 1.0).mesh()},
                 {Kind::gum, "upper gum", true, cubeAround({520, 0, 0}, 1.0).mesh()}},
                {}};
    std::vector<Finding> findings{
        {0, 0, 0, false, {0.25, 1.5, {1, 2, 3}}}, {0, 1, 0, false, {1.25, 2.0, {-4.125, 5, 6}}},
        {1, 1, 0, false, {0.5, 1.0, {0, 0, 0}}},  {2, 1, 0, true, {2.5, 7.0, {0, 0, 0}}},
        {1, 2, 8, true, {0.75, 3.0, {0, 0, 0}}},  {0, 1, -45, false, {1.5, 2.5, {0, 0, 0}}}};

    std::string report() const
    {
        std::ostringstream out;
        writeReport(scene, bands, findings, out);
        return out.str();
    }
};

bool holds(const std::string &text, const std::string &part)
{
    return text.find(part) != std::string::npos;
}

/// From the line that begins with `title` to the next empty line.
std::string blockOf(const std::string &report, const std::string &title)
{
    const auto begin = report.find("\n" + title);
    if (begin == std::string::npos) return {};
    const auto end = report.find("\n\n", begin);
    return report.substr(begin + 1, end == std::string::npos ? end : end + 1 - (begin + 1));
}

TEST(BandDepthReport, aRowTellsWorstDepthLengthAndCountsOfItsAngleAndKind)
{
    const std::string table = blockOf(Example().report(), "Bands of the tables");
    EXPECT_TRUE(
        table.starts_with("Bands of the tables (over: deeper than 0.5)\n"
                          " angle  kind      worst  length  bands   over  worst band, mesh\n"
                          // 1.5 + 2 + 1 long; two bands, of which one is deeper than 0.5
                          "    +0  tooth     1.250     4.5      2      1  6-25; tooth 25\n"
                          "    +0  bracket   0.000     0.0      0      0\n"))
        << table;
    EXPECT_TRUE(holds(table, "\n    +8  gum       0.750     3.0      1      1  8-26, no anchor; "
                             "upper gum\n"));
    EXPECT_TRUE(holds(table, "\n   -45  tooth     1.500     2.5      1      1  6-25; tooth 25\n"));
}

TEST(BandDepthReport, configurationsHaveATableOfTheirOwn)
{
    const std::string table = blockOf(Example().report(), "Named configurations");
    EXPECT_TRUE(holds(table, "\n    +0  tooth     2.500     7.0      1      1  Box (7,10,23,26), "
                             "no anchor; tooth 25\n"))
        << table;
    EXPECT_TRUE(holds(table, "\n   -45  tooth     0.000     0.0      0      0\n"));
}

TEST(BandDepthReport, theWorstOfAllListsEachBandAndMeshAtItsWorstAngle)
{
    EXPECT_EQ(blockOf(Example().report(), "Worst of all"),
              "Worst of all, each band and mesh at its worst angle\n"
              "  depth  length  angle  mesh       at, in its jaw's space    band\n"
              "  2.500     7.0     +0  tooth 25   (  0.00,   0.00,   0.00)  Box (7,10,23,26), no "
              "anchor\n"
              "  1.500     2.5    -45  tooth 25   (  0.00,   0.00,   0.00)  6-25\n"
              "  0.750     3.0     +8  upper gum  (  0.00,   0.00,   0.00)  8-26, no anchor\n"
              "  0.500     1.0     +0  tooth 25   (  0.00,   0.00,   0.00)  8-26\n"
              "  0.250     1.5     +0  tooth 6    (  1.00,   2.00,   3.00)  6-25\n");
}

TEST(BandDepthReport, theClosedMouthsListHoldsOnlyTeethAndBandsOfTheTables)
{
    EXPECT_EQ(blockOf(Example().report(), "Worst of the tables' bands in teeth, mouth closed"),
              "Worst of the tables' bands in teeth, mouth closed\n"
              "  depth  length  angle  mesh       at, in its jaw's space    band\n"
              "  1.250     2.0     +0  tooth 25   ( -4.12,   5.00,   6.00)  6-25\n"
              "  0.500     1.0     +0  tooth 25   (  0.00,   0.00,   0.00)  8-26\n"
              "  0.250     1.5     +0  tooth 6    (  1.00,   2.00,   3.00)  6-25\n");
}

TEST(BandDepthReport, noMoreThanTwentyAreListed)
{
    Example example;
    example.findings.clear();
    for (int i = 0; i < 25; ++i) {
        example.bands.push_back({"band " + std::to_string(i), {}, true});
        example.findings.push_back(
            {example.bands.size() - 1, 0, 0, false, {1.0 + 0.01 * i, 1.0, {0, 0, 0}}});
    }
    const std::string block = blockOf(example.report(), "Worst of all");
    EXPECT_TRUE(holds(block, "  band 24\n"));
    EXPECT_TRUE(holds(block, "  band 5\n"));
    EXPECT_FALSE(holds(block, "  band 4\n"));
}

TEST(BandDepthReport, nothingInsideIsSaidSo)
{
    Example example;
    example.findings.clear();
    const std::string report = example.report();
    EXPECT_TRUE(blockOf(report, "Worst of all").ends_with("   none\n"));
    EXPECT_TRUE(blockOf(report, "Worst of the tables'").ends_with("   none\n"));
    EXPECT_TRUE(blockOf(report, "Anchors inside teeth").ends_with("   none\n"));
    EXPECT_TRUE(holds(report, "\n    +0  tooth     0.000     0.0      0      0\n"));
}

TEST(BandDepthReport, theLimitIsHeldAgainstTheTablesBandsInTeethAtTheClosedMouth)
{
    const Example example;
    // Not the configuration's 2.5, nor the 1.5 of the open mouth.
    EXPECT_EQ(worstInToothAtClosedMouth(example.scene, example.bands, example.findings), 1.25);
    EXPECT_EQ(worstInToothAtClosedMouth(example.scene, example.bands, {}), 0.0);
}

struct Outcome
{
    int status = -1;
    std::string out, error;
};

Outcome run(const std::vector<std::string> &arguments)
{
    std::ostringstream out, error;
    const int status = runBanddepth(arguments, out, error);
    return {status, out.str(), error.str()};
}

const std::string usage = "usage: banddepth --meshes DIR [--catalogue FILE] [--limit MM]\n";

/// A tooth about anchor 2, through which the closed mouth's bands 6-25, 7-26 and 8-27 are led: they
/// pass 1/32 beside its middle, and nothing is deeper in it than 1.
struct ToothAboutAnAnchor : TemporaryFolder
{
    ToothAboutAnAnchor()
    {
        write("_tooth_6.obj", cubeAround({-11.3396, -17.6361, -5.83297}, 1.0).text());
    }
};

TEST(BandDepthCommand, withoutALimitTheStatusIs0AndTheReportIsWritten)
{
    const ToothAboutAnAnchor folder;
    const Outcome result = run({"--meshes", folder.path});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, "");
    EXPECT_TRUE(result.out.starts_with(
        "bands: 90 of the tables, 0 named configurations; meshes: 1\n"
        "Depths and lengths of a band's centre line inside a mesh, in millimetres.\n"))
        << result.out;
    EXPECT_FALSE(holds(result.out, "Named configurations ("));
    EXPECT_TRUE(holds(result.out, "Anchors inside teeth, mouth closed\n"
                                  "  depth  tooth      anchor\n"
                                  "  1.000  tooth 6    2, upper jaw\n\n"));
}

TEST(BandDepthCommand, aBandDeeperThanTheLimitMakesTheStatus1)
{
    const ToothAboutAnAnchor folder;
    const Outcome result = run({"--meshes", folder.path, "--limit", "0.96"});
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.out.ends_with("\nlimit: passed\n"));
}

TEST(BandDepthCommand, bandsWithinTheLimitMakeTheStatus0)
{
    const ToothAboutAnAnchor folder;
    const Outcome result = run({"--limit", "1.01", "--meshes", folder.path});
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(result.out.ends_with("\nlimit: kept\n"));
}

TEST(BandDepthCommand, aCatalogueBesideTheMeshesIsReadUnlessAnotherIsNamed)
{
    const ToothAboutAnAnchor folder;
    const std::string entry = R"({"typeLabel": "Box", "bracketSequence": "7,10,23,26"})";
    folder.write("catalogue.json", R"({"elasticsConfigTypes": [)" + entry + "]}");
    EXPECT_TRUE(run({"--meshes", folder.path})
                    .out.starts_with("bands: 90 of the tables, 1 named configurations; "));
    const TemporaryFolder elsewhere;
    const std::string other =
        elsewhere.write("two.json", R"({"elasticsConfigTypes": [)" + entry + "," + entry + "]}");
    EXPECT_TRUE(run({"--meshes", folder.path, "--catalogue", other})
                    .out.starts_with("bands: 90 of the tables, 2 named configurations; "));
}

TEST(BandDepthCommand, wrongUseIsToldWithTheUsageAndStatus2)
{
    struct Case
    {
        std::vector<std::string> arguments;
        const char *message;
    };
    for (const Case &c :
         {Case{{}, "no folder of meshes"}, Case{{"--limit", "1"}, "no folder of meshes"},
          Case{{"--meshes"}, "--meshes needs a value"},
          Case{{"--meshes", "d", "--limit"}, "--limit needs a value"},
          Case{{"--limit", "-1"}, "'-1' is no limit in millimetres"},
          Case{{"--limit", "0,5"}, "'0,5' is no limit in millimetres"},
          Case{{"--limit", "nan"}, "'nan' is no limit in millimetres"},
          Case{{"--limit", ""}, "'' is no limit in millimetres"},
          Case{{"--depth"}, "unknown option --depth"}, Case{{"meshes"}, "unknown option meshes"}}) {
        const Outcome result = run(c.arguments);
        EXPECT_EQ(result.status, 2) << c.message;
        EXPECT_EQ(result.out, "") << c.message;
        EXPECT_EQ(result.error, std::string("banddepth: ") + c.message + "\n" + usage);
    }
}

TEST(BandDepthCommand, aFileThatCannotBeMeasuredIsToldInOneLineWithStatus2)
{
    const TemporaryFolder folder;
    const Outcome result = run({"--meshes", folder.path});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.error, "banddepth: " + folder.path + ": no mesh files in this folder\n");
}

TEST(BandDepthCommand, helpTellsTheUsageAndNeedsNoMeshes)
{
    const Outcome result = run({"--help"});
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(result.out.starts_with(usage + "\nMeasures how deep"));
    EXPECT_EQ(result.error, "");
}

} // namespace
} // namespace kelo::banddepth
