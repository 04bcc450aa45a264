#include "platform/time/NotificationCenter.h"
#include "platform/time/NotificationQueue.h"
#include "tests/support/TestClock.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

using namespace kelo;

namespace {

class NotificationTest : public testing::Test
{
protected:
    void pass() { clock->advance(0.0); }
    NotificationCenter::Handler note(const std::string &observer)
    {
        return [this, observer](const Notification &notification) {
            told.push_back(observer + ":" + notification.name);
        };
    }

    test::TestClock clock;
    NotificationCenter center;
    std::unique_ptr<NotificationQueue> queue = std::make_unique<NotificationQueue>(center);
    std::vector<std::string> told;
    int a = 0;
    int b = 0;
};

using Names = std::vector<std::string>;

} // namespace

TEST_F(NotificationTest, anObserverIsToldOfItsNameAndSenderOnly)
{
    center.addObserver(this, note("both"), "changed", &a);
    center.postNotificationName("changed", &b);
    center.postNotificationName("closed", &a);
    EXPECT_TRUE(told.empty());
    center.postNotificationName("changed", &a);
    EXPECT_EQ(told, (Names{"both:changed"}));
}

TEST_F(NotificationTest, anEmptyNameIsEveryNameAndANullSenderEverySender)
{
    center.addObserver(this, note("any name"), "", &a);
    center.addObserver(this, note("any sender"), "changed");
    center.postNotificationName("changed", &b);
    center.postNotificationName("closed", &a);
    EXPECT_EQ(told, (Names{"any sender:changed", "any name:closed"}));
}

TEST_F(NotificationTest, observersAreToldInTheOrderInWhichTheyWereAdded)
{
    center.addObserver(&b, note("1"), "changed");
    center.addObserver(&a, note("2"), "changed");
    center.addObserver(&b, note("3"), "changed");
    center.postNotificationName("changed");
    EXPECT_EQ(told, (Names{"1:changed", "2:changed", "3:changed"}));
}

TEST_F(NotificationTest, removingAnObserverEndsAllItsObservations)
{
    center.addObserver(&a, note("a"), "changed");
    center.addObserver(&a, note("a"), "closed");
    center.addObserver(&b, note("b"), "changed");
    center.removeObserver(&a);
    center.postNotificationName("changed");
    center.postNotificationName("closed");
    EXPECT_EQ(told, (Names{"b:changed"}));
}

TEST_F(NotificationTest, removingByNameAndSenderLeavesTheOthers)
{
    center.addObserver(&a, note("of a"), "changed", &a);
    center.addObserver(&a, note("of all"), "changed");
    center.removeObserver(&a, "changed", &a);
    center.postNotificationName("changed", &a);
    EXPECT_EQ(told, (Names{"of all:changed"}));
}

TEST_F(NotificationTest, anObserverMayRemoveItselfAndOthersInsideANotification)
{
    center.addObserver(
        &a,
        [this](const Notification &) {
            told.push_back("a");
            center.removeObserver(&a);
            center.removeObserver(&b);
        },
        "changed");
    center.addObserver(&b, note("b"), "changed");
    center.postNotificationName("changed");
    center.postNotificationName("changed");
    EXPECT_EQ(told, (Names{"a"}));
}

TEST_F(NotificationTest, anObserverAddedInsideANotificationIsToldFromTheNextOneOn)
{
    center.addObserver(
        &a,
        [this](const Notification &) {
            if (told.empty()) center.addObserver(&b, note("b"), "changed");
            told.push_back("a");
        },
        "changed");
    center.postNotificationName("changed");
    EXPECT_EQ(told, (Names{"a"}));
    center.postNotificationName("changed");
    EXPECT_EQ(told, (Names{"a", "a", "b:changed"}));
}

TEST_F(NotificationTest, theNotificationCarriesItsSender)
{
    const void *sender = nullptr;
    center.addObserver(
        &a, [&](const Notification &notification) { sender = notification.object; }, "changed");
    center.postNotificationName("changed", &b);
    EXPECT_EQ(sender, &b);
}

TEST_F(NotificationTest, aNotificationForSoonIsPostedOnTheNextPass)
{
    center.addObserver(this, note("o"), "changed");
    queue->enqueueNotification({"changed", &a}, PostingStyle::Soon);
    EXPECT_TRUE(told.empty());
    pass();
    EXPECT_EQ(told, (Names{"o:changed"}));
    pass();
    EXPECT_EQ(told.size(), 1u);
}

TEST_F(NotificationTest, equalNotificationsArePostedOnce)
{
    center.addObserver(this, note("o"), "");
    queue->enqueueNotification({"changed", &a}, PostingStyle::Soon);
    queue->enqueueNotification({"changed", &a}, PostingStyle::Soon);
    pass();
    EXPECT_EQ(told, (Names{"o:changed"}));
}

TEST_F(NotificationTest, notificationsThatDifferInNameOrSenderAreAllPosted)
{
    center.addObserver(this, note("o"), "");
    queue->enqueueNotification({"changed", &a}, PostingStyle::Soon);
    queue->enqueueNotification({"changed", &b}, PostingStyle::Soon);
    queue->enqueueNotification({"closed", &a}, PostingStyle::Soon);
    pass();
    EXPECT_EQ(told, (Names{"o:changed", "o:changed", "o:closed"}));
}

TEST_F(NotificationTest, coalescingOnTheNameAloneIgnoresTheSender)
{
    std::vector<const void *> senders;
    center.addObserver(
        this, [&](const Notification &each) { senders.push_back(each.object); }, "changed");
    queue->enqueueNotification({"changed", &a}, PostingStyle::Soon, Coalescing::OnName);
    queue->enqueueNotification({"changed", &b}, PostingStyle::Soon, Coalescing::OnName);
    pass();
    EXPECT_EQ(senders, (std::vector<const void *>{&b}));
}

TEST_F(NotificationTest, coalescingOnTheSenderAloneIgnoresTheName)
{
    center.addObserver(this, note("o"), "");
    queue->enqueueNotification({"changed", &a}, PostingStyle::Soon, Coalescing::OnSender);
    queue->enqueueNotification({"closed", &a}, PostingStyle::Soon, Coalescing::OnSender);
    pass();
    EXPECT_EQ(told, (Names{"o:closed"}));
}

TEST_F(NotificationTest, withoutCoalescingEveryOneIsPosted)
{
    center.addObserver(this, note("o"), "");
    queue->enqueueNotification({"changed", &a}, PostingStyle::Soon, Coalescing::None);
    queue->enqueueNotification({"changed", &a}, PostingStyle::Soon, Coalescing::None);
    pass();
    EXPECT_EQ(told.size(), 2u);
}

TEST_F(NotificationTest, postingNowPostsAtOnceAndTakesEqualOnesOutOfTheQueue)
{
    center.addObserver(this, note("o"), "");
    queue->enqueueNotification({"changed", &a}, PostingStyle::Soon);
    queue->enqueueNotification({"closed", &a}, PostingStyle::Soon);
    queue->enqueueNotification({"changed", &a}, PostingStyle::Now);
    EXPECT_EQ(told, (Names{"o:changed"}));
    pass();
    EXPECT_EQ(told, (Names{"o:changed", "o:closed"}));
}

TEST_F(NotificationTest, aNotificationForIdleTimesWaitsForEverythingElse)
{
    center.addObserver(this, note("o"), "");
    queue->enqueueNotification({"idle"}, PostingStyle::WhenIdle);
    queue->enqueueNotification({"soon"}, PostingStyle::Soon);
    RunLoop::main().scheduledTimer(0.0, false, [this](Timer &) { told.push_back("timer"); });
    pass();
    EXPECT_EQ(told, (Names{"timer", "o:soon", "o:idle"}));
}

TEST_F(NotificationTest, aDequeuedNotificationIsNotPosted)
{
    center.addObserver(this, note("o"), "");
    queue->enqueueNotification({"changed", &a}, PostingStyle::Soon);
    queue->enqueueNotification({"changed", &b}, PostingStyle::WhenIdle);
    queue->dequeueNotificationsMatching({"changed"}, Coalescing::None);
    queue->dequeueNotificationsMatching({"changed"}, Coalescing::OnName);
    pass();
    EXPECT_TRUE(told.empty());
}

TEST_F(NotificationTest, whatAnObserverQueuesIsPostedOnALaterPass)
{
    center.addObserver(
        this,
        [&](const Notification &each) {
            if (each.name == "first") {
                queue->enqueueNotification({"second"}, PostingStyle::Soon);
                RunLoop::main().performSoon([this] { told.push_back("end of the pass"); });
            }
            told.push_back(each.name);
        },
        "");
    queue->enqueueNotification({"first"}, PostingStyle::Soon);
    RunLoop::main().performSoon([this] { told.push_back("same pass"); });
    pass();
    EXPECT_EQ(told, (Names{"first", "same pass", "second", "end of the pass"}));
}

TEST_F(NotificationTest, aReplacedMainLoopDoesNotHoldUpTheQueue)
{
    center.addObserver(this, note("o"), "");
    queue->enqueueNotification({"first"}, PostingStyle::Soon);
    const test::TestClock another;
    queue->enqueueNotification({"second"}, PostingStyle::Soon);
    another->advance(0.0);
    EXPECT_EQ(told, (Names{"o:first", "o:second"}));
}

TEST_F(NotificationTest, aQueueThatEndsPostsNothingMore)
{
    center.addObserver(this, note("o"), "");
    queue->enqueueNotification({"changed"}, PostingStyle::Soon);
    queue.reset();
    pass();
    EXPECT_TRUE(told.empty());
}

TEST_F(NotificationTest, theDefaultQueuePostsToTheDefaultCentre)
{
    NotificationCenter::defaultCenter().addObserver(this, note("o"), "changed");
    NotificationQueue::defaultQueue().enqueueNotification({"changed"}, PostingStyle::Soon);
    pass();
    NotificationCenter::defaultCenter().removeObserver(this);
    EXPECT_EQ(told, (Names{"o:changed"}));
}
