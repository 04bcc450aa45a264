// random_scripts: many random scripts, one script again, and what they are played on.

#include "tests/viewer/script/RandomScriptCampaign.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <exception>

namespace {

using namespace viewer::test;

const char usage[] =
    "usage: random_scripts campaign FIRST COUNT [EVENTS]\n"
    "           plays the scripts of COUNT seeds from FIRST, EVENTS (200) lines each; the first\n"
    "           one that fails is minimised and written to random-scripts/seed-N.script\n"
    "       random_scripts write SEED [EVENTS]\n"
    "           plays one script and prints each line before it is played\n"
    "       random_scripts state SEED [EVENTS]\n"
    "           plays one script and prints the state at its end\n"
    "       random_scripts play FILE\n"
    "           plays a script, leaving out what cannot be played, and prints the state\n"
    "       random_scripts scene FOLDER\n"
    "           writes the meshes and the treatment file that the scripts are played on\n";

constexpr int usualEventCount = 200;
/// Seeds between two lines that tell how far the campaign is.
constexpr std::uint64_t seedsAtOnce = 50;

enum Status { Done = 0, WrongUse = 1, Failed = 2 };

void tell(const QString &text)
{
    std::fprintf(stderr, "%s\n", text.toUtf8().constData());
}

void print(const QByteArray &text)
{
    std::fwrite(text.constData(), 1, static_cast<std::size_t>(text.size()), stdout);
    std::fflush(stdout);
}

/// Tells what is wrong, if anything.
Status statusOf(const QString &complaint)
{
    if (complaint.isEmpty()) return Done;
    tell(complaint);
    return Failed;
}

Status playCampaign(const QString &folder, std::uint64_t first, std::uint64_t count, int eventCount)
{
    Campaign campaign;
    campaign.sceneFolder = folder;
    campaign.failureFolder = QStringLiteral("random-scripts");
    campaign.eventCount = eventCount;
    QElapsedTimer time;
    time.start();
    for (std::uint64_t done = 0; done < count; done += seedsAtOnce) {
        const QString complaint = campaign.play(first + done, std::min(seedsAtOnce, count - done));
        if (!complaint.isEmpty()) return statusOf(complaint);
        const double seconds = static_cast<double>(time.elapsed()) / 1000.0;
        tell(QStringLiteral("%1 scripts, %2 events, %3 s, %4 events per second")
                 .arg(std::min(done + seedsAtOnce, count))
                 .arg(campaign.playedEvents)
                 .arg(seconds, 0, 'f', 1)
                 .arg(static_cast<double>(campaign.playedEvents) / seconds, 0, 'f', 0));
    }
    return Done;
}

Status playFile(const QString &folder, const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return statusOf(QStringLiteral("%1: could not be read").arg(path));
    const PlayedScript played = playLines(folder, scriptLines(file.readAll()), complaintAbout);
    print(played.state);
    return statusOf(played.complaint);
}

Status run(const QStringList &arguments)
{
    const QString verb = arguments.value(1);
    const auto number = [&arguments](qsizetype index, int otherwise) {
        return index < arguments.size() ? arguments[index].toInt() : otherwise;
    };
    if (verb == QStringLiteral("scene") && arguments.size() == 3) {
        QDir().mkpath(arguments[2]);
        writeRandomScriptScene(arguments[2]);
        return Done;
    }
    const QTemporaryDir folder;
    writeRandomScriptScene(folder.path());
    if (verb == QStringLiteral("play") && arguments.size() == 3)
        return playFile(folder.path(), arguments[2]);
    if (verb == QStringLiteral("campaign") && arguments.size() >= 4)
        return playCampaign(folder.path(), arguments[2].toULongLong(), arguments[3].toULongLong(),
                            number(4, usualEventCount));
    const bool prints = verb == QStringLiteral("write");
    if ((prints || verb == QStringLiteral("state")) && arguments.size() >= 3) {
        LineListener listener;
        if (prints) listener = [](const QByteArray &line) { print(line + '\n'); };
        const PlayedScript played =
            playRandomScript(folder.path(), arguments[2].toULongLong(), number(3, usualEventCount),
                             complaintAbout, listener);
        if (!prints) print(played.state);
        return statusOf(played.complaint);
    }
    std::fputs(usage, stderr);
    return WrongUse;
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    try {
        return run(QApplication::arguments());
    } catch (const std::exception &failure) {
        tell(QString::fromUtf8(failure.what()));
        return Failed;
    }
}
