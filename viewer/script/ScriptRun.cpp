#include "viewer/script/ScriptRun.h"

#include "viewer/files/InputFile.h"
#include "viewer/files/Limits.h"
#include "viewer/text/ShownText.h"

#include <algorithm>
#include <chrono>
#include <string>

namespace viewer {
namespace {

/// Often enough for smooth animation.
constexpr std::chrono::milliseconds tickInterval(8);

QString sourceName(const QString &file)
{
    return file == QStringLiteral("-") ? QStringLiteral("standard input") : file;
}

QByteArray contentOf(const QString &path)
{
    const InputFile read = path == QStringLiteral("-") ? readStandardInput(largestScript)
                                                       : readInputFile(path, largestScript);
    if (!read.problem.isEmpty()) throw BadScript(read.problem.toStdString());
    return read.content;
}

} // namespace

ParsedScript readScript(const QString &file)
{
    if (file.isEmpty()) return {};
    ParsedScript script = parseScript(contentOf(file));
    if (script.problems.isEmpty()) return script;
    QStringList lines;
    for (const QString &problem : script.problems)
        lines << sourceName(file) + QLatin1Char(':') + problem;
    if (script.furtherProblemCount > 0)
        lines << QStringLiteral("%1: and %2 more")
                     .arg(sourceName(file), QString::number(script.furtherProblemCount));
    throw BadScript(lines.join(QLatin1Char('\n')).toStdString());
}

void playScript(const ParsedScript &script, const QString &file, ScriptPlayer &player)
{
    const QString failure = player.play(script);
    if (!failure.isEmpty())
        throw BadScript((sourceName(file) + QLatin1Char(':') + failure).toStdString());
}

RealTime::RealTime(kelo::VirtualRunLoop &clock, double end) : clock_(clock), end_(end)
{
    sinceLastTick_.start();
    ticks_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&ticks_, &QTimer::timeout, [this] {
        const double elapsed = static_cast<double>(sinceLastTick_.nsecsElapsed()) * 1e-9;
        sinceLastTick_.start();
        clock_.advance(std::clamp(end_ - clock_.currentTime(), 0.0, elapsed));
    });
    ticks_.start(tickInterval);
}

Unattended::Unattended(kelo::DXOpenGL &view, DelegateCallLog &log)
    : view_(view), ownDelegate_(view.delegate())
{
    if (ownDelegate_) delegate_ = *ownDelegate_;
    kelo::DXOpenGLDelegate onlyListed;
    log.logCallsOf(onlyListed);
    delegate_.printImagesLeft_front_right_forDate_elasticsLeft_front_right =
        onlyListed.printImagesLeft_front_right_forDate_elasticsLeft_front_right;
    delegate_.mayPlaceAgain = {};
    view_.setDelegate(&delegate_);
    previousAlerts_ = kelo::AlertPresenter::setPresenter([](const kelo::Alert &alert) {
        // tellUser ends the last line.
        tellUser(QString::fromStdString(kelo::AlertPresenter::linesOf(alert)).chopped(1));
    });
}

Unattended::~Unattended()
{
    kelo::AlertPresenter::setPresenter(previousAlerts_);
    if (view_.delegate() == &delegate_) view_.setDelegate(ownDelegate_);
}

} // namespace viewer
