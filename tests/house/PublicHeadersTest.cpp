#include "tests/house/SourceTree.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>
#include <string>
#include <vector>

// What a host sees of the library: the headers that are installed, and in them what is marked with
// KELO_EXPORT. That each of them compiles alone is shown by the test of an installation.

namespace {

using kelo::test::contentOfSourceFile;
using kelo::test::endsWith;
using kelo::test::linesOf;
using kelo::test::sourceFiles;
using kelo::test::startsWith;

using Paths = std::set<std::string>;

const Paths &publicHeaders()
{
    static const Paths headers = [] {
        Paths found;
        for (const std::string &line :
             linesOf(contentOfSourceFile("cmake/KeloPublicHeaders.cmake")))
            if (startsWith(line, "    ") && endsWith(line, ".h")) found.insert(line.substr(4));
        return found;
    }();
    return headers;
}

std::vector<std::string> quotedIncludesOf(const std::string &content)
{
    static const std::regex include(R"re(^\s*#\s*include\s*"([^"]+)".*)re");
    std::vector<std::string> headers;
    for (const std::string &line : linesOf(content)) {
        std::smatch match;
        if (std::regex_match(line, match, include)) headers.push_back(match[1]);
    }
    return headers;
}

/// The header and all that it includes.
void bring(const std::string &header, Paths &brought)
{
    if (!brought.insert(header).second) return;
    for (const std::string &next : quotedIncludesOf(contentOfSourceFile(header)))
        bring(next, brought);
}

TEST(PublicHeaders, areWhatTheOneHeaderForHostsBrings)
{
    Paths brought;
    bring("keloOpenGL/keloOpenGL.h", brought);
    EXPECT_GT(brought.size(), 50u);
    EXPECT_EQ(brought, publicHeaders());
}

/// What a host of this tree includes that it should not, of one source.
std::vector<std::string> innerHeadersIn(const std::string &folder, const std::string &content)
{
    std::vector<std::string> found;
    for (const std::string &header : quotedIncludesOf(content)) {
        // The checks of mesh files are the tool's, which the viewer shares.
        // JSONProblems.h is source that both readers of JSON files share, and no host's affair.
        const bool isOwn = startsWith(header, folder) || header == "tools/meshcheck/MeshCheck.h" ||
                           header == "keloModel/JSONProblems.h";
        if (!isOwn && !publicHeaders().count(header) && !endsWith(header, ".moc"))
            found.push_back(header);
    }
    return found;
}

/// The examples include no others, since they are hosts: the compiler finds no others for them.
TEST(PublicHeaders, areAllThatTheViewerIncludes)
{
    std::size_t sourceCount = 0;
    for (const std::string &path : sourceFiles()) {
        if (!startsWith(path, "viewer/")) continue;
        if (!endsWith(path, ".h") && !endsWith(path, ".cpp")) continue;
        ++sourceCount;
        for (const std::string &header : innerHeadersIn("viewer/", contentOfSourceFile(path)))
            ADD_FAILURE() << path << " includes " << header << ", which is not installed";
    }
    EXPECT_GT(sourceCount, 20u);
}

TEST(PublicHeaders, anInnerHeaderInTheViewerIsFound)
{
    const std::string planted = "#include \"viewer/settings/CommandLine.h\"\n"
                                "#include \"keloOpenGL/menus/TreatmentMenus.h\"\n"
                                "#include \"keloOpenGL/treatment/DXOpenGL.h\"\n"
                                "#include \"platform/gl.h\"\n";
    EXPECT_EQ(innerHeadersIn("viewer/", planted),
              (std::vector<std::string>{"keloOpenGL/menus/TreatmentMenus.h", "platform/gl.h"}));
}

/// The definition of a class that starts at this line, up to its closing brace.
std::string classBodyFrom(const std::vector<std::string> &lines, std::size_t first)
{
    std::string body;
    for (std::size_t i = first; i < lines.size() && lines[i] != "};"; ++i)
        body += lines[i] + "\n";
    return body;
}

/// Whether a class has a virtual table, or code in one of the sources.
bool needsExport(const std::string &name, const std::string &body, const std::string &sources)
{
    const std::string head = body.substr(0, body.find('\n'));
    if (head.find(" : ") != std::string::npos || body.find("virtual ") != std::string::npos)
        return true;
    // At the start of a line or behind a result type.
    for (const char *start : {"\n", " ", "*", "&"})
        if (sources.find(start + name + "::" + name + "(") != std::string::npos) return true;
    return std::regex_search(sources, std::regex("\n[^\n /#][^\n;={]*\\b" + name + "::\\w+\\("));
}

/// Classes and functions at the outermost level of a header that a host cannot link.
std::vector<std::string> unmarkedIn(const std::string &header, const std::string &sources)
{
    static const std::regex classHead(R"((class|struct) (\w+)(?: final)?(?: : .*)?)");
    static const std::regex function(
        R"((?:\[\[nodiscard\]\] )?([A-Za-z_][\w:<>, *&]*[ *&]\w+\(.*|extern .*))");
    static const std::regex notLinked(
        R"(.*\b(inline|constexpr|template|using|static_assert|namespace|KELO_EXPORT)\b.*)");
    std::vector<std::string> found;
    const auto lines = linesOf(header);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::string before = i ? lines[i - 1] : "";
        if (startsWith(before, "template") || startsWith(before, "inline")) continue;
        std::smatch match;
        if (std::regex_match(lines[i], match, classHead)) {
            if (needsExport(match[2], classBodyFrom(lines, i), sources)) found.push_back(match[2]);
        } else if (std::regex_match(lines[i], match, function) &&
                   !std::regex_match(lines[i], notLinked) && !endsWith(before, ",")) {
            found.push_back(lines[i]);
        }
    }
    return found;
}

/// The library's sources, one after the other.
std::string librarySources()
{
    std::string sources;
    for (const std::string &path : sourceFiles())
        for (const char *room :
             {"geometry/", "platform/", "keloModel/", "models/", "document/", "keloOpenGL/"})
            if (startsWith(path, room) && endsWith(path, ".cpp"))
                sources += "\n" + contentOfSourceFile(path);
    return sources;
}

TEST(PublicHeaders, markWhatAHostLinks)
{
    const std::string sources = librarySources();
    for (const std::string &header : publicHeaders())
        for (const std::string &unmarked : unmarkedIn(contentOfSourceFile(header), sources))
            ADD_FAILURE() << header << ": without KELO_EXPORT: " << unmarked;
}

TEST(PublicHeaders, anUnmarkedClassOrFunctionIsFound)
{
    const std::string sources = "\nvoid InBoth::run()\n{}\nElsewhere::Elsewhere() = default;\n";
    const auto unmarked = [&](const std::string &header) { return unmarkedIn(header, sources); };
    using Found = std::vector<std::string>;
    EXPECT_EQ(unmarked("class InBoth\n{\n    void run();\n};\n"), Found{"InBoth"});
    EXPECT_EQ(unmarked("class Elsewhere\n{\n    Elsewhere();\n};\n"), Found{"Elsewhere"});
    EXPECT_EQ(unmarked("class Problem : public std::runtime_error\n{\n};\n"), Found{"Problem"});
    EXPECT_EQ(unmarked("struct Table\n{\n    virtual void run() {}\n};\n"), Found{"Table"});
    EXPECT_EQ(unmarked("[[nodiscard]] Matrix turned(int angle);\n"),
              Found{"[[nodiscard]] Matrix turned(int angle);"});
    EXPECT_EQ(unmarked("extern int count;\n"), Found{"extern int count;"});
    // What is marked, or has no code of its own to link.
    EXPECT_EQ(unmarked("class KELO_EXPORT InBoth\n{\n    void run();\n};\n"), Found{});
    EXPECT_EQ(unmarked("struct Plain\n{\n    int x = 0;\n};\n"), Found{});
    EXPECT_EQ(unmarked("KELO_EXPORT void turn(int angle);\n"), Found{});
    EXPECT_EQ(unmarked("inline int twice(int x)\n{\n    return 2 * x;\n}\n"), Found{});
}

} // namespace
