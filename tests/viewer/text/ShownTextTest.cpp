#include "viewer/text/ShownText.h"

#include <gtest/gtest.h>

using viewer::shortened;
using viewer::terminalText;

TEST(ShownText, aLongTextIsCutBetweenTwoCharacters)
{
    EXPECT_EQ(shortened(QString(80, 'x')), QString(80, 'x'));
    EXPECT_EQ(shortened(QString(81, 'x')), QString(80, 'x') + QStringLiteral("…"));
    // A tooth outside the first plane takes two units: half of one is no character.
    const QString tooth = QString::fromUtf8("\U0001F9B7");
    ASSERT_EQ(tooth.size(), 2);
    EXPECT_EQ(shortened(QString(79, 'x') + tooth + tooth), QString(79, 'x') + QStringLiteral("…"));
}

TEST(ShownText, whatSteersATerminalIsWrittenOut)
{
    EXPECT_EQ(terminalText("\x1b[31mred\x07\r").toStdString(), "\\x1b[31mred\\x07\\x0d");
    EXPECT_EQ(terminalText(QString(QChar(0x9b)) + "2J").toStdString(), "\\x9b2J");
    EXPECT_EQ(terminalText(QString("a") + QChar(0x202e) + "b").toStdString(), "a\\u202eb")
        << "turns the direction of writing";
    EXPECT_EQ(terminalText("two\nlines, Zähne").toStdString(), "two\nlines, Zähne");
}

TEST(ShownText, aPieceFromElsewhereIsOneLine)
{
    EXPECT_EQ(shortened("a\nother.json: ok\r\x1b").toStdString(), "a\\x0aother.json: ok\\x0d\\x1b");
    EXPECT_EQ(shortened(QString("a") + QChar(0x202e) + QChar(0x2028)).toStdString(),
              "a\\u202e\\u2028");
    EXPECT_EQ(shortened(QString(81, '\n')), QString("\\x0a").repeated(80) + QStringLiteral("…"));
}
