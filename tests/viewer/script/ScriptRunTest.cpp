// The surroundings of a script: the time of its waits, and no user to answer.

#include "viewer/script/ScriptRun.h"

#include "tests/support/CapturedOutput.h"
#include "tests/viewer/support/ScriptFixture.h"

#include <QEventLoop>
#include <QTimer>

namespace {

using viewer::test::ScriptFixture;

class ScriptRuns : public ScriptFixture
{
protected:
    std::string lastCall() const
    {
        const QJsonArray calls = treatment->callLog().calls();
        return calls.isEmpty() ? "" : calls.last().toArray().first().toString().toStdString();
    }
};

constexpr const char printCall[] = "printImagesLeft:front:right:forDate:elasticsLeft:front:right:";

TEST_F(ScriptRuns, duringAWaitTheClockGoesOnStepByStepWhileTheEventLoopRuns)
{
    int passes = 0;
    QTimer eachPass;
    QObject::connect(&eachPass, &QTimer::timeout, [&passes] { ++passes; });
    eachPass.start(0);
    std::vector<int> passesAtFiring;
    const auto timer = clock->scheduledTimer(
        0.125, true, [&](kelo::Timer &) { passesAtFiring.push_back(passes); });
    play("wait 0.5\n");
    timer->invalidate();
    ASSERT_EQ(passesAtFiring.size(), 4u);
    EXPECT_GT(passesAtFiring.front(), 0);
    EXPECT_GT(passesAtFiring.back(), passesAtFiring.front())
        << "the clock went on in one step at the end";
    EXPECT_NO_GL_ERROR();
}

TEST_F(ScriptRuns, aWaitEndsWhereAnAdvanceOfTheSameLengthWould)
{
    const double begin = clock->currentTime();
    for (const char *wait : {"wait 0\n", "wait 0.03\n", "wait 0.1\n"})
        play(wait);
    EXPECT_DOUBLE_EQ(clock->currentTime(), begin + 0.13);
    bool hasFired = false;
    clock->scheduledTimer(0.05, false, [&hasFired](kelo::Timer &) { hasFired = true; });
    play("wait 0.05\n");
    EXPECT_TRUE(hasFired) << "what is due at the end of a wait is part of it";
    EXPECT_NO_GL_ERROR();
}

TEST_F(ScriptRuns, realTimeGoesNoFurtherThanToItsEnd)
{
    const double begin = clock->currentTime();
    QEventLoop loop;
    const viewer::RealTime realTime(*clock, begin + 0.02);
    QTimer::singleShot(100, &loop, &QEventLoop::quit); // five times as long as it may go on
    loop.exec();
    EXPECT_DOUBLE_EQ(clock->currentTime(), begin + 0.02);
}

TEST_F(ScriptRuns, aPrintRequestOfAScriptWithNobodyThereIsOnlyListed)
{
    int printCount = 0;
    kelo::DXOpenGLDelegate own;
    viewer::DelegateCallLog log;
    own.printImagesLeft_front_right_forDate_elasticsLeft_front_right = [&printCount](auto &&...) {
        ++printCount;
    };
    log.logCallsOf(own);
    view->setDelegate(&own);
    {
        const viewer::Unattended unattended(*view, log);
        play("click tool print\n");
        EXPECT_EQ(printCount, 0);
        ASSERT_EQ(log.calls().size(), 1);
        EXPECT_EQ(log.calls().first().toArray().first().toString().toStdString(), printCall);
    }
    EXPECT_EQ(view->delegate(), &own);
    play("click tool print\n");
    EXPECT_EQ(printCount, 1);
    EXPECT_EQ(log.calls().size(), 2);
    view->setDelegate(&delegate);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ScriptRuns, otherCallsGoOnToTheViewsOwnDelegateAndAreListedOnce)
{
    int toggleCount = 0;
    kelo::DXOpenGLDelegate own;
    viewer::DelegateCallLog log;
    own.toggleFullScreenMode = [&toggleCount](kelo::DXOpenGL &) { ++toggleCount; };
    log.logCallsOf(own);
    view->setDelegate(&own);
    {
        const viewer::Unattended unattended(*view, log);
        play("click 400 590 clicks 2\n");
    }
    EXPECT_EQ(toggleCount, 1);
    EXPECT_EQ(log.calls().size(), 1);
    view->setDelegate(&delegate);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ScriptRuns, aDelegateThatTheViewGotMeanwhileStays)
{
    kelo::DXOpenGLDelegate other;
    {
        const viewer::Unattended unattended(*view, treatment->callLog());
        view->setDelegate(&other);
    }
    EXPECT_EQ(view->delegate(), &other);
    view->setDelegate(&delegate);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ScriptRuns, anAlertWithNobodyThereIsALineOnStandardError)
{
    int boxCount = 0;
    const auto kept =
        kelo::AlertPresenter::setPresenter([&boxCount](const kelo::Alert &) { ++boxCount; });
    document().toggleVisibilityOfTooth("30");
    const std::string told = kelo::test::standardErrorOf([this] {
        const viewer::Unattended unattended(*view, treatment->callLog());
        play("click bracket 8\nmenu \"Class II right\"\n");
    });
    EXPECT_EQ(told, "Cannot Place Named Elastic: The Elastic Configuration named 'Class II right' "
                    "cannot be placed because 1 or more required teeth for Bracket/Button "
                    "placement are missing.\nMissing: 30\n");
    EXPECT_EQ(boxCount, 0);
    kelo::AlertPresenter::runModal({"After", ""});
    EXPECT_EQ(boxCount, 1) << "the one before is back";
    kelo::AlertPresenter::setPresenter(kept);
    EXPECT_NO_GL_ERROR();
}

TEST_F(ScriptRuns, aMenuLeftOpenStaysSoUntilThePersonOpensTheNext)
{
    int desktopMenuCount = 0;
    player.reset();
    const auto kept = kelo::ContextMenuPresenter::setPresenter(
        [&](const std::shared_ptr<kelo::Menu> &, const kelo::Event &, kelo::OpenGLView &) {
            ++desktopMenuCount;
            EXPECT_EQ(player->openMenu(), nullptr);
        });
    player = std::make_unique<viewer::ScriptPlayer>(*view, *clock);
    play("click bracket 8\n");
    EXPECT_EQ(desktopMenuCount, 0);
    player->handOver();
    ASSERT_NE(player->openMenu(), nullptr);
    EXPECT_EQ(player->openMenu()->title(), "ElasticsSizeType Menu");

    view->setCurrentEventToothName("9");
    view->displayBracketMenuForEvent({});
    EXPECT_EQ(desktopMenuCount, 1);
    EXPECT_EQ(player->openMenu(), nullptr);
    player.reset();
    kelo::ContextMenuPresenter::setPresenter(kept);
    EXPECT_NO_GL_ERROR();
}

} // namespace
