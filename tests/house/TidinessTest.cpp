#include "tests/house/SourceTree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <string>
#include <vector>

namespace {

using kelo::test::contentOfSourceFile;
using kelo::test::endsWith;
using kelo::test::linesOf;
using kelo::test::sourceFiles;

bool hasEnding(const std::string &path, const std::vector<std::string> &endings)
{
    return std::any_of(endings.begin(), endings.end(),
                       [&](const std::string &ending) { return endsWith(path, ending); });
}

bool isText(const std::string &path)
{
    return !hasEnding(path, {".png", ".pdf", ".obj", ".ico"});
}

/// Words that tell of unfinished work, or of how the project came about instead of what it is.
/// They stand here in two halves, so that this file does not hold them itself.
const std::regex &unwantedWords()
{
    static const std::regex expression = [] {
        static constexpr const char *halves[][2] = {
            {"TO", "DO"},        {"FIX", "ME"},
            {"XX", "X"},         {"HA", "CK"},
            {"st", "ub"},        {"sp", "ec"},
            {"sp", "ecs"},       {"specif", "ication"},
            {"for", " now"},     {"not", " implemented"},
            {"place", "holder"},
        };
        std::string pattern = "\\b(";
        for (const auto &half : halves)
            pattern += std::string(half[0]) + half[1] + "|";
        // Numbered chapters of some other text, and folders of one machine.
        pattern += "Pa";
        pattern += "rt [0-9]+\\.[0-9]+)\\b|/wo";
        pattern += "rk/";
        return std::regex(pattern, std::regex::icase | std::regex::optimize);
    }();
    return expression;
}

std::vector<std::string> unwantedWordsIn(const std::string &text)
{
    std::vector<std::string> found;
    for (auto it = std::sregex_iterator(text.begin(), text.end(), unwantedWords());
         it != std::sregex_iterator(); ++it)
        found.push_back(it->str());
    return found;
}

TEST(Words, noFileTellsOfUnfinishedWork)
{
    for (const std::string &path : sourceFiles()) {
        if (!isText(path)) continue;
        std::size_t number = 0;
        for (const std::string &line : linesOf(contentOfSourceFile(path))) {
            ++number;
            for (const std::string &word : unwantedWordsIn(line))
                ADD_FAILURE() << path << ":" << number << ": " << word;
        }
    }
}

TEST(Words, theSearchFindsAPlantedWord)
{
    const std::vector<std::string> planted = {std::string("TO") + "DO", std::string("for") + " now",
                                              std::string("Pa") + "rt 5.1"};
    for (const std::string &word : planted)
        EXPECT_EQ(unwantedWordsIn("see " + word + "."), std::vector<std::string>{word});
}

TEST(Words, aWordInsideAnotherIsNoMatch)
{
    EXPECT_TRUE(unwantedWordsIn("specular, stubborn, special, setPlaceholderText").empty());
}

/// More than this in one file is more than one topic.
constexpr std::size_t longestFile = 600;

bool countsForLength(const std::string &path)
{
    // A table of constants is read by looking a row up, not from top to bottom.
    if (hasEnding(path, {"Tables.cpp", "Tables.h"})) return false;
    return hasEnding(path, {".h", ".cpp", ".cmake", ".sh", "CMakeLists.txt"});
}

TEST(FileLength, noFileIsLongerThanSixHundredLines)
{
    std::size_t fileCount = 0;
    for (const std::string &path : sourceFiles()) {
        if (!countsForLength(path)) continue;
        ++fileCount;
        EXPECT_LE(linesOf(contentOfSourceFile(path)).size(), longestFile) << path;
    }
    EXPECT_GT(fileCount, 20u);
}

TEST(FileLength, tablesOfConstantsMayBeLonger)
{
    EXPECT_FALSE(countsForLength("keloOpenGL/bands/RubberBandTables.cpp"));
    EXPECT_TRUE(countsForLength("keloOpenGL/bands/RubberBand.cpp"));
}

/// Names of tests in a source that are longer than a line of a test report has room for.
std::vector<std::string> longTestNamesIn(const std::string &source)
{
    static const std::regex test("\\bTEST(?:_F|_P)?\\(\\s*\\w+,\\s*(\\w{61,})\\)");
    std::vector<std::string> found;
    for (auto it = std::sregex_iterator(source.begin(), source.end(), test);
         it != std::sregex_iterator(); ++it)
        found.push_back(it->str(1));
    return found;
}

TEST(TestNames, haveAtMostSixtyCharacters)
{
    const std::string planted(61, 'a');
    EXPECT_EQ(longTestNamesIn("TEST_F(Planted,\n       " + planted + ")"),
              std::vector<std::string>{planted});
    EXPECT_EQ(longTestNamesIn("TEST(Planted, " + planted.substr(1) + ")"),
              std::vector<std::string>{});
    for (const std::string &path : sourceFiles()) {
        if (!endsWith(path, "Test.cpp")) continue;
        EXPECT_EQ(longTestNamesIn(contentOfSourceFile(path)), std::vector<std::string>{}) << path;
    }
}

TEST(Headers, everyHeaderIsReadOnce)
{
    for (const std::string &path : sourceFiles()) {
        if (!endsWith(path, ".h")) continue;
        const auto lines = linesOf(contentOfSourceFile(path));
        EXPECT_TRUE(std::find(lines.begin(), lines.end(), "#pragma once") != lines.end()) << path;
    }
}

TEST(Headers, noHeaderUsesAWholeNamespace)
{
    for (const std::string &path : sourceFiles()) {
        if (!endsWith(path, ".h")) continue;
        EXPECT_EQ(contentOfSourceFile(path).find("using namespace"), std::string::npos) << path;
    }
}

} // namespace
