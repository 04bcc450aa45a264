#include "tests/house/SourceTree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <string>
#include <vector>

namespace {

using kelo::test::contentOfSourceFile;
using kelo::test::endsWith;
using kelo::test::sourceFiles;
using kelo::test::startsWith;

/// The includes of a CMake file that pass over a file that is not there.
std::vector<std::string> optionalIncludesIn(const std::string &text)
{
    static const std::regex expression("include\\([^)]*\\bOPTIONAL\\b[^)]*\\)");
    std::vector<std::string> found;
    for (auto it = std::sregex_iterator(text.begin(), text.end(), expression);
         it != std::sregex_iterator(); ++it)
        found.push_back(it->str());
    return found;
}

/// Whether the text names the file, not only the end of a longer name.
bool names(const std::string &text, const std::string &file)
{
    for (std::size_t place = text.find(file); place != std::string::npos;
         place = text.find(file, place + 1)) {
        if (place == 0 || text[place - 1] == ' ' || text[place - 1] == '\n') return true;
        if (endsWith(text.substr(0, place), "${CMAKE_CURRENT_LIST_DIR}/")) return true;
    }
    return false;
}

struct List
{
    std::string folder; ///< with its slash
    std::string text;
};

/// The CMake files that tests are listed in.
std::vector<List> lists()
{
    std::vector<List> found;
    for (const std::string &path : sourceFiles()) {
        if (startsWith(path, "tests/") &&
            (endsWith(path, "/CMakeLists.txt") || endsWith(path, ".cmake")))
            found.push_back({path.substr(0, path.rfind('/') + 1), contentOfSourceFile(path)});
    }
    return found;
}

/// Whether a list of the test's folder, or of one above it, names the test by its path from there.
bool isListed(const std::string &test, const std::vector<List> &lists)
{
    return std::any_of(lists.begin(), lists.end(), [&test](const List &list) {
        return startsWith(test, list.folder) && names(list.text, test.substr(list.folder.size()));
    });
}

} // namespace

TEST(TestLists, everyTestFileIsInOne)
{
    const std::vector<List> all = lists();
    int count = 0;
    for (const std::string &path : sourceFiles()) {
        if (!startsWith(path, "tests/") || !endsWith(path, "Test.cpp")) continue;
        ++count;
        EXPECT_TRUE(isListed(path, all)) << path << " is in no list of tests, so nothing runs it";
    }
    EXPECT_GT(count, 100) << "the search itself is broken";
}

TEST(TestLists, noneIsOptional)
{
    for (const std::string &path : sourceFiles()) {
        if (!endsWith(path, "/CMakeLists.txt") && !endsWith(path, ".cmake")) continue;
        for (const std::string &include : optionalIncludesIn(contentOfSourceFile(path)))
            ADD_FAILURE() << path << ": " << include << " would drop what it lists in silence";
    }
}

TEST(TestLists, theChecksFindWhatIsPlanted)
{
    EXPECT_EQ(optionalIncludesIn("include(a.cmake)\ninclude(b.cmake OPTIONAL)\n"),
              std::vector<std::string>{"include(b.cmake OPTIONAL)"});
    const std::vector<List> list{{"tests/", "SOURCES\n    room/OneTest.cpp\n    AnotherTest.cpp)"}};
    EXPECT_TRUE(isListed("tests/AnotherTest.cpp", list));
    EXPECT_TRUE(isListed("tests/room/OneTest.cpp", list));
    EXPECT_FALSE(isListed("tests/OneTest.cpp", list)) << "it is in another folder";
    EXPECT_FALSE(isListed("tests/OtherTest.cpp", list)) << "only the end of a longer name";
    EXPECT_FALSE(isListed("tests/NowhereTest.cpp", list));
}
