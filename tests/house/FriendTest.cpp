// A friend reaches past an interface, and what it needs there is said nowhere.

#include "tests/house/SourceTree.h"

#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

namespace {

using kelo::test::contentOfSourceFile;
using kelo::test::endsWith;
using kelo::test::linesOf;
using kelo::test::sourceFiles;
using kelo::test::startsWith;

/// The lines of a source that declare a friend.
std::vector<std::string> friendsIn(const std::string &content)
{
    static const std::regex declaration(R"(^\s*friend\s.*)");
    std::vector<std::string> friends;
    for (const std::string &line : linesOf(content))
        if (std::regex_match(line, declaration)) friends.push_back(line);
    return friends;
}

TEST(Friends, noClassOfTheProductHasOne)
{
    std::size_t sourceCount = 0;
    for (const std::string &path : sourceFiles()) {
        if (startsWith(path, "tests/") || !(endsWith(path, ".h") || endsWith(path, ".cpp")))
            continue;
        ++sourceCount;
        for (const std::string &line : friendsIn(contentOfSourceFile(path)))
            ADD_FAILURE() << path << ": " << line;
    }
    EXPECT_GT(sourceCount, 300u);
}

TEST(Friends, aPlantedOneIsFound)
{
    EXPECT_EQ(friendsIn("class A\n{\n    friend class B;\n    int friendly;\n};\n"),
              std::vector<std::string>{"    friend class B;"});
}

} // namespace
