#include "tests/house/SourceTree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <regex>
#include <set>
#include <string>
#include <vector>

// What stands in backticks, in code blocks and behind links in the documents must be there: old
// documents are worse than none.

namespace {

using kelo::test::contains;
using kelo::test::contentOfSourceFile;
using kelo::test::endsWith;
using kelo::test::existsInSourceTree;
using kelo::test::linesOf;
using kelo::test::sourceFiles;
using kelo::test::startsWith;

using Texts = std::vector<std::string>;

Texts documents()
{
    Texts found;
    for (const std::string &path : sourceFiles())
        if (endsWith(path, ".md")) found.push_back(path);
    return found;
}

/// All matches of the first group of an expression.
Texts matchesIn(const std::string &text, const std::regex &expression)
{
    Texts found;
    for (auto it = std::sregex_iterator(text.begin(), text.end(), expression);
         it != std::sregex_iterator(); ++it)
        found.push_back((*it)[1]);
    return found;
}

struct Code
{
    Texts spans;    ///< what stands in backticks within the text
    Texts commands; ///< the lines of blocks marked sh
    Texts blocks;   ///< the blocks marked cpp, whole
};

Code codeInDocument(const std::string &document)
{
    static const std::regex span("`([^`]+)`");
    Code code;
    std::string language;
    bool inBlock = false;
    for (const std::string &line : linesOf(document)) {
        if (startsWith(line, "```")) {
            inBlock = !inBlock;
            language = inBlock ? line.substr(3) : "";
            if (inBlock && language == "cpp") code.blocks.emplace_back();
        } else if (!inBlock) {
            for (const std::string &text : matchesIn(line, span))
                code.spans.push_back(text);
        } else if (language == "sh") {
            code.commands.push_back(line.substr(0, line.find(" #")));
        } else if (language == "cpp") {
            code.blocks.back() += line + "\n";
        }
    }
    return code;
}

Texts presetsIn(const std::string &presetFile)
{
    static const std::regex name(R"re("name": "([^"]+)")re");
    const std::string configurePresets = presetFile.substr(0, presetFile.find("\"buildPresets\""));
    Texts presets = matchesIn(configurePresets, name);
    presets.erase(std::remove(presets.begin(), presets.end(), "base"), presets.end());
    return presets;
}

const Texts &presets()
{
    static const Texts list = presetsIn(contentOfSourceFile("CMakePresets.json"));
    return list;
}

/// The files of the tree by their last names: a text may call a file by that alone.
const std::set<std::string> &fileNames()
{
    static const std::set<std::string> names = [] {
        std::set<std::string> found;
        for (const std::string &path : sourceFiles())
            found.insert(path.substr(path.rfind('/') + 1));
        return found;
    }();
    return names;
}

/// Words that look like a path of this tree: with a folder that stands in the root, or with the
/// ending of a file of ours. Others (a/b as an alternative, names of packages) are not looked at.
bool looksLikePath(const std::string &word)
{
    static const std::regex form(R"(\.?[A-Za-z0-9_][A-Za-z0-9_./<>-]*)");
    static const std::regex ending(R"(.*\.(h|cpp|md|sh|json|cmake|txt|svg|csv|supp))");
    if (!std::regex_match(word, form)) return false;
    const auto slash = word.find('/');
    if (slash == std::string::npos) return std::regex_match(word, ending);
    const std::string first = word.substr(0, slash);
    return first == "build" || startsWith(first, ".") || existsInSourceTree(first);
}

/// Whether the path is there, or is made by a preset that is there.
bool pathHolds(std::string path)
{
    if (startsWith(path, "./")) path = path.substr(2);
    // Made by the viewer, at any name; OUT stands for one that the reader chooses.
    if (startsWith(path, "out/") || startsWith(path, "OUT.")) return true;
    if (startsWith(path, "build/")) {
        const std::string preset = path.substr(6, path.find('/', 6) - 6);
        return preset.empty() || preset == "<preset>" || contains(presets(), preset);
    }
    return existsInSourceTree(path) ||
           (path.find('/') == std::string::npos && fileNames().count(path));
}

/// The options of the programs that the documents name, by the sources that read them.
bool optionHolds(const std::string &option)
{
    // Those of CMake and CTest, whose sources are not ours.
    static const Texts others = {"--preset", "--build",  "--install",
                                 "--prefix", "--target", "--test-dir"};
    if (contains(others, option)) return true;
    const std::string quoted = "\"" + option.substr(2) + "\"";
    for (const std::string &path : sourceFiles()) {
        const bool readsOptions = startsWith(path, "viewer/") || startsWith(path, "tools/");
        if (!readsOptions || !endsWith(path, ".cpp")) continue;
        const std::string source = contentOfSourceFile(path);
        if (source.find(quoted) != std::string::npos ||
            source.find("\"" + option + "\"") != std::string::npos)
            return true;
    }
    return option == "--help" || option == "--version";
}

/// What a word or a command of a document names that is not there, one text each.
Texts missingIn(const std::string &code)
{
    static const std::regex words(R"(([^\s"'=|]+))");
    static const std::regex preset(R"(--preset[ =]([A-Za-z<>]+))");
    static const std::regex option(R"((?:^|[\s`])(--[a-z][a-z-]+))");
    Texts missing;
    for (const std::string &word : matchesIn(code, words))
        if ((looksLikePath(word) || startsWith(word, "./")) && !pathHolds(word))
            missing.push_back(word);
    for (const std::string &name : matchesIn(code, preset))
        if (name != "<preset>" && !contains(presets(), name)) missing.push_back("preset " + name);
    for (const std::string &name : matchesIn(code, option))
        if (!optionHolds(name)) missing.push_back(name);
    return missing;
}

/// The last column of each row of a table: the names in it that are marked as code.
Texts namesInLastColumnOf(const std::string &document)
{
    static const std::regex row(R"re(\|([^|]*)\|\s*$)re");
    static const std::regex span("`(\\w+)`");
    Texts names;
    for (const std::string &line : linesOf(document))
        for (const std::string &column : matchesIn(line, row))
            for (const std::string &name : matchesIn(column, span))
                names.push_back(name);
    return names;
}

TEST(Documents, everyLimitNamesATestThatIsThere)
{
    std::set<std::string> tests;
    static const std::regex test(R"re(\bTEST(?:_F|_P)?\(\s*\w+,\s*(\w+)\))re");
    for (const std::string &path : sourceFiles()) {
        if (!endsWith(path, "Test.cpp")) continue;
        for (const std::string &name : matchesIn(contentOfSourceFile(path), test))
            tests.insert(name);
    }
    const Texts named = namesInLastColumnOf(contentOfSourceFile("docs/limits.md"));
    EXPECT_GT(named.size(), 30u);
    for (const std::string &name : named)
        EXPECT_TRUE(tests.count(name)) << name;
    EXPECT_EQ(namesInLastColumnOf("| `a` | `b c` | `one`, `two` |\n"), (Texts{"one", "two"}));
}

TEST(Documents, everyPathAndCommandInThemIsThere)
{
    std::size_t lookedAt = 0;
    for (const std::string &document : documents()) {
        const Code code = codeInDocument(contentOfSourceFile(document));
        for (const Texts &texts : {code.spans, code.commands}) {
            for (const std::string &text : texts) {
                ++lookedAt;
                for (const std::string &missing : missingIn(text))
                    ADD_FAILURE() << document << " names " << missing << " in: " << text;
            }
        }
    }
    EXPECT_GT(lookedAt, 50u);
}

TEST(Documents, everyLinkLeadsToAFile)
{
    static const std::regex link(R"(\]\(([^)#\s]+)[^)]*\))");
    for (const std::string &document : documents()) {
        const auto folder = std::filesystem::path(document).parent_path();
        for (const std::string &target : matchesIn(contentOfSourceFile(document), link)) {
            if (startsWith(target, "http")) continue;
            const auto path = (folder / target).lexically_normal();
            EXPECT_TRUE(existsInSourceTree(path.generic_string())) << document << ": " << target;
        }
    }
}

TEST(Documents, everyPresetIsExplained)
{
    const std::string text = contentOfSourceFile("README.md");
    for (const std::string &preset : presets())
        EXPECT_NE(text.find("| `" + preset + "` |"), std::string::npos) << preset;
}

TEST(Documents, everyOptionOfTheViewerIsExplained)
{
    static const std::regex option(R"re(\boption\(\s*"([a-z-]+)")re");
    const std::string text = contentOfSourceFile("README.md");
    const Texts options = matchesIn(contentOfSourceFile("viewer/settings/CommandLine.cpp"), option);
    EXPECT_GE(options.size(), 15u);
    for (const std::string &name : options)
        EXPECT_TRUE(std::regex_search(text, std::regex("\\| `--" + name + "[ `]"))) << name;
}

/// A source as one line without indentation, so that a quoted piece may be indented less.
std::string withoutIndentation(const std::string &text)
{
    std::string result;
    for (const std::string &line : linesOf(text)) {
        const auto start = line.find_first_not_of(' ');
        if (start != std::string::npos) result += line.substr(start) + "\n";
    }
    return result;
}

TEST(Documents, theCodeInThemIsCodeThatIsCompiled)
{
    std::string compiled;
    for (const std::string &path : sourceFiles())
        if (startsWith(path, "examples/") && endsWith(path, ".cpp"))
            compiled += withoutIndentation(contentOfSourceFile(path));
    std::size_t blockCount = 0;
    for (const std::string &document : documents()) {
        for (const std::string &block : codeInDocument(contentOfSourceFile(document)).blocks) {
            ++blockCount;
            EXPECT_NE(compiled.find(withoutIndentation(block)), std::string::npos)
                << document << " shows code that no example holds:\n"
                << block;
        }
    }
    EXPECT_GT(blockCount, 1u);
}

TEST(Documents, theCheckFindsWhatIsNotThere)
{
    EXPECT_EQ(missingIn("geometry/NoSuchFile.h"), Texts{"geometry/NoSuchFile.h"});
    EXPECT_EQ(missingIn("NoSuchFile.cmake"), Texts{"NoSuchFile.cmake"});
    EXPECT_EQ(missingIn("./no-such-script"), Texts{"./no-such-script"});
    EXPECT_EQ(missingIn("cmake --preset nosuchpreset"), Texts{"preset nosuchpreset"});
    EXPECT_EQ(missingIn("build/nosuchpreset/bin"), Texts{"build/nosuchpreset/bin"});
    EXPECT_EQ(missingIn("./run.sh --no-such-option"), Texts{"--no-such-option"});
}

TEST(Documents, theCheckLetsPassWhatIsThere)
{
    EXPECT_EQ(missingIn("cmake --preset release"), Texts{});
    EXPECT_EQ(missingIn("build/release/bin/treatment-viewer --headless --size 800x600"), Texts{});
    EXPECT_EQ(missingIn("CMakePresets.json"), Texts{});
    EXPECT_EQ(missingIn("tests/house/"), Texts{});
}

/// The files that the numbered list below a heading names, one for each number.
std::vector<std::string> filesOfList(const std::string &document, const std::string &heading)
{
    static const std::regex item(R"(^\d+\. `([^`]+)`.*)");
    std::vector<std::string> files;
    bool isBelow = false;
    for (const std::string &line : linesOf(contentOfSourceFile(document))) {
        if (startsWith(line, "## ")) isBelow = line == "## " + heading;
        std::smatch match;
        if (isBelow && std::regex_match(line, match, item)) files.push_back(match[1]);
    }
    return files;
}

TEST(Documents, theWayOfAClickIsNineFilesThatAreThere)
{
    const auto files = filesOfList("docs/architecture.md", "The way of a click");
    EXPECT_EQ(files.size(), 9u);
    for (const std::string &file : files)
        EXPECT_TRUE(existsInSourceTree(file)) << file;
}

TEST(Documents, theWayOfAChangeNamesFilesThatAreThere)
{
    const auto files = filesOfList("docs/architecture.md", "The way of a change");
    EXPECT_GE(files.size(), 5u);
    for (const std::string &file : files)
        EXPECT_TRUE(existsInSourceTree(file)) << file;
}

} // namespace
