#pragma once

#include "viewer/Script.h"
#include "viewer/ScriptPlayer.h"

#include <QElapsedTimer>
#include <QString>
#include <QTimer>

#include <stdexcept>

namespace viewer {

/// Thrown for a script that cannot be read or played; the text names the script and the line, one
/// line of text for each wrong line.
class BadScript : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// Reads a script, "-" from standard input; an empty name is an empty script. Throws BadScript when
/// it cannot be read or any of its lines is wrong.
ParsedScript readScript(const QString &file);

/// Plays a script to its end. Throws BadScript at the first line that fails.
void playScript(const ParsedScript &script, const QString &file, ScriptPlayer &player);

/// Moves a clock that stands still along with real time, from its making on: what a window does
/// after its script has ended.
class RealTime
{
public:
    explicit RealTime(kelo::VirtualRunLoop &clock);

private:
    kelo::VirtualRunLoop &clock_;
    QElapsedTimer sinceLastTick_;
    QTimer ticks_;
};

} // namespace viewer
