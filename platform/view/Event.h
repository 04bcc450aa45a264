#pragma once

#include "base/Export.h"
#include "base/Rect.h"

#include <cstdint>
#include <optional>
#include <string>

class QKeyEvent;
class QMouseEvent;
class QWheelEvent;

namespace kelo {

enum class EventType {
    LeftMouseDown,
    LeftMouseDragged,
    LeftMouseUp,
    RightMouseDown,
    RightMouseDragged,
    RightMouseUp,
    OtherMouseDown,
    OtherMouseDragged,
    OtherMouseUp,
    MouseMoved,
    MouseEntered,
    MouseExited,
    ScrollWheel,
    FlagsChanged,
    KeyDown,
    KeyUp,
};

enum class MouseButton { Left, Right, Other };

/// The button that an event of this type is about; nullopt for those that are about none.
KELO_EXPORT std::optional<MouseButton> mouseButtonOf(EventType type);

/// Bits of Event::modifierFlags. The values are those that the views' masks are written in.
namespace ModifierFlag {
inline constexpr std::uint32_t CapsLock = 0x10000;
inline constexpr std::uint32_t Shift = 0x20000;
inline constexpr std::uint32_t Control = 0x40000;
inline constexpr std::uint32_t Option = 0x80000;
inline constexpr std::uint32_t Command = 0x100000;
inline constexpr std::uint32_t NumericPad = 0x200000;
inline constexpr std::uint32_t Help = 0x400000;
inline constexpr std::uint32_t Function = 0x800000;
} // namespace ModifierFlag

/// Code points that stand for keys without a printing character, in Event::characters.
namespace FunctionKey {
inline constexpr char16_t UpArrow = 0xF700;
inline constexpr char16_t DownArrow = 0xF701;
inline constexpr char16_t LeftArrow = 0xF702;
inline constexpr char16_t RightArrow = 0xF703;
inline constexpr char16_t F1 = 0xF704; ///< F2 to F35 follow.
inline constexpr char16_t Insert = 0xF727;
inline constexpr char16_t Delete = 0xF728;
inline constexpr char16_t Home = 0xF729;
inline constexpr char16_t End = 0xF72B;
inline constexpr char16_t PageUp = 0xF72C;
inline constexpr char16_t PageDown = 0xF72D;
inline constexpr char16_t Menu = 0xF735;
inline constexpr char16_t Escape = 0x1B;
inline constexpr char16_t Backspace = 0x7F;
inline constexpr char16_t Tab = 0x09;
inline constexpr char16_t BackTab = 0x19;
inline constexpr char16_t Return = 0x0D;
inline constexpr char16_t Enter = 0x03; ///< of the keypad
} // namespace FunctionKey

/// One input event, in the form that the views take it.
struct Event
{
    EventType type = EventType::MouseMoved;
    /// Points, origin at the window's bottom left. The lowest row of device pixels has y = 1,
    /// whatever the scale (and with one pixel a point the topmost y = the height), so that a
    /// flipped view's conversion counts rows from 0: OpenGLView::flippedWindowPoint.
    Point locationInWindow;
    std::uint32_t modifierFlags = 0; ///< ModifierFlag bits held while the event happened.
    int clickCount = 0;        ///< 1 for a single press, 2 for the second press of a double click.
    std::u16string characters; ///< Key events: what was typed, or a FunctionKey code point.
    double deltaX =
        0.0; ///< Scroll, in lines; turning or tilting the wheel to the left is positive.
    double deltaY = 0.0;    ///< Scroll, in lines; turning the wheel away from the user is positive.
    double timestamp = 0.0; ///< Seconds, from the main run loop's clock.
};

/// Modifier bits of a Qt modifier set: Control, Shift and Command (the Meta key) are their own,
/// Alt is Option, keypad keys set NumericPad.
KELO_EXPORT std::uint32_t modifierFlagsFromQt(int qtKeyboardModifiers);

/// The characters of a Qt key press: a FunctionKey code point for the keys that have one, otherwise
/// the text without regard to a held Control key ("a", not the control character; the small letter,
/// since Qt does not tell the shifted one then). Empty for keys that stand for nothing, such as
/// Shift alone.
KELO_EXPORT std::u16string charactersFromQt(int qtKey, const std::u16string &text);

/// Scroll deltas in lines, with Qt's signs: x is positive to the left, y away from the user. A
/// wheel notch of 120 eighths of a degree is one line, finer wheels give fractions; a trackpad's
/// pixel deltas are divided by 10 pixels a line.
KELO_EXPORT Point scrollDeltaInLines(const QWheelEvent &event);

} // namespace kelo
