#include "tests/viewer/script/RandomScriptCampaign.h"

#include "tests/viewer/script/RandomScriptGenerator.h"
#include "viewer/files/OutputFile.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <algorithm>

namespace viewer::test {
namespace {

/// So many lines in a row that cannot be played are a fault of the generator.
constexpr int mostFailedAttempts = 1000;

class Recorder
{
public:
    Recorder(const QString &folder, const RandomScriptOracle &oracle)
        : scene_(folder), oracle_(oracle)
    {}

    RandomScriptScene &scene() { return scene_; }
    bool isWell() const { return script_.complaint.isEmpty(); }

    /// Returns whether the line could be played.
    bool play(const QByteArray &line)
    {
        if (!scene_.play(line)) return false;
        script_.lines << line;
        script_.complaint = oracle_(scene_);
        script_.mostElastics = std::max(script_.mostElastics,
                                        static_cast<int>(scene_.document().elasticModels().size()));
        return true;
    }

    PlayedScript finished()
    {
        script_.state = scene_.state();
        if (isWell()) script_.complaint = complaintAboutStorage(scene_);
        script_.chosenActions = scene_.chosenActions();
        script_.alertCount = scene_.alertCount();
        return std::move(script_);
    }

private:
    RandomScriptScene scene_;
    const RandomScriptOracle &oracle_;
    PlayedScript script_;
};

} // namespace

PlayedScript playRandomScript(const QString &folder, std::uint64_t seed, int eventCount,
                              const RandomScriptOracle &oracle, const LineListener &listener)
{
    Recorder recorder(folder, oracle);
    RandomScriptGenerator generator(seed);
    for (int event = 0; event < eventCount && recorder.isWell(); ++event) {
        for (int attempt = 0;; ++attempt) {
            if (attempt == mostFailedAttempts)
                throw std::logic_error("The generator writes nothing that can be played.");
            const QByteArray line = generator.nextLine(recorder.scene());
            if (listener) listener(line);
            if (recorder.play(line)) break;
        }
    }
    return recorder.finished();
}

PlayedScript playLines(const QString &folder, const QByteArrayList &lines,
                       const RandomScriptOracle &oracle)
{
    Recorder recorder(folder, oracle);
    for (const QByteArray &line : lines) {
        if (!recorder.isWell()) break;
        recorder.play(line);
    }
    return recorder.finished();
}

QByteArrayList minimised(const QByteArrayList &lines,
                         const std::function<bool(const QByteArrayList &)> &fails)
{
    QByteArrayList kept = lines;
    if (!fails(kept)) return kept;
    qsizetype size = std::max<qsizetype>(1, kept.size() / 2);
    for (;;) {
        bool isShorter = false;
        for (qsizetype first = 0; first < kept.size();) {
            const QByteArrayList shorter = kept.mid(0, first) + kept.mid(first + size);
            if (fails(shorter)) {
                kept = shorter;
                isShorter = true;
            } else {
                first += size;
            }
        }
        if (size == 1 && !isShorter) return kept;
        size = std::max<qsizetype>(1, size / 2);
    }
}

QString kindOfComplaint(const QString &complaint)
{
    static const QRegularExpression numbers(QStringLiteral("[0-9]+l?"));
    return QString(complaint).replace(numbers, QStringLiteral("#"));
}

QByteArrayList scriptLines(const QByteArray &text)
{
    QByteArrayList lines;
    for (const QByteArray &line : text.split('\n')) {
        const QByteArray trimmed = line.trimmed();
        if (!trimmed.isEmpty() && !trimmed.startsWith('#')) lines << trimmed;
    }
    return lines;
}

QByteArray scriptText(const QByteArrayList &lines, const QString &comment)
{
    QByteArray text;
    for (const QString &line : comment.split(QLatin1Char('\n')))
        text += "# " + line.toUtf8() + '\n';
    return text + lines.join('\n') + '\n';
}

QString Campaign::play(std::uint64_t firstSeed, std::uint64_t count)
{
    for (std::uint64_t seed = firstSeed; seed < firstSeed + count; ++seed) {
        const PlayedScript played = playRandomScript(sceneFolder, seed, eventCount, oracle);
        playedEvents += static_cast<std::uint64_t>(played.lines.size());
        if (played.complaint.isEmpty()) continue;
        const QString kind = kindOfComplaint(played.complaint);
        const QByteArrayList lines =
            minimised(played.lines, [this, &kind](const QByteArrayList &candidate) {
                return kindOfComplaint(playLines(sceneFolder, candidate, oracle).complaint) == kind;
            });
        const QString complaint = playLines(sceneFolder, lines, oracle).complaint;
        const QString file =
            QDir(failureFolder).filePath(QStringLiteral("seed-%1.script").arg(seed));
        QDir().mkpath(failureFolder);
        const QString what = QStringLiteral("Seed %1: %2").arg(seed).arg(complaint);
        const QString failure = writeWholeFile(file, scriptText(lines, what));
        return what + QLatin1Char('\n') + (failure.isEmpty() ? file : failure);
    }
    return {};
}

} // namespace viewer::test
