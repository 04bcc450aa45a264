#include "platform/view/Event.h"

#include <gtest/gtest.h>

#include <QWheelEvent>

#include <string>

using namespace kelo;

namespace {

QWheelEvent wheelEvent(const QPoint &pixels, const QPoint &eighths, Qt::ScrollPhase phase)
{
    return QWheelEvent(QPointF(1.0, 1.0), QPointF(1.0, 1.0), pixels, eighths, Qt::NoButton,
                       Qt::NoModifier, phase, false);
}

} // namespace

TEST(Event, eachModifierKeyHasItsOwnBit)
{
    EXPECT_EQ(modifierFlagsFromQt(Qt::NoModifier), 0u);
    EXPECT_EQ(modifierFlagsFromQt(Qt::ShiftModifier), 0x20000u);
    EXPECT_EQ(modifierFlagsFromQt(Qt::ControlModifier), 0x40000u);
    EXPECT_EQ(modifierFlagsFromQt(Qt::AltModifier), 0x80000u);
    EXPECT_EQ(modifierFlagsFromQt(Qt::MetaModifier), 0x100000u);
    EXPECT_EQ(modifierFlagsFromQt(Qt::KeypadModifier), 0x200000u);
}

TEST(Event, pressesDragsAndReleasesAreAboutTheirButton)
{
    for (const EventType type :
         {EventType::LeftMouseDown, EventType::LeftMouseDragged, EventType::LeftMouseUp})
        EXPECT_EQ(mouseButtonOf(type), MouseButton::Left);
    for (const EventType type :
         {EventType::RightMouseDown, EventType::RightMouseDragged, EventType::RightMouseUp})
        EXPECT_EQ(mouseButtonOf(type), MouseButton::Right);
    for (const EventType type :
         {EventType::OtherMouseDown, EventType::OtherMouseDragged, EventType::OtherMouseUp})
        EXPECT_EQ(mouseButtonOf(type), MouseButton::Other);
    for (const EventType type :
         {EventType::MouseMoved, EventType::MouseEntered, EventType::MouseExited,
          EventType::ScrollWheel, EventType::FlagsChanged, EventType::KeyDown, EventType::KeyUp})
        EXPECT_EQ(mouseButtonOf(type), std::nullopt);
}

TEST(Event, heldModifiersAddUp)
{
    EXPECT_EQ(modifierFlagsFromQt(Qt::ShiftModifier | Qt::ControlModifier), 0x60000u);
}

TEST(Event, keysWithoutATextBecomeFunctionKeyCodePoints)
{
    const struct
    {
        int key;
        char16_t character;
    } rows[] = {
        {Qt::Key_Up, 0xF700},     {Qt::Key_Down, 0xF701},     {Qt::Key_Left, 0xF702},
        {Qt::Key_Right, 0xF703},  {Qt::Key_F1, 0xF704},       {Qt::Key_F2, 0xF705},
        {Qt::Key_F12, 0xF70F},    {Qt::Key_F35, 0xF726},      {Qt::Key_Insert, 0xF727},
        {Qt::Key_Delete, 0xF728}, {Qt::Key_Home, 0xF729},     {Qt::Key_End, 0xF72B},
        {Qt::Key_PageUp, 0xF72C}, {Qt::Key_PageDown, 0xF72D}, {Qt::Key_Menu, 0xF735},
    };
    for (const auto &row : rows)
        EXPECT_EQ(charactersFromQt(row.key, u""), std::u16string(1, row.character)) << row.key;
}

TEST(Event, editingKeysGiveTheirControlCharacters)
{
    EXPECT_EQ(charactersFromQt(Qt::Key_Escape, u"\x1B"), u"\x1B");
    EXPECT_EQ(charactersFromQt(Qt::Key_Backspace, u"\b"), u"\x7F");
    EXPECT_EQ(charactersFromQt(Qt::Key_Delete, u"\x7F"), u"\xF728");
    EXPECT_EQ(charactersFromQt(Qt::Key_Tab, u"\t"), u"\t");
    EXPECT_EQ(charactersFromQt(Qt::Key_Backtab, u""), u"\x19");
    EXPECT_EQ(charactersFromQt(Qt::Key_Return, u"\r"), u"\r");
    EXPECT_EQ(charactersFromQt(Qt::Key_Enter, u"\r"), u"\x03");
}

TEST(Event, aTypedTextIsHandedOnAsItIs)
{
    EXPECT_EQ(charactersFromQt(Qt::Key_A, u"a"), u"a");
    EXPECT_EQ(charactersFromQt(Qt::Key_A, u"A"), u"A");
    EXPECT_EQ(charactersFromQt(Qt::Key_0, u"0"), u"0");
    EXPECT_EQ(charactersFromQt(Qt::Key_unknown, u"\u4E2D"), u"\u4E2D");
}

TEST(Event, withControlHeldTheLetterIsGivenAndNotTheControlCharacter)
{
    EXPECT_EQ(charactersFromQt(Qt::Key_A, u"\x01"), u"a");
    EXPECT_EQ(charactersFromQt(Qt::Key_BracketLeft, u"\x1B"), u"[");
    EXPECT_EQ(charactersFromQt(Qt::Key_0, u""), u"0");
    EXPECT_EQ(charactersFromQt(Qt::Key_Space, std::u16string(1, u'\0')), u" ");
}

TEST(Event, aModifierKeyAloneTypesNothing)
{
    EXPECT_EQ(charactersFromQt(Qt::Key_Shift, u""), u"");
    EXPECT_EQ(charactersFromQt(Qt::Key_Control, u""), u"");
    EXPECT_EQ(charactersFromQt(Qt::Key_unknown, u""), u"");
}

TEST(Event, aWheelNotchIsOneLineAndAwayFromTheUserIsPositive)
{
    EXPECT_EQ(scrollDeltaInLines(wheelEvent({}, {0, 120}, Qt::NoScrollPhase)), (Point{0.0, 1.0}));
    EXPECT_EQ(scrollDeltaInLines(wheelEvent({}, {0, -240}, Qt::NoScrollPhase)), (Point{0.0, -2.0}));
    EXPECT_EQ(scrollDeltaInLines(wheelEvent({}, {120, 0}, Qt::NoScrollPhase)), (Point{1.0, 0.0}));
}

TEST(Event, aFineWheelGivesFractionsOfALine)
{
    EXPECT_EQ(scrollDeltaInLines(wheelEvent({}, {0, 30}, Qt::NoScrollPhase)), (Point{0.0, 0.25}));
}

TEST(Event, aTrackpadMovesALineForTenPixels)
{
    EXPECT_EQ(scrollDeltaInLines(wheelEvent({-5, 20}, {-40, 160}, Qt::ScrollUpdate)),
              (Point{-0.5, 2.0}));
    EXPECT_EQ(scrollDeltaInLines(wheelEvent({0, 5}, {}, Qt::NoScrollPhase)), (Point{0.0, 0.5}));
}

TEST(Event, thePixelDeltasOfAWheelDoNotCount)
{
    EXPECT_EQ(scrollDeltaInLines(wheelEvent({0, 53}, {0, 120}, Qt::NoScrollPhase)),
              (Point{0.0, 1.0}));
}

TEST(Rect, itsRightAndFarEdgesAreOutside)
{
    const Rect rect{{10.0, 20.0}, {30.0, 40.0}};
    EXPECT_TRUE(rect.contains({10.0, 20.0}));
    EXPECT_TRUE(rect.contains({39.5, 59.5}));
    EXPECT_FALSE(rect.contains({40.0, 30.0}));
    EXPECT_FALSE(rect.contains({20.0, 60.0}));
    EXPECT_FALSE(rect.contains({9.5, 30.0}));
    EXPECT_FALSE(rect.contains({20.0, 19.5}));
}

TEST(Rect, anEmptyRectangleHoldsNoPoint)
{
    EXPECT_FALSE((Rect{{10.0, 20.0}, {0.0, 40.0}}).contains({10.0, 20.0}));
}
