#include "tests/house/ClassOutline.h"
#include "tests/house/SourceTree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

// Façades: what hosts call only asks the part whose affair it is, so that a change of the part is a
// change of one small class.

namespace {

using kelo::test::ClassOutline;
using kelo::test::contains;
using kelo::test::contentOfSourceFile;
using kelo::test::endsWith;
using kelo::test::Operation;
using kelo::test::sourceFiles;
using kelo::test::startsWith;

/// No operation of these classes has a body of more than a few lines.
const std::vector<std::string> facades = {"DXDocumentModel", "DXOpenGL",        "HVOGLBasicView",
                                          "HVOGLMouseView",  "HVOGLSmoothView", "OpenGLView"};
constexpr std::size_t longestBody = 5;

std::vector<Operation> operationsOf(const std::string &path)
{
    const std::string content = contentOfSourceFile(path);
    std::vector<Operation> operations = kelo::test::operationsIn(content);
    for (const ClassOutline &outline : kelo::test::classesIn(content))
        operations.insert(operations.end(), outline.operations.begin(), outline.operations.end());
    return operations;
}

bool isLibrarySource(const std::string &path)
{
    return (endsWith(path, ".h") || endsWith(path, ".cpp")) &&
           (startsWith(path, "document/") || startsWith(path, "keloOpenGL/") ||
            startsWith(path, "platform/"));
}

TEST(FacadeRule, noOperationOfAFacadeIsLongerThanFiveLines)
{
    std::vector<std::size_t> counts(facades.size());
    for (const std::string &path : sourceFiles()) {
        if (!isLibrarySource(path)) continue;
        for (const Operation &operation : operationsOf(path)) {
            const auto facade = std::find(facades.begin(), facades.end(), operation.className);
            if (facade == facades.end()) continue;
            ++counts[static_cast<std::size_t>(facade - facades.begin())];
            EXPECT_LE(operation.bodyLength, longestBody)
                << path << ": " << operation.className << "::" << operation.name;
        }
    }
    for (std::size_t i = 0; i < facades.size(); ++i)
        EXPECT_GT(counts[i], 20u) << facades[i] << ": the search itself is broken";
}

} // namespace
