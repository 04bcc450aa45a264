#include "viewer/app/WindowSystem.h"

#include "viewer/settings/CommandLine.h"
#include "viewer/text/ShownText.h"

#include <QStringList>

#include <cstdlib>
#include <utility>

namespace viewer {
namespace {

bool isStarting = false;
QStringList saidWhileStarting;
std::function<void()> storeAtLoss;

/// What could not be reached, as the environment names it.
QString noWindowSystem()
{
    const QString plugin = qEnvironmentVariable("QT_QPA_PLATFORM");
    if (!plugin.isEmpty())
        return QStringLiteral("The platform plug-in '%1' could not be started; --headless needs "
                              "none.")
            .arg(plugin);
    QStringList displays;
    for (const char *name : {"WAYLAND_DISPLAY", "DISPLAY"}) {
        if (const QString display = qEnvironmentVariable(name); !display.isEmpty())
            displays << QStringLiteral("'%1'").arg(display);
    }
    return QStringLiteral("The display %1 could not be opened; --headless needs none.")
        .arg(displays.join(QStringLiteral(" or ")));
}

/// What the platform plug-ins of Qt say before they end the program, and Xlib's caller.
bool tellsLossOfDisplay(const QString &message)
{
    return message.startsWith(QStringLiteral("The X11 connection broke")) ||
           message.startsWith(QStringLiteral("The Wayland connection"));
}

[[noreturn]] void endWithoutDisplay()
{
    tellUser(QStringLiteral("The display was lost."));
    // Only once: what is lost while it is stored is not lost any more by a second try.
    if (const auto store = std::exchange(storeAtLoss, nullptr)) store();
    // Nothing is destroyed in order: windows and contexts would call the display that is lost.
    std::_Exit(NoOpenGL);
}

/// Xlib, below the graphics drivers, knows no other way to tell than exit().
void atExit()
{
    if (storeAtLoss) endWithoutDisplay();
}

void takeMessage(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    // A night job has no session, and nothing here needs the folder of one.
    if (message.startsWith(QStringLiteral("QStandardPaths: XDG_RUNTIME_DIR not set"))) return;
    if (isStarting) {
        saidWhileStarting << message;
        if (type != QtFatalMsg) return;
        tellUser(noWindowSystem());
        std::_Exit(NoOpenGL);
    }
    if (tellsLossOfDisplay(message)) endWithoutDisplay();
    tellUser(message);
}

} // namespace

void watchQtMessages()
{
    qInstallMessageHandler(takeMessage);
}

StartOfWindowSystem::StartOfWindowSystem()
{
    isStarting = true;
}

StartOfWindowSystem::~StartOfWindowSystem()
{
    isStarting = false;
    for (const QString &message : std::exchange(saidWhileStarting, {}))
        tellUser(message);
}

StoredAtLossOfDisplay::StoredAtLossOfDisplay(std::function<void()> store)
{
    storeAtLoss = std::move(store);
    static const bool isRegistered = std::atexit(atExit) == 0;
    Q_UNUSED(isRegistered);
}

StoredAtLossOfDisplay::~StoredAtLossOfDisplay()
{
    storeAtLoss = nullptr;
}

} // namespace viewer
