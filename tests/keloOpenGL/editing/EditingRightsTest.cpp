#include "keloOpenGL/editing/EditingRights.h"

#include <gtest/gtest.h>

using namespace kelo;

namespace {

EditingRights::Moment moment(int milliseconds)
{
    return std::chrono::sys_time(std::chrono::milliseconds(milliseconds));
}

TEST(EditingRights, nothingMayBeEditedUntilTodaysTreatmentIsShown)
{
    EditingRights rights;
    EXPECT_FALSE(rights.showsToday());
    EXPECT_FALSE(rights.mayEdit());
    rights.show(std::nullopt);
    EXPECT_FALSE(rights.showsToday()) << "no moment is not today, even without one";
    rights.setToday(moment(1000));
    rights.show(moment(1000));
    EXPECT_TRUE(rights.showsToday());
    EXPECT_TRUE(rights.mayEdit());
}

TEST(EditingRights, anotherMillisecondIsAnotherMoment)
{
    EditingRights rights;
    rights.setToday(moment(1000));
    for (const int other : {999, 1001}) {
        rights.show(moment(other));
        EXPECT_FALSE(rights.mayEdit()) << other;
    }
}

TEST(EditingRights, anApprovalEndsThemAndItsRemovalGivesThemBack)
{
    EditingRights rights;
    rights.setToday(moment(1000));
    rights.show(moment(1000));
    rights.setApproval(moment(5000));
    EXPECT_FALSE(rights.mayEdit());
    EXPECT_TRUE(rights.showsToday());
    rights.setApproval(std::nullopt);
    EXPECT_TRUE(rights.mayEdit());
}

TEST(EditingRights, aNewDayLeavesWhatIsShownUntilItIsShownAgain)
{
    EditingRights rights;
    rights.setToday(moment(1000));
    rights.show(moment(1000));
    rights.setToday(moment(2000));
    EXPECT_TRUE(rights.mayEdit());
    rights.show(moment(1000));
    EXPECT_FALSE(rights.mayEdit());
}

} // namespace
