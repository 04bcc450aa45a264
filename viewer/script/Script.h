#pragma once

#include "keloOpenGL/keloOpenGL.h"

#include <QDate>
#include <QString>
#include <QStringList>

#include <array>
#include <cstdint>
#include <optional>
#include <variant>
#include <vector>

namespace viewer {

// Interaction scripts: one command a line, `#` starts a comment. Coordinates are view points with
// the origin at the bottom left. docs/scripts.md lists the commands.

/// The mouse, in view points.
struct PressCommand
{
    bool isRight = false;
    kelo::Point point;
    int clickCount = 1;
    std::uint32_t modifierFlags = 0; ///< held during this press, with those of ModifiersCommand
};
struct DragCommand
{
    kelo::Point point;
};
struct ReleaseCommand
{
    kelo::Point point;
};
/// What is clicked: a point, an object of the scene by its key or number, or a tool of the overlay.
struct ClickCommand
{
    enum class Target { Point, Tooth, Bracket, Button, Elastic, Tool };
    Target target = Target::Point;
    kelo::Point point;
    QString name; ///< key of the object, number of the elastic, or name of the tool
    int clickCount = 1;
    std::uint32_t modifierFlags = 0;
};
struct ScrollCommand
{
    double deltaX = 0.0, deltaY = 0.0; ///< in lines
    std::optional<kelo::Point> point;
};
struct KeyCommand
{
    char16_t character = 0;
    std::uint32_t modifierFlags = 0;
};
struct ModifiersCommand
{
    std::uint32_t modifierFlags = 0;
};
struct MenuCommand
{
    QStringList titles; ///< of a row, or of a row and the row of its submenu
};
struct DismissCommand
{};
struct DateCommand
{
    std::optional<QDate> date; ///< nothing: today
};
struct ApproveCommand
{
    std::optional<QDate> date; ///< nothing: not approved
};
struct AdvanceCommand
{
    double seconds = 0.0;
};
struct WaitCommand
{
    double seconds = 0.0;
};
struct RepeatIntervalCommand
{
    double seconds = 0.0;
};
struct MouthCommand
{
    double degrees = 0.0;
};
struct RotationCommand
{
    double degrees = 0.0, x = 0.0, y = 0.0, z = 0.0;
};
struct ZoomCommand
{
    /// Left, right, bottom, top in millimetres of the turned world; nothing: to fit.
    std::optional<std::array<double, 4>> box;
};
struct ShowCommand
{
    kelo::ScenePart part;
    bool shows = true;
};
struct ResizeCommand
{
    kelo::Size size;
};
struct FullScreenCommand
{
    bool on = false;
};
struct PictureCommand
{
    QString file;
};
struct StateCommand
{
    QString file;
};

using ScriptCommand =
    std::variant<PressCommand, DragCommand, ReleaseCommand, ClickCommand, ScrollCommand, KeyCommand,
                 ModifiersCommand, MenuCommand, DismissCommand, DateCommand, ApproveCommand,
                 AdvanceCommand, WaitCommand, RepeatIntervalCommand, MouthCommand, RotationCommand,
                 ZoomCommand, ShowCommand, ResizeCommand, FullScreenCommand, PictureCommand,
                 StateCommand>;

struct ScriptLine
{
    int number = 0; ///< counted from 1
    ScriptCommand command;
};

/// A whole script, or what is wrong with it.
struct ParsedScript
{
    std::vector<ScriptLine> lines;
    /// "LINE: reason", one for each of the first hundred wrong lines; a script with any is not to
    /// be played.
    QStringList problems;
    qsizetype furtherProblemCount = 0; ///< wrong lines behind those
};

/// Reads a script's text (UTF-8). Nothing of it is looked up: whether an object, a menu row or a
/// file exists is only known when it is played.
ParsedScript parseScript(const QByteArray &text);

} // namespace viewer
