#include "platform/presenters/Alert.h"
#include "platform/time/RunLoop.h"
#include "platform/widgets/AlertBox.h"
#include "tests/support/CapturedOutput.h"
#include "tests/support/LogGuard.h"
#include "tests/support/ShoutingTranslator.h"
#include "tests/support/TestClock.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

#include <memory>
#include <string>
#include <vector>

using namespace kelo;
using kelo::test::standardErrorOf;

namespace {

class AlertTest : public testing::Test
{
protected:
    AlertTest() : previous_(AlertPresenter::setPresenter({})) {}
    ~AlertTest() override { AlertPresenter::setPresenter(previous_); }

private:
    AlertPresenter::Presenter previous_;
};

} // namespace

TEST_F(AlertTest, thePresenterGetsTheAlert)
{
    std::vector<std::string> shown;
    AlertPresenter::setPresenter([&](const Alert &alert) {
        shown = {alert.messageText, alert.informativeText, alert.buttonTitle};
    });
    AlertPresenter::runModal({"Headline", "What to do."});
    EXPECT_EQ(shown, (std::vector<std::string>{"Headline", "What to do.", "OK"}));
}

TEST_F(AlertTest, settingAPresenterGivesBackTheOneBefore)
{
    int calls = 0;
    EXPECT_FALSE(AlertPresenter::setPresenter([&](const Alert &) { ++calls; }));
    const auto mine = AlertPresenter::setPresenter({});
    ASSERT_TRUE(mine);
    mine({});
    EXPECT_EQ(calls, 1);
}

TEST_F(AlertTest, theRunLoopIsModalWhileAnAlertIsShown)
{
    auto mode = RunLoopMode::Default;
    AlertPresenter::setPresenter([&](const Alert &) { mode = RunLoop::main().currentMode(); });
    AlertPresenter::runModal({});
    EXPECT_EQ(mode, RunLoopMode::ModalPanel);
    EXPECT_EQ(RunLoop::main().currentMode(), RunLoopMode::Default);
}

TEST_F(AlertTest, whereNobodyCanAnswerTheAlertIsOneLineOfStandardError)
{
    ASSERT_EQ(QGuiApplication::platformName(), QStringLiteral("offscreen"));
    const struct
    {
        Alert alert;
        std::string line;
    } rows[] = {
        {{"Nothing to print", "Show a tooth first."}, "Nothing to print: Show a tooth first.\n"},
        {{"Nothing to print.", "Show a tooth first."}, "Nothing to print. Show a tooth first.\n"},
        {{"Nothing to print", ""}, "Nothing to print\n"},
        {{"Two\nlines", "and\nmore"}, "Two lines: and more\n"},
        {{"No elastic", "Teeth are missing.", "OK", "Missing: 8, 9"},
         "No elastic: Teeth are missing.\nMissing: 8, 9\n"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(standardErrorOf([&] { AlertPresenter::runModal(row.alert); }), row.line);
}

TEST_F(AlertTest, theBoxShowsItsTextsAsTheyAreAndEndsWithItsTranslatedButton)
{
    const test::ShoutingTranslator desktop("QPlatformTheme");
    const test::MainRunLoop realClock(nullptr);
    QString text;
    QString informativeText;
    QString button;
    Qt::TextFormat format = Qt::AutoText;
    RunLoop::main().performSoon([&] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        text = box->text();
        informativeText = box->informativeText();
        format = box->textFormat();
        ASSERT_EQ(box->buttons().size(), 1);
        button = box->buttons().front()->text();
        box->buttons().front()->click();
    });
    if (QGuiApplication::platformName() == QLatin1String("offscreen"))
        test::expectQtWarning("This plugin does not support propagateSizeHints()");
    runModalAlertBox({"<b>Müller</b>", "Try again.", "Close", "Missing: 8"});
    EXPECT_EQ(text, QStringLiteral("<b>Müller</b>"));
    EXPECT_EQ(informativeText, QStringLiteral("Try again.\n\nMissing: 8"));
    EXPECT_EQ(format, Qt::PlainText);
    EXPECT_EQ(button, QStringLiteral("CLOSE")) << "as the desktop's own buttons say it";
}
