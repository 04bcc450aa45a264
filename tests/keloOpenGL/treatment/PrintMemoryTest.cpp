// What requests leave behind: the name of a depth buffer each, as the design has it, but not its
// storage.

#include "tests/keloOpenGL/treatment/PrintingFixture.h"

#include <fstream>
#include <set>
#include <unistd.h>

namespace {

using namespace kelo;
using namespace kelo::test;

/// What the process has in memory now.
std::size_t residentBytes()
{
    std::ifstream file("/proc/self/statm");
    std::size_t allPages = 0;
    std::size_t residentPages = 0;
    file >> allPages >> residentPages;
    return residentPages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

/// Names of renderbuffers count up from 1; tests make few.
std::set<GLuint> renderbufferNames()
{
    std::set<GLuint> names;
    for (GLuint name = 1; name < 100; ++name) {
        if (glIsRenderbufferEXT(name)) names.insert(name);
    }
    return names;
}

PixelSize sizeOfRenderbuffer(GLuint name)
{
    PixelSize size;
    glBindRenderbufferEXT(GL_RENDERBUFFER_EXT, name);
    glGetRenderbufferParameterivEXT(GL_RENDERBUFFER_EXT, GL_RENDERBUFFER_WIDTH_EXT, &size.width);
    glGetRenderbufferParameterivEXT(GL_RENDERBUFFER_EXT, GL_RENDERBUFFER_HEIGHT_EXT, &size.height);
    glBindRenderbufferEXT(GL_RENDERBUFFER_EXT, 0);
    return size;
}

class PrintMemory : public PrintingFixture
{};

TEST_F(PrintMemory, aRequestLeavesANameWithASinglePixel)
{
    view->makeCurrentContextIfNeeded();
    const auto before = renderbufferNames();
    view->submitPrintRequest();
    view->submitPrintRequest();
    ASSERT_EQ(prints, 2);
    const auto after = renderbufferNames();
    ASSERT_EQ(after.size(), before.size() + 2) << "one each";
    for (const GLuint name : after) {
        if (before.contains(name)) continue;
        EXPECT_EQ(sizeOfRenderbuffer(name), (PixelSize{1, 1}));
    }
    EXPECT_NO_GL_ERROR();
}

TEST_F(PrintMemory, anIncompleteFramebufferLeavesNoMoreThanThatEither)
{
    view->makeCurrentContextIfNeeded();
    view->status = 0x8CDD;
    view->submitPrintRequest();
    ASSERT_EQ(alerts.size(), 1u);
    const auto names = renderbufferNames();
    ASSERT_EQ(names.size(), 1u);
    EXPECT_EQ(sizeOfRenderbuffer(*names.begin()), (PixelSize{1, 1}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(PrintMemory, aThousandRequestsGiveTheirMemoryBack)
{
    // The scene is the same in each; without one they are quick.
    view->setDocumentModel(nullptr);
    delegate.printImagesLeft_front_right_forDate_elasticsLeft_front_right =
        [this](const auto &...) { ++prints; };
    constexpr int firstRequests = 20; // until everything is allocated that is kept
    for (int i = 0; i < firstRequests; ++i)
        view->submitPrintRequest();
    const std::size_t before = residentBytes();
    for (int i = 0; i < 1000; ++i)
        view->submitPrintRequest();
    EXPECT_EQ(prints, 1000 + firstRequests);
    // A depth buffer has 1.3 MB: kept, they would be 1.3 GB.
    constexpr std::size_t megabyte = 1 << 20;
    EXPECT_LT(residentBytes(), before + 100 * megabyte);
    EXPECT_NO_GL_ERROR();
}

} // namespace
