#include "tests/house/ClassOutline.h"
#include "tests/house/SourceTree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

// A class is about one thing, and what it remembers fits on a few lines.

namespace {

using kelo::test::ClassOutline;
using kelo::test::contains;
using kelo::test::contentOfSourceFile;
using kelo::test::endsWith;
using kelo::test::sourceFiles;
using kelo::test::startsWith;

constexpr std::size_t mostPublicMethods = 30;
constexpr std::size_t mostFields = 12;

/// The folders whose headers are looked at.
const std::vector<std::string> folders = {"geometry/", "keloModel/", "models/", "keloOpenGL/"};

/// Classes whose operations hosts are given by name (docs/interface-names.md): as large as those
/// make them. Their private structs, which sources define, belong to them.
const std::vector<std::string> knownToHosts = {"DXOpenGL", "Extents", "HVOGLBasicView",
                                               "HVOGLMaterial", "HVOGLMouseView"};

bool isLookedAt(const std::string &path)
{
    return endsWith(path, ".h") &&
           std::any_of(folders.begin(), folders.end(),
                       [&path](const std::string &folder) { return startsWith(path, folder); });
}

TEST(ClassSize, noClassIsLargerThanOneThingNeeds)
{
    std::vector<std::string> seen;
    for (const std::string &path : sourceFiles()) {
        if (!isLookedAt(path)) continue;
        for (const ClassOutline &outline : kelo::test::classesIn(contentOfSourceFile(path))) {
            seen.push_back(outline.name);
            if (contains(knownToHosts, outline.name)) continue;
            EXPECT_LE(outline.publicMethodCount, mostPublicMethods) << path << ": " << outline.name;
            EXPECT_LE(outline.fieldCount, mostFields) << path << ": " << outline.name;
        }
    }
    EXPECT_GT(seen.size(), 80u) << "the search itself is broken";
    for (const std::string &name : knownToHosts)
        EXPECT_TRUE(contains(seen, name)) << name << " is in none of these folders";
}

TEST(ClassSize, everyClassThatIsLeftOutIsNamedToHosts)
{
    const std::string names = contentOfSourceFile("docs/interface-names.md");
    for (const std::string &name : knownToHosts)
        EXPECT_NE(names.find("\n## " + name), std::string::npos) << name;
}

} // namespace
