// A patient's file: what is read, and what is said about a file that is wrong.

#include "tests/tools/ParameterFileTest.h"
#include "tools/meshgen/PatientFile.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace kelo::meshgen {
namespace {

const std::string heading = "tooth,edge,torque,tip\n";

/// A line for every tooth but `missing`, with the same values.
std::string allTeeth(int missing = 0)
{
    std::string text;
    for (int tooth = 2; tooth <= 31; ++tooth)
        if (tooth != 16 && tooth != 17 && tooth != missing)
            text += std::to_string(tooth) + ",-5,10,3\n";
    return text;
}

using MeshgenPatientFile = test::ParameterFileTest<&readPatient>;

TEST_F(MeshgenPatientFile, commentsBlankLinesAndBlanksRoundTheCellsDoNotCount)
{
    const PatientParameters patient =
        read("# a patient\n\n  tooth , edge,torque,tip\r\n# right\n" + allTeeth());
    ASSERT_EQ(patient.size(), 28U);
    EXPECT_DOUBLE_EQ(patient.at(8).edge, -5.0);
    EXPECT_DOUBLE_EQ(patient.at(8).torque, 10.0);
    EXPECT_DOUBLE_EQ(patient.at(8).tip, 3.0);
}

TEST_F(MeshgenPatientFile, whatAFileLeavesOutIsAsInTheAnatomyTables)
{
    const ToothParameters tooth = read(heading + allTeeth()).at(27);
    EXPECT_EQ(tooth.number, 27);
    EXPECT_DOUBLE_EQ(tooth.rotation, 0.0);
    EXPECT_DOUBLE_EQ(tooth.outward, 0.0);
    EXPECT_DOUBLE_EQ(tooth.anatomy.dimensions.height, 11.0);
    EXPECT_DOUBLE_EQ(tooth.anatomy.dimensions.mesiodistal, 7.0);
    EXPECT_DOUBLE_EQ(tooth.anatomy.dimensions.buccolingual, 7.5);
    EXPECT_DOUBLE_EQ(tooth.anatomy.cuspHeight, 1.0);
}

TEST_F(MeshgenPatientFile, columnsStandInAnyOrderAndAnEmptyCellIsLeftOut)
{
    const PatientParameters patient =
        read("bracket,rotation,height,mesiodistal,buccolingual,outward,cusps,grooves,mamelons,"
             "fossa,ridge,"
             "tip,torque,edge,tooth\n"
             "3.9,-12.5,10,8,7.1,0.4,0.8,1.2,0.1,0.6,0.05,3,18,-7.5,8\n"
             ",,,,,,,,,,,3,18,-7.5,9\n" +
             [] {
                 std::string rest;
                 for (int tooth = 2; tooth <= 31; ++tooth)
                     if (tooth != 8 && tooth != 9 && tooth != 16 && tooth != 17)
                         rest += ",,,,,,,,,,,0,0,0," + std::to_string(tooth) + "\n";
                 return rest;
             }());
    const ToothParameters &tooth = patient.at(8);
    EXPECT_DOUBLE_EQ(tooth.rotation, -12.5);
    EXPECT_DOUBLE_EQ(tooth.anatomy.dimensions.bracketHeight, 3.9);
    EXPECT_DOUBLE_EQ(tooth.outward, 0.4);
    EXPECT_DOUBLE_EQ(tooth.edge, -7.5);
    EXPECT_DOUBLE_EQ(tooth.anatomy.dimensions.height, 10.0);
    EXPECT_DOUBLE_EQ(tooth.anatomy.dimensions.mesiodistal, 8.0);
    EXPECT_DOUBLE_EQ(tooth.anatomy.dimensions.buccolingual, 7.1);
    EXPECT_DOUBLE_EQ(tooth.anatomy.cuspHeight, 0.8);
    EXPECT_DOUBLE_EQ(tooth.anatomy.grooveDepth, 1.2);
    EXPECT_DOUBLE_EQ(tooth.anatomy.mamelons, 0.1);
    EXPECT_DOUBLE_EQ(tooth.anatomy.fossaDepth, 0.6);
    EXPECT_DOUBLE_EQ(tooth.anatomy.labialRidge, 0.05);
    EXPECT_DOUBLE_EQ(patient.at(9).anatomy.dimensions.height, 10.5);
}

TEST_F(MeshgenPatientFile, everyFaultIsToldWithItsLineAndReason)
{
    struct Case
    {
        const char *name;
        std::string input;
        std::string expected;
    };
    const Case cases[] = {
        {"nothing", "", ": there is no heading line"},
        {"only comments", "# a\n# b\n", ": there is no heading line"},
        {"unknown column", "tooth,edge,torque,tip,colour\n", ":1: unknown column \"colour\""},
        {"column twice", "tooth,edge,tip,torque,tip\n", ":1: column \"tip\" stands here twice"},
        {"no number column", "# x\nedge,torque,tip\n", ":2: column \"tooth\" is missing"},
        {"needed column", "tooth,edge,tip\n", ":1: column \"torque\" is missing"},
        {"too few cells", heading + "2,1,2\n", ":2: 3 cells instead of 4"},
        {"too many cells", heading + "2,1,2,3,\n", ":2: 5 cells instead of 4"},
        {"wisdom tooth", heading + "16,1,2,3\n", ":2: there is no tooth 16: 2 to 15 or 18 to 31"},
        {"half a tooth", heading + "2.5,1,2,3\n", ":2: there is no tooth 2.5: 2 to 15 or 18 to 31"},
        {"no tooth", heading + "x,1,2,3\n", ":2: malformed number \"x\" in column \"tooth\""},
        {"tooth twice", heading + "2,1,2,3\n\n2,1,2,3\n", ":4: tooth 2 stands on line 2 already"},
        {"a word", heading + "2,1,high,3\n", ":2: malformed number \"high\" in column \"torque\""},
        {"letters behind a number", heading + "2,1mm,2,3\n",
         ":2: malformed number \"1mm\" in column \"edge\""},
        {"empty cell", heading + "2,,2,3\n", ":2: column \"edge\" is empty"},
        {"too great", heading + "2,1,46,3\n",
         ":2: 46 in column \"torque\" is not between -45 and 45"},
        {"too small", "tooth,edge,torque,tip,height\n2,1,2,3,3.9\n",
         ":2: 3.9 in column \"height\" is not between 4 and 16"},
        {"not a number", heading + "2,nan,2,3\n",
         ":2: nan in column \"edge\" is not between -25 and 25"},
        {"a tooth is missing", heading + allTeeth(21), ": tooth 21 is missing"},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(messageFor(c.input), c.expected);
    }
}

TEST_F(MeshgenPatientFile, aFileThatCannotBeReadIsNamed)
{
    try {
        readPatient("/nowhere/patient.csv");
        FAIL() << "nothing was thrown";
    } catch (const std::runtime_error &error) {
        EXPECT_STREQ(error.what(),
                     "/nowhere/patient.csv: cannot be read: No such file or directory");
    }
}

} // namespace
} // namespace kelo::meshgen
