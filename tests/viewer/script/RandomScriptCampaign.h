#pragma once

#include "tests/viewer/script/RandomScriptScene.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QString>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace viewer::test {

/// A script that was played, to its end or to the first event after which something was wrong. At
/// the end the stored treatment must be what the document holds, whatever the oracle.
struct PlayedScript
{
    QByteArrayList lines; ///< those that could be played
    QString complaint;    ///< empty: all was well
    QByteArray state;     ///< at the end, as the viewer writes it
    std::vector<std::string> chosenActions;
    int alertCount = 0;
    int mostElastics = 0; ///< placed at one time
};

/// Called with each line before it is played, for whoever keeps a trace.
using LineListener = std::function<void(const QByteArray &line)>;

/// Writes a script of `eventCount` lines from the seed while it plays them on the scene in
/// `folder`.
PlayedScript playRandomScript(const QString &folder, std::uint64_t seed, int eventCount,
                              const RandomScriptOracle &oracle, const LineListener &listener = {});

/// Plays lines that were written before; those that cannot be played (any more) are left out.
PlayedScript playLines(const QString &folder, const QByteArrayList &lines,
                       const RandomScriptOracle &oracle);

/// The shortest script that it finds by leaving lines out: `fails` still holds for it, and for no
/// script that is one line shorter. First ever smaller parts are left out, from halves to single
/// lines, then single lines until none can go. Of lines that do not fail nothing is left out.
QByteArrayList minimised(const QByteArrayList &lines,
                         const std::function<bool(const QByteArrayList &)> &fails);

/// A complaint without its numbers and keys: what stays the same while a script grows shorter.
QString kindOfComplaint(const QString &complaint);

/// The lines of a script file without comments and blank lines.
QByteArrayList scriptLines(const QByteArray &text);

/// A script file that says above its lines how it came about.
QByteArray scriptText(const QByteArrayList &lines, const QString &comment);

/// Plays the scripts of `count` seeds from the first. The first one that fails is minimised, to one
/// that fails with the same kind of complaint, and written to `seed-N.script` in the folder for
/// failures. Returns the minimised script's complaint with the file's name, or an empty string.
struct Campaign
{
    QString sceneFolder;
    QString failureFolder;
    int eventCount = 200;
    RandomScriptOracle oracle = complaintAbout;
    std::uint64_t playedEvents = 0;

    QString play(std::uint64_t firstSeed, std::uint64_t count);
};

} // namespace viewer::test
