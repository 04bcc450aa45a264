#pragma once

#include "viewer/output/DelegateCallLog.h"
#include "viewer/script/Script.h"
#include "viewer/script/ScriptPlayer.h"

#include <QElapsedTimer>
#include <QString>
#include <QTimer>

#include <limits>
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

/// Moves a virtual clock along with real time, from its construction on and no further than to
/// `end` of that clock, while the event loop runs: during `wait`, and after a script has ended in a
/// window.
class RealTime
{
public:
    explicit RealTime(kelo::VirtualRunLoop &clock,
                      double end = std::numeric_limits<double>::infinity());

private:
    kelo::VirtualRunLoop &clock_;
    double end_;
    QElapsedTimer sinceLastTick_;
    QTimer ticks_;
};

/// While it lives, nothing waits for a person to answer: alerts are a line on standard error, a
/// configuration is placed again without a question, and a print request of the view is only
/// listed in the log of calls. At its end alerts and print
/// requests go where they went before, unless the view has got another delegate meanwhile.
class Unattended
{
public:
    /// The log is the one that lists the calls of the view's delegate.
    Unattended(kelo::DXOpenGL &view, DelegateCallLog &log);
    ~Unattended();
    Unattended(const Unattended &) = delete;
    Unattended &operator=(const Unattended &) = delete;

private:
    kelo::DXOpenGL &view_;
    kelo::DXOpenGLDelegate *const ownDelegate_;
    kelo::DXOpenGLDelegate delegate_;
    kelo::AlertPresenter::Presenter previousAlerts_;
};

} // namespace viewer
