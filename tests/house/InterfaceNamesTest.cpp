#include "tests/house/SourceTree.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>
#include <string>
#include <vector>

// The tables from interface names to C++ names: every name is declared in the header that stands
// above its table, and follows the rule that the page gives.

namespace {

using kelo::test::contentOfSourceFile;
using kelo::test::linesOf;
using kelo::test::startsWith;

struct Row
{
    std::string selector;
    std::string name;
    std::string header;
};

std::vector<Row> rowsOf(const std::string &page)
{
    static const std::regex headerLine("In `([^`]+)`:");
    static const std::regex row(R"(\| `([^`]+)` \| `([^`]+)` \|)");
    std::vector<Row> rows;
    std::string header;
    for (const std::string &line : linesOf(page)) {
        std::smatch match;
        if (std::regex_match(line, match, headerLine)) header = match[1];
        if (std::regex_match(line, match, row)) rows.push_back({match[1], match[2], header});
    }
    return rows;
}

const std::vector<Row> &pageRows()
{
    static const std::vector<Row> rows = rowsOf(contentOfSourceFile("docs/interface-names.md"));
    return rows;
}

/// The header's text without its comments, in which a name may stand without being declared.
std::string codeInHeader(const std::string &header)
{
    std::string code;
    for (const std::string &line : linesOf(header))
        code += line.substr(0, line.find("//")) + "\n";
    return code;
}

/// A function's name before its parenthesis, or that of a delegate's member before the semicolon.
bool isDeclaredIn(const std::string &name, const std::string &header)
{
    return std::regex_search(codeInHeader(header), std::regex("\\b" + name + "\\s*[(;]"));
}

/// Whether a host can call what is declared under the name: a declaration that is not private.
bool isOpenIn(const std::string &name, const std::string &header)
{
    static const std::regex type("(class|struct)\\b[^;]*");
    static const std::regex access("\\s*(public|protected|private):.*");
    const std::regex declaration("\\b" + name + "\\s*[(;]");
    bool isPrivate = false;
    for (const std::string &line : linesOf(codeInHeader(header))) {
        std::smatch match;
        if (std::regex_match(line, match, type)) isPrivate = match[1] == "class";
        if (std::regex_match(line, match, access)) isPrivate = match[1] == "private";
        if (startsWith(line, "};")) isPrivate = false;
        if (!isPrivate && std::regex_search(line, declaration)) return true;
    }
    return false;
}

/// The parts joined by underscores; parts without a word drop out.
std::string nameByRule(const std::string &selector)
{
    static const std::regex colons(":+");
    std::string name = std::regex_replace(selector, colons, "_");
    while (!name.empty() && name.back() == '_')
        name.pop_back();
    return name;
}

bool followsRule(const Row &row)
{
    if (row.name == nameByRule(row.selector)) return true;
    // Constructors, copies, and extensions of another library's class.
    if (startsWith(row.selector, "initWith")) return row.name.find('_') == std::string::npos;
    if (row.selector == "copyWithZone:") return row.name == "copy";
    if (row.selector == "mutableCopyWithZone:") return row.name == "mutableCopy";
    return row.name == "UserDefaults_" + nameByRule(row.selector);
}

TEST(InterfaceNames, everyNameIsDeclaredInTheHeaderAboveIt)
{
    EXPECT_GT(pageRows().size(), 200u);
    for (const Row &row : pageRows())
        EXPECT_TRUE(isDeclaredIn(row.name, contentOfSourceFile(row.header)))
            << row.name << " is not in " << row.header;
}

TEST(InterfaceNames, noNameIsPrivate)
{
    for (const Row &row : pageRows())
        EXPECT_TRUE(isOpenIn(row.name, contentOfSourceFile(row.header)))
            << row.name << " is private in " << row.header;
}

TEST(InterfaceNames, aPrivateNameIsNotOpen)
{
    const std::string header = "class KELO_EXPORT View : public Base\n{\n    void early();\n"
                               "public:\n    void open();\nprivate:\n    void hidden(int);\n};\n"
                               "void free();\n";
    EXPECT_TRUE(isOpenIn("open", header));
    EXPECT_TRUE(isOpenIn("free", header));
    EXPECT_FALSE(isOpenIn("early", header));
    EXPECT_FALSE(isOpenIn("hidden", header));
}

TEST(InterfaceNames, everyNameFollowsTheRule)
{
    for (const Row &row : pageRows())
        EXPECT_TRUE(followsRule(row)) << row.selector << " is given as " << row.name;
}

TEST(InterfaceNames, everyInterfaceNameIsGivenOnce)
{
    std::set<std::string> given;
    for (const Row &row : pageRows())
        EXPECT_TRUE(given.insert(row.selector).second) << row.selector;
}

TEST(InterfaceNames, theRuleJoinsPartsAndDropsColons)
{
    EXPECT_EQ(nameByRule("bracket:setColorWithBracketColorTypeID:"),
              "bracket_setColorWithBracketColorTypeID");
    EXPECT_EQ(nameByRule("setWorldRotationAngle:axis:::"), "setWorldRotationAngle_axis");
    EXPECT_EQ(nameByRule("absorb:::"), "absorb");
    EXPECT_FALSE(followsRule({"placeElasticModel:", "putElasticModel", ""}));
}

TEST(InterfaceNames, aNameThatOnlyACommentHasIsNotDeclared)
{
    EXPECT_FALSE(isDeclaredIn("turn", "/// As turn(angle) does.\nvoid turnBack(int angle);\n"));
    EXPECT_TRUE(isDeclaredIn("turn", "void turn(int angle);\n"));
    EXPECT_TRUE(isDeclaredIn("turned", "std::function<void(int)> turned;\n"));
    EXPECT_EQ(rowsOf("In `a/B.h`:\n\n| `turn:` | `turn` |\n").at(0).header, "a/B.h");
}

} // namespace
