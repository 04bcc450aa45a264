// Drawing bands allocates nothing once it has its room. In a program of its own, because it counts
// every use of operator new.

#include "platform/gl.h"

#include "keloOpenGL/treatment/DXOpenGL.h"

#include "tests/keloOpenGL/ViewFixture.h"

#include <cstdlib>
#include <new>

namespace {

thread_local bool countsAllocations = false;
thread_local int allocationCount = 0;

void *allocated(std::size_t size)
{
    if (countsAllocations) ++allocationCount;
    if (void *memory = std::malloc(size > 0 ? size : 1)) return memory;
    throw std::bad_alloc();
}

} // namespace

void *operator new(std::size_t size)
{
    return allocated(size);
}
void *operator new[](std::size_t size)
{
    return allocated(size);
}
void operator delete(void *memory) noexcept
{
    std::free(memory);
}
void operator delete[](void *memory) noexcept
{
    std::free(memory);
}
void operator delete(void *memory, std::size_t) noexcept
{
    std::free(memory);
}
void operator delete[](void *memory, std::size_t) noexcept
{
    std::free(memory);
}

namespace {

using namespace kelo;

class BandAllocations : public kelo::test::ViewFixture
{
protected:
    BandAllocations()
    {
        view->setDocumentModel(kelo::test::boxDocument());
        view->display();
    }

    /// The bands of a frame, 40 of them.
    void drawBands(bool picking)
    {
        for (std::uint32_t i = 0; i < 40; ++i)
            view->drawRubberBand_color_closeLoop_colorPickMode_colorPickID(
                i % 2 == 0 ? overTwo : overFour, color, i % 3 != 0, picking, i);
    }

    int allocationsOfAFrame(bool picking)
    {
        allocationCount = 0;
        countsAllocations = true;
        drawBands(picking);
        countsAllocations = false;
        return allocationCount;
    }

    const std::vector<std::string> overTwo{"6", "25"};
    const std::vector<std::string> overFour{"13", "14", "19", "20"};
    const std::optional<Color> color = Color(0.9, 0.4, 0.1, 1.0);
    std::shared_ptr<DXOpenGL> view = makeView<DXOpenGL>(Rect{{0.0, 0.0}, {200.0, 150.0}});
};

TEST_F(BandAllocations, afterTheFirstFrameBandsAllocateNothing)
{
    drawBands(false);
    glFinish();
    EXPECT_EQ(allocationsOfAFrame(false), 0);
    EXPECT_EQ(allocationsOfAFrame(false), 0);
    EXPECT_NO_GL_ERROR();
}

TEST_F(BandAllocations, inPicksNeither)
{
    drawBands(true);
    glFinish();
    EXPECT_EQ(allocationsOfAFrame(true), 0);
    EXPECT_NO_GL_ERROR();
}

TEST_F(BandAllocations, theCountCounts)
{
    allocationCount = 0;
    countsAllocations = true;
    const auto text = std::make_unique<std::string>(100, 'x');
    countsAllocations = false;
    EXPECT_EQ(allocationCount, 2);
    EXPECT_EQ(text->size(), 100u);
}

} // namespace
