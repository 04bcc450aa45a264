// Scripts from elsewhere: what is too much is refused with a sentence.

#include "tests/viewer/support/RunProgram.h"
#include "viewer/script/Script.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

using viewer::parseScript;
using namespace viewer::test;

TEST(ScriptLimits, timesAreBounded)
{
    EXPECT_EQ(parseScript("advance 3600\nwait 3600").problems, QStringList());
    for (const char *command : {"advance", "wait"}) {
        EXPECT_EQ(parseScript(QByteArray(command) + " 3600.5").problems,
                  QStringList("1: SECONDS must be 3600 at most, not 3600.5"));
        EXPECT_EQ(parseScript(QByteArray(command) + " 1e300").problems,
                  QStringList("1: SECONDS must be 3600 at most, not 1e+300"));
    }
}

TEST(ScriptLimits, nineClicksAreTheMost)
{
    for (const char *command : {"press left 1 2", "click 1 2"}) {
        EXPECT_EQ(parseScript(QByteArray(command) + " clicks 9").problems, QStringList());
        EXPECT_EQ(parseScript(QByteArray(command) + " clicks 10").problems,
                  QStringList("1: the number of clicks must be a whole number from 1 to 9, "
                              "not '10'"));
    }
}

TEST(ScriptLimits, aHundredWrongLinesAreToldAndTheOthersCounted)
{
    const auto script = parseScript(QByteArray("no-command\n").repeated(234));
    ASSERT_EQ(script.problems.size(), 100);
    EXPECT_EQ(script.problems.last(), QStringLiteral("100: 'no-command' is no command"));
    EXPECT_EQ(script.furtherProblemCount, 134);
}

TEST(ScriptLimits, aLongWordIsRepeatedWithItsBeginning)
{
    const QByteArray word(10'000'000, 'x');
    const QString shown = QString(80, 'x') + QStringLiteral("…");
    const std::pair<QByteArray, QString> rows[] = {
        {word, "1: '%1' is no command"},
        {"press " + word + " 1 1", "1: the button is 'left' or 'right', not '%1'"},
        {"drag " + word + " 1", "1: X must be a number, not '%1'"},
        {"resize " + word + " 1", "1: the width must be a whole number from 1 to 8192, not '%1'"},
        {"date " + word, "1: the date must be YYYY-MM-DD or 'today', not '%1'"},
        {"menu " + word, "1: the row's title must stand in quotation marks, not be '%1'"},
        {"dismiss " + word, "1: '%1' is too much"},
    };
    for (const auto &[line, problem] : rows)
        EXPECT_EQ(parseScript(line).problems, QStringList(problem.arg(shown)));
}

TEST(ScriptLimits, bytesThatAreNoTextAreNamedByTheirLine)
{
    // Read as text, the file would land under another name.
    EXPECT_EQ(parseScript("dismiss\npicture caf\xe9.png\n").problems,
              QStringList("2: the line is not UTF-8"));
    EXPECT_EQ(parseScript("picture café.png\n").problems, QStringList());
}

TEST(ScriptLimits, aResizeBeyondThePixelLimitFailsAtAnyScale)
{
    const QTemporaryDir folder;
    const QString script = folder.filePath("resize.script");
    QFile file(script);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_GT(file.write("resize 4096 10\nresize 4097 10\n"), 0);
    file.close();
    const Ended large = run({"--headless", "--scale", "2", "--play", script});
    EXPECT_EQ(large.status, 2);
    EXPECT_EQ(large.errors.toStdString(),
              script.toStdString() +
                  ":2: the view may be 8192 pixels at most on each side, not 8194x20\n");
    EXPECT_EQ(run({"--headless", "--play", script}).status, 0);
}
