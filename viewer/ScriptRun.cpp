#include "viewer/ScriptRun.h"

#include <QFile>

#include <chrono>
#include <cstdio>

namespace viewer {
namespace {

/// Often enough for smooth animation.
constexpr std::chrono::milliseconds tickInterval(8);

QString shownName(const QString &file)
{
    return file == QStringLiteral("-") ? QStringLiteral("standard input") : file;
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    const bool isOpen = path == QStringLiteral("-") ? file.open(stdin, QIODevice::ReadOnly)
                                                    : file.open(QIODevice::ReadOnly);
    if (!isOpen)
        throw BadScript(QStringLiteral("%1: could not be read: %2")
                            .arg(shownName(path), file.errorString())
                            .toStdString());
    return file.readAll();
}

} // namespace

ParsedScript readScript(const QString &file)
{
    if (file.isEmpty()) return {};
    ParsedScript script = parseScript(contentOf(file));
    if (script.problems.isEmpty()) return script;
    QStringList lines;
    for (const QString &problem : script.problems)
        lines << shownName(file) + QLatin1Char(':') + problem;
    throw BadScript(lines.join(QLatin1Char('\n')).toStdString());
}

void playScript(const ParsedScript &script, const QString &file, ScriptPlayer &player)
{
    const QString failure = player.play(script);
    if (!failure.isEmpty())
        throw BadScript((shownName(file) + QLatin1Char(':') + failure).toStdString());
}

RealTime::RealTime(kelo::VirtualRunLoop &clock) : clock_(clock)
{
    sinceLastTick_.start();
    ticks_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&ticks_, &QTimer::timeout, [this] {
        clock_.advance(static_cast<double>(sinceLastTick_.nsecsElapsed()) * 1e-9);
        sinceLastTick_.start();
    });
    ticks_.start(tickInterval);
}

} // namespace viewer
