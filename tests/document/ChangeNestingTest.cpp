#include "document/ChangeNesting.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace kelo {
namespace {

class ChangeNestingTest : public testing::Test
{
protected:
    template<class Change>
    auto run(Change &&change)
    {
        return changes.run(change, [this] { told += "announced "; });
    }

    ChangeNesting changes;
    std::string told;
};

TEST_F(ChangeNestingTest, theOutermostIsAnnouncedWhenAllIsMade)
{
    run([&] {
        EXPECT_TRUE(changes.isRunning());
        run([&] { told += "inner "; });
        told += "outer ";
    });
    EXPECT_EQ(told, "inner outer announced ");
    EXPECT_FALSE(changes.isRunning());
}

TEST_F(ChangeNestingTest, whatTheChangeReturnsIsReturned)
{
    EXPECT_EQ(run([&] { return run([] { return 7; }) + 1; }), 8);
    EXPECT_EQ(told, "announced ");
}

TEST_F(ChangeNestingTest, aChangeThatThrowsIsNotAnnounced)
{
    EXPECT_THROW(run([] { throw std::runtime_error("no"); }), std::runtime_error);
    EXPECT_EQ(told, "");
    EXPECT_FALSE(changes.isRunning());
}

} // namespace
} // namespace kelo
