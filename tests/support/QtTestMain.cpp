#include "platform/widgets/WidgetPresenters.h"
#include "tests/support/LogGuard.h"

#include <gtest/gtest.h>

#include <QApplication>

namespace {

class GuardListener : public testing::EmptyTestEventListener
{
    void OnTestEnd(const testing::TestInfo &) override { kelo::test::checkExpectedQtWarnings(); }
};

} // namespace

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    // Listing the tests must work where there is no display at all.
    if (testing::GTEST_FLAG(list_tests)) return RUN_ALL_TESTS();
#ifndef KELO_TEST_ON_DISPLAY
    qputenv("QT_QPA_PLATFORM", "offscreen");
#endif
    kelo::useWidgetPresenters();
    // Never deleted: with it the graphics driver would be unloaded, and what the driver keeps until
    // the process ends would look like leaks to the leak checker.
    [[maybe_unused]] static const auto *application = new QApplication(argc, argv);
    kelo::test::installLogGuard();
    testing::UnitTest::GetInstance()->listeners().Append(new GuardListener);
    return RUN_ALL_TESTS();
}
