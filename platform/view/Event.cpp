#include "platform/view/Event.h"

#include <QInputDevice>
#include <QString>
#include <QWheelEvent>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace kelo {
namespace {

struct KeyCode
{
    int qtKey;
    char16_t character;
};

constexpr std::array keyCodes{
    KeyCode{Qt::Key_Up, FunctionKey::UpArrow},
    KeyCode{Qt::Key_Down, FunctionKey::DownArrow},
    KeyCode{Qt::Key_Left, FunctionKey::LeftArrow},
    KeyCode{Qt::Key_Right, FunctionKey::RightArrow},
    KeyCode{Qt::Key_Insert, FunctionKey::Insert},
    KeyCode{Qt::Key_Delete, FunctionKey::Delete},
    KeyCode{Qt::Key_Home, FunctionKey::Home},
    KeyCode{Qt::Key_End, FunctionKey::End},
    KeyCode{Qt::Key_PageUp, FunctionKey::PageUp},
    KeyCode{Qt::Key_PageDown, FunctionKey::PageDown},
    KeyCode{Qt::Key_Menu, FunctionKey::Menu},
    KeyCode{Qt::Key_Escape, FunctionKey::Escape},
    KeyCode{Qt::Key_Backspace, FunctionKey::Backspace},
    KeyCode{Qt::Key_Tab, FunctionKey::Tab},
    KeyCode{Qt::Key_Backtab, FunctionKey::BackTab},
    KeyCode{Qt::Key_Return, FunctionKey::Return},
    KeyCode{Qt::Key_Enter, FunctionKey::Enter},
};

/// Pixels that a trackpad's fingers move the content by for one line.
constexpr double pixelsPerLine = 10.0;

/// Eighths of a degree in one notch of a wheel.
constexpr double eighthsPerNotch = 120.0;

std::optional<char16_t> functionKeyOf(int qtKey)
{
    if (qtKey >= Qt::Key_F1 && qtKey <= Qt::Key_F35)
        return static_cast<char16_t>(FunctionKey::F1 + (qtKey - Qt::Key_F1));
    const auto found = std::find_if(keyCodes.begin(), keyCodes.end(),
                                    [qtKey](const KeyCode &each) { return each.qtKey == qtKey; });
    if (found == keyCodes.end()) return std::nullopt;
    return found->character;
}

bool isControlCharacter(char16_t character)
{
    return character < 0x20 || character == 0x7F;
}

/// Whether the wheel event comes from fingers on a surface. Its pixel deltas are then what counts;
/// the pixel deltas of a wheel are up to the driver and not to be relied on.
bool comesFromTrackpad(const QWheelEvent &event)
{
    if (event.pixelDelta().isNull()) return false;
    const QInputDevice *device = event.device();
    return event.phase() != Qt::NoScrollPhase || event.angleDelta().isNull() ||
           (device && device->type() == QInputDevice::DeviceType::TouchPad);
}

} // namespace

std::optional<MouseButton> mouseButtonOf(EventType type)
{
    switch (type) {
    case EventType::LeftMouseDown:
    case EventType::LeftMouseDragged:
    case EventType::LeftMouseUp:
        return MouseButton::Left;
    case EventType::RightMouseDown:
    case EventType::RightMouseDragged:
    case EventType::RightMouseUp:
        return MouseButton::Right;
    case EventType::OtherMouseDown:
    case EventType::OtherMouseDragged:
    case EventType::OtherMouseUp:
        return MouseButton::Other;
    default:
        return std::nullopt;
    }
}

std::uint32_t modifierFlagsFromQt(int qtKeyboardModifiers)
{
    constexpr std::array<std::pair<int, std::uint32_t>, 5> bits{{
        {Qt::ShiftModifier, ModifierFlag::Shift},
        {Qt::ControlModifier, ModifierFlag::Control},
        {Qt::AltModifier, ModifierFlag::Option},
        {Qt::MetaModifier, ModifierFlag::Command},
        {Qt::KeypadModifier, ModifierFlag::NumericPad},
    }};
    std::uint32_t flags = 0;
    for (const auto &[qtBit, flag] : bits)
        if ((qtKeyboardModifiers & qtBit) != 0) flags |= flag;
    return flags;
}

std::u16string charactersFromQt(int qtKey, const std::u16string &text)
{
    if (const auto functionKey = functionKeyOf(qtKey)) return {*functionKey};
    if (!text.empty() && !isControlCharacter(text.front())) return text;
    // With Control held the text is a control character, or empty; the key is the upper-case letter
    // itself. Keys above this range have no character at all.
    constexpr int firstKeyWithoutCharacter = 0x01000000;
    if (qtKey < Qt::Key_Space || qtKey >= firstKeyWithoutCharacter) return {};
    const auto codePoint = static_cast<char32_t>(qtKey);
    return QString::fromUcs4(&codePoint, 1).toLower().toStdU16String();
}

Point scrollDeltaInLines(const QWheelEvent &event)
{
    if (comesFromTrackpad(event)) {
        const QPoint pixels = event.pixelDelta();
        return {pixels.x() / pixelsPerLine, pixels.y() / pixelsPerLine};
    }
    const QPoint angle = event.angleDelta();
    return {angle.x() / eighthsPerNotch, angle.y() / eighthsPerNotch};
}

} // namespace kelo
