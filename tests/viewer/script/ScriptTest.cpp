#include "viewer/script/Script.h"

#include "platform/view/Event.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace viewer;
namespace ModifierFlag = kelo::ModifierFlag;

namespace {

/// The command of a script of one line.
template<class Command>
Command parsed(const QByteArray &line)
{
    const ParsedScript script = parseScript(line);
    EXPECT_EQ(script.problems, QStringList()) << line.toStdString();
    if (script.lines.size() != 1 || !std::holds_alternative<Command>(script.lines[0].command)) {
        ADD_FAILURE() << line.toStdString() << " is another command";
        return {};
    }
    return std::get<Command>(script.lines[0].command);
}

TEST(Script, aPressHasAButtonAPointClicksAndModifiers)
{
    const auto press = parsed<PressCommand>("press right 10 20.5 clicks 2 control shift");
    EXPECT_TRUE(press.isRight);
    EXPECT_EQ(press.point, (kelo::Point{10.0, 20.5}));
    EXPECT_EQ(press.clickCount, 2);
    EXPECT_EQ(press.modifierFlags, ModifierFlag::Control | ModifierFlag::Shift);
    EXPECT_FALSE(parsed<PressCommand>("press left 0 0").isRight);
    EXPECT_EQ(parsed<PressCommand>("press left 0 0").clickCount, 1);
}

TEST(Script, aDragAndAReleaseHaveAPoint)
{
    EXPECT_EQ(parsed<DragCommand>("drag -3 4").point, (kelo::Point{-3.0, 4.0}));
    EXPECT_EQ(parsed<ReleaseCommand>("release 5 6").point, (kelo::Point{5.0, 6.0}));
}

TEST(Script, aClickIsAtAPointAnObjectOrATool)
{
    using Target = ClickCommand::Target;
    EXPECT_EQ(parsed<ClickCommand>("click 7 8").point, (kelo::Point{7.0, 8.0}));
    const auto tooth = parsed<ClickCommand>("click tooth 8 clicks 2 option command");
    EXPECT_EQ(tooth.target, Target::Tooth);
    EXPECT_EQ(tooth.name, "8");
    EXPECT_EQ(tooth.clickCount, 2);
    EXPECT_EQ(tooth.modifierFlags, ModifierFlag::Option | ModifierFlag::Command);
    EXPECT_EQ(parsed<ClickCommand>("click bracket 9").target, Target::Bracket);
    EXPECT_EQ(parsed<ClickCommand>("click button 8l").target, Target::Button);
    EXPECT_EQ(parsed<ClickCommand>("click elastic 3").name, "3");
    for (const char *tool : {"elastics", "bracket", "print"})
        EXPECT_EQ(parsed<ClickCommand>(QByteArray("click tool ") + tool).name, tool);
}

TEST(Script, aScrollMayHaveAPoint)
{
    const auto scroll = parsed<ScrollCommand>("scroll 0 -2.5");
    EXPECT_EQ(scroll.deltaY, -2.5);
    EXPECT_EQ(scroll.point, std::nullopt);
    EXPECT_EQ(parsed<ScrollCommand>("scroll 1 0 30 40").point, (kelo::Point{30.0, 40.0}));
}

TEST(Script, aKeyIsNamedOrASingleCharacter)
{
    EXPECT_EQ(parsed<KeyCommand>("key up").character, 0xF700);
    EXPECT_EQ(parsed<KeyCommand>("key down").character, 0xF701);
    EXPECT_EQ(parsed<KeyCommand>("key left").character, 0xF702);
    EXPECT_EQ(parsed<KeyCommand>("key right").character, 0xF703);
    EXPECT_EQ(parsed<KeyCommand>("key escape").character, 0x1B);
    EXPECT_EQ(parsed<KeyCommand>("key 0 shift").character, u'0');
    EXPECT_EQ(parsed<KeyCommand>("key 0 shift").modifierFlags, ModifierFlag::Shift);
    EXPECT_EQ(parsed<KeyCommand>("key \"#\"").character, u'#');
}

TEST(Script, modifiersAreReplacedAsAWhole)
{
    EXPECT_EQ(parsed<ModifiersCommand>("modifiers").modifierFlags, 0u);
    EXPECT_EQ(parsed<ModifiersCommand>("modifiers control").modifierFlags, ModifierFlag::Control);
}

TEST(Script, menuTitlesStandInQuotationMarks)
{
    EXPECT_EQ(parsed<MenuCommand>("menu \"Place Tooth\"").titles, QStringList{"Place Tooth"});
    EXPECT_EQ(parsed<MenuCommand>(R"(menu "Start New Elastic" > "1/4\" 6 oz")").titles,
              (QStringList{"Start New Elastic", "1/4\" 6 oz"}));
    EXPECT_EQ(parsed<MenuCommand>(R"(menu "a\\b # c")").titles, QStringList{R"(a\b # c)"});
}

TEST(Script, datesAreISODatesOrTheWordForNone)
{
    EXPECT_EQ(parsed<DateCommand>("date 2026-11-20").date, QDate(2026, 11, 20));
    EXPECT_EQ(parsed<DateCommand>("date today").date, std::nullopt);
    EXPECT_EQ(parsed<ApproveCommand>("approve 2026-01-02").date, QDate(2026, 1, 2));
    EXPECT_EQ(parsed<ApproveCommand>("approve none").date, std::nullopt);
}

TEST(Script, theOtherCommandsTakeTheirNumbersAndWords)
{
    EXPECT_EQ(parsed<AdvanceCommand>("advance 0.25").seconds, 0.25);
    EXPECT_EQ(parsed<WaitCommand>("wait 1").seconds, 1.0);
    EXPECT_EQ(parsed<RepeatIntervalCommand>("repeat-interval -1").seconds, -1.0);
    EXPECT_EQ(parsed<MouthCommand>("mouth -30").degrees, -30.0);
    const auto rotation = parsed<RotationCommand>("rotation 90 -1 0 0.5");
    EXPECT_EQ(rotation.degrees, 90.0);
    EXPECT_EQ(rotation.x, -1.0);
    EXPECT_EQ(rotation.z, 0.5);
    EXPECT_EQ(parsed<ZoomCommand>("zoom -5 5 0 7.5").box, (std::array{-5.0, 5.0, 0.0, 7.5}));
    EXPECT_EQ(parsed<ZoomCommand>("zoom fit").box, std::nullopt);
    EXPECT_EQ(parsed<ShowCommand>("hide lower-arch").part, kelo::ScenePart::LowerArch);
    EXPECT_FALSE(parsed<ShowCommand>("hide elastics").shows);
    EXPECT_TRUE(parsed<ShowCommand>("show gums").shows);
    EXPECT_EQ(parsed<ResizeCommand>("resize 640 480").size, (kelo::Size{640.0, 480.0}));
    EXPECT_TRUE(parsed<FullScreenCommand>("fullscreen on").on);
    EXPECT_FALSE(parsed<FullScreenCommand>("fullscreen off").on);
    EXPECT_EQ(parsed<PictureCommand>("picture \"a b.png\"").file, "a b.png");
    EXPECT_EQ(parsed<StateCommand>("state -").file, "-");
    parsed<DismissCommand>("dismiss");
}

TEST(Script, commentsAndEmptyLinesCountAsLinesOnly)
{
    const ParsedScript script = parseScript("# first\n\n  mouth 10 # open\r\n\tdismiss\n");
    EXPECT_EQ(script.problems, QStringList());
    ASSERT_EQ(script.lines.size(), 2u);
    EXPECT_EQ(script.lines[0].number, 3);
    EXPECT_EQ(script.lines[1].number, 4);
}

struct WrongLine
{
    const char *line;
    const char *message;
};

TEST(Script, everyWrongLineIsNamedWithItsNumberAndReason)
{
    const WrongLine wrongLines[] = {
        {"jump", "1: 'jump' is no command"},
        {"press", "1: the button is missing"},
        {"press middle 1 2", "1: the button is 'left' or 'right', not 'middle'"},
        {"press left 1", "1: Y is missing"},
        {"press left 1,5 2", "1: X must be a number, not '1,5'"},
        {"press left nan 2", "1: X must be a number, not 'nan'"},
        {"press left 1 2 clicks 0",
         "1: the number of clicks must be a whole number from 1 to 9, not '0'"},
        {"press left 1 2 alt",
         "1: 'alt' is no modifier; there are control, shift, option and command"},
        {"click tooth", "1: the name is missing"},
        {"click tool pen", "1: the tools are elastics, bracket and print, not 'pen'"},
        {"click elastic x",
         "1: the elastic's number must be a whole number from 0 to 8388607, not 'x'"},
        {"key enter", "1: 'enter' is no key; there are up, down, left, right, escape, menu and "
                      "single characters"},
        {"menu Place", "1: the row's title must stand in quotation marks, not be 'Place'"},
        {"menu \"Place", "1: a quotation mark is missing"},
        {"menu \"A\" > ", "1: the row's title is missing"},
        {"date 20.11.2026", "1: the date must be YYYY-MM-DD or 'today', not '20.11.2026'"},
        {"approve 2026-02-30", "1: the date must be YYYY-MM-DD or 'none', not '2026-02-30'"},
        {"advance -1", "1: SECONDS must be 0 at least, not -1"},
        {"resize 0 5", "1: the width must be a whole number from 1 to 8192, not '0'"},
        {"fullscreen yes", "1: full screen is 'on' or 'off', not 'yes'"},
        {"zoom 1 2 3", "1: TOP is missing"},
        {"zoom 5 -5 0 1", "1: the zoom box has no area"},
        {"hide teeth", "1: the parts are upper-arch, lower-arch, gums, brackets, buttons and "
                       "elastics, not 'teeth'"},
        {"dismiss now", "1: 'now' is too much"},
        {"picture", "1: the file is missing"},
    };
    for (const WrongLine &wrong : wrongLines) {
        const ParsedScript script = parseScript(wrong.line);
        EXPECT_EQ(script.problems.join('\n').toStdString(), wrong.message) << wrong.line;
        EXPECT_TRUE(script.lines.empty()) << wrong.line;
    }
}

TEST(Script, allWrongLinesAreToldAtOnce)
{
    const ParsedScript script = parseScript("mouth\ndismiss\njump\n");
    EXPECT_EQ(script.problems, (QStringList{"1: DEGREES is missing", "3: 'jump' is no command"}));
}

TEST(Script, theScriptsOfTheDocumentsAreRight)
{
    QFile file(KELO_SOURCE_DIR "/docs/scripts.md");
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    int count = 0;
    for (qsizetype begin = text.indexOf("```script\n"); begin >= 0;
         begin = text.indexOf("```script\n", begin + 1)) {
        const qsizetype first = begin + 10;
        const ParsedScript script =
            parseScript(text.mid(first, text.indexOf("```", first) - first));
        EXPECT_EQ(script.problems, QStringList());
        EXPECT_FALSE(script.lines.empty());
        ++count;
    }
    EXPECT_EQ(count, 1);
}

} // namespace
