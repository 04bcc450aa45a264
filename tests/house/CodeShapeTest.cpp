// How long functions are, how comments are marked, and that no test waits for a fixed time. Sources
// are formatted exactly (house.everySourceIsFormatted), so that lines suffice to see this: the
// brace that opens a function is alone on its line, and the one that closes it is the next in its
// column.

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
using kelo::test::startsWith;

using Lines = std::vector<std::string>;

bool isCode(const std::string &path)
{
    return endsWith(path, ".h") || endsWith(path, ".cpp");
}

std::string trimmed(const std::string &line)
{
    const std::size_t first = line.find_first_not_of(' ');
    return first == std::string::npos ? std::string() : line.substr(first);
}

bool isComment(const std::string &line)
{
    return startsWith(trimmed(line), "//");
}

/// A function, or another block that is opened by a brace of its own: lines counted from 0.
struct Block
{
    std::size_t head;  ///< where its declaration begins
    std::size_t brace; ///< where it opens
    std::size_t end;   ///< where it closes
};

/// Whether a line cannot belong to the declaration that begins on the next one.
bool endsWhatCameBefore(const std::string &line)
{
    const std::string text = trimmed(line);
    return text.empty() || startsWith(text, "//") || startsWith(text, "#") ||
           startsWith(text, "}") || endsWith(text, ";") || endsWith(text, "{") ||
           endsWith(text, ":");
}

/// Functions and lambdas in braces of their own; neither classes nor namespaces.
std::vector<Block> functionsIn(const Lines &lines)
{
    static const std::regex other(
        "(^|> )((const|static|inline) )*(class|struct|namespace|enum|union)\\b");
    std::vector<Block> found;
    for (std::size_t brace = 0; brace < lines.size(); ++brace) {
        if (trimmed(lines[brace]) != "{") continue;
        const std::string closing = lines[brace].substr(0, lines[brace].size() - 1) + '}';
        std::size_t end = brace + 1;
        while (end < lines.size() && !startsWith(lines[end], closing))
            ++end;
        std::size_t head = brace;
        std::string declaration;
        while (head > 0 && !endsWhatCameBefore(lines[head - 1]))
            declaration = trimmed(lines[--head]) + ' ' + declaration;
        if (!std::regex_search(declaration.substr(0, declaration.find('(')), other))
            found.push_back({head, brace, end});
    }
    return found;
}

constexpr std::size_t longestFunction = 60;

/// The functions that are longer and have no line above them that gives the reason: "// Long, ...".
Lines longFunctionsIn(const std::string &source)
{
    const Lines lines = linesOf(source);
    Lines found;
    for (const Block &function : functionsIn(lines)) {
        if (function.end + 1 - function.head <= longestFunction) continue;
        const bool hasReason =
            function.head > 0 && startsWith(trimmed(lines[function.head - 1]), "// Long, ");
        if (!hasReason) found.push_back(trimmed(lines[function.head]));
    }
    return found;
}

std::string functionOf(std::size_t lineCount)
{
    std::string text = "int f()\n{\n";
    for (std::size_t i = 3; i < lineCount; ++i)
        text += "    g();\n";
    return text + "}\n";
}

TEST(FunctionLength, noFunctionIsLongerThanSixtyLinesWithoutAReason)
{
    std::size_t functionCount = 0;
    for (const std::string &path : sourceFiles()) {
        if (!isCode(path)) continue;
        const std::string source = contentOfSourceFile(path);
        EXPECT_EQ(longFunctionsIn(source), Lines()) << path;
        functionCount += functionsIn(linesOf(source)).size();
    }
    EXPECT_GT(functionCount, 1000u);
}

TEST(FunctionLength, aPlantedFunctionIsFoundUnlessItGivesAReason)
{
    EXPECT_EQ(longFunctionsIn(functionOf(60)), Lines());
    EXPECT_EQ(longFunctionsIn(functionOf(61)), Lines{"int f()"});
    EXPECT_EQ(longFunctionsIn("/// Does much.\n" + functionOf(61)), Lines{"int f()"});
    EXPECT_EQ(longFunctionsIn("// Long, for a reason.\n" + functionOf(61)), Lines());
    EXPECT_EQ(longFunctionsIn("template<class T>\nclass C : public B\n{\n" +
                              std::string(100, '\n') + "};\n"),
              Lines());
}

/// Whether each line is inside of a function or of the list of an initialiser.
std::vector<bool> insideOfBracesIn(const Lines &lines)
{
    std::vector<bool> inside(lines.size(), false);
    const auto mark = [&](std::size_t from, std::size_t to) {
        for (std::size_t i = from; i < std::min(to, lines.size()); ++i)
            inside[i] = true;
    };
    for (const Block &function : functionsIn(lines))
        mark(function.brace + 1, function.end);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (!endsWith(lines[i], "{") || lines[i].find('=') == std::string::npos) continue;
        std::size_t end = i + 1;
        while (end < lines.size() && !endsWith(lines[end], ";"))
            ++end;
        mark(i + 1, end);
    }
    return inside;
}

/// Whether a line goes on with a list: what initialises members, a row of a table.
bool continuesAList(const std::string &line)
{
    const std::string text = trimmed(line);
    return startsWith(text, ":") || startsWith(text, "{") || startsWith(text, "\"");
}

/// Comments that describe a declaration and are not marked with "///", and comments inside of a
/// function that are; by the number of the line, counted from 1. A comment describes what follows
/// on the next line; "// [name]" marks a piece of an example.
std::vector<std::size_t> wronglyMarkedCommentsIn(const std::string &source)
{
    const Lines lines = linesOf(source);
    const std::vector<bool> inside = insideOfBracesIn(lines);
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (!isComment(lines[i])) continue;
        std::size_t next = i;
        while (next < lines.size() && isComment(lines[next]))
            ++next;
        const std::string text = trimmed(lines[i]);
        const std::string described = next < lines.size() ? trimmed(lines[next]) : std::string();
        const bool isDocumentation = startsWith(text, "///");
        const bool describesADeclaration =
            !inside[i] && !described.empty() && !startsWith(described, "#") &&
            !startsWith(described, "}") && !startsWith(described, "namespace") &&
            !continuesAList(described);
        const bool isExempt = startsWith(text, "// [") || startsWith(text, "// Long, ");
        if (!isExempt && (inside[i] ? isDocumentation : describesADeclaration && !isDocumentation))
            found.push_back(i + 1);
        i = next;
    }
    return found;
}

TEST(Comments, declarationsAreDescribedWithThreeSlashesAndStepsWithTwo)
{
    for (const std::string &path : sourceFiles()) {
        if (!isCode(path)) continue;
        for (const std::size_t line : wronglyMarkedCommentsIn(contentOfSourceFile(path)))
            ADD_FAILURE() << path << ":" << line;
    }
}

TEST(Comments, aPlantedCommentIsFound)
{
    using Numbers = std::vector<std::size_t>;
    EXPECT_EQ(wronglyMarkedCommentsIn("// About f.\nint f();\n"), Numbers{1});
    EXPECT_EQ(wronglyMarkedCommentsIn("/// About f.\nint f();\n"), Numbers());
    EXPECT_EQ(wronglyMarkedCommentsIn("// About the file.\n\nint f();\n"), Numbers());
    EXPECT_EQ(wronglyMarkedCommentsIn("int f()\n{\n    /// A step.\n    g();\n}\n"), Numbers{3});
    EXPECT_EQ(wronglyMarkedCommentsIn("template<class T>\nint f()\n{\n    /// A step.\n}\n"),
              Numbers{4});
    EXPECT_EQ(wronglyMarkedCommentsIn("int f()\n{\n    // A step.\n    g();\n}\n"), Numbers());
    EXPECT_EQ(wronglyMarkedCommentsIn("const Row rows[] = {\n    // A row.\n    row,\n};\n"),
              Numbers());
}

/// Waits for a fixed time that do not say on their line why.
Lines fixedWaitsIn(const std::string &source)
{
    static const std::regex wait("\\b(letPass|qWait|msleep|usleep|sleep|sleep_for|sleep_until|"
                                 "nanosleep)\\((?!int )|\\bsingleShot\\([1-9]");
    Lines found;
    for (const std::string &line : linesOf(source)) {
        if (line.find("//") == std::string::npos && std::regex_search(line, wait))
            found.push_back(trimmed(line));
    }
    return found;
}

TEST(FixedWaits, everyFixedWaitOfATestSaysWhy)
{
    for (const std::string &path : sourceFiles()) {
        if (!startsWith(path, "tests/") || !isCode(path)) continue;
        EXPECT_EQ(fixedWaitsIn(contentOfSourceFile(path)), Lines()) << path;
    }
}

TEST(FixedWaits, aPlantedWaitIsFoundUnlessItGivesAReason)
{
    const std::string wait = std::string("letPass") + "(50);";
    EXPECT_EQ(fixedWaitsIn("    " + wait + '\n'), Lines{wait});
    EXPECT_EQ(fixedWaitsIn("    " + wait + " // a frame would come within 5 ms\n"), Lines());
    const std::string timer = std::string("QTimer::singleShot") + "(100, [] {});";
    EXPECT_EQ(fixedWaitsIn(timer), Lines{timer});
    EXPECT_EQ(fixedWaitsIn("QTimer::singleShot(0, [] {});"), Lines());
}

} // namespace
