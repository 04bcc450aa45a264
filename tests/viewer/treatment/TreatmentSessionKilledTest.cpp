#include "tests/viewer/support/TreatmentStoreFixture.h"
#include "viewer/treatment/TreatmentSession.h"

#include <QProcess>

#include <algorithm>
#include <map>
#include <random>
#include <sstream>

namespace viewer {
namespace {

using test::day;
using test::OtherConnection;

/// A change of the steady writer, and the time up to which it is known to have worked.
struct Step
{
    long number = 0;
    double time = 0.0;
    double now = 0.0;
};

class TreatmentSessionKilled : public test::TreatmentStoreFixture
{
protected:
    QStringList arguments(const char *mode, long number) const
    {
        return {QString::fromLatin1(mode), path, QString::number(treatmentID),
                QString::number(number)};
    }

    /// Kills a steady writer once it has made so many changes.
    std::vector<Step> stepsBeforeTheKill(long seed, qsizetype changeCount) const
    {
        QProcess writer;
        writer.start(QStringLiteral(KELO_SESSION_WRITER), arguments("steady", seed));
        QByteArray said;
        while (said.count('\n') < changeCount) {
            if (!writer.waitForReadyRead(30000)) {
                ADD_FAILURE() << writer.readAllStandardError().toStdString();
                break;
            }
            said += writer.readAllStandardOutput();
        }
        writer.kill();
        EXPECT_TRUE(writer.waitForFinished());
        EXPECT_EQ(writer.exitStatus(), QProcess::CrashExit) << "it ended before it was killed";
        std::vector<Step> steps;
        said += writer.readAllStandardOutput();
        std::istringstream lines(said.toStdString());
        for (std::string line; std::getline(lines, line) && !lines.eof();) {
            Step step;
            std::istringstream(line) >> step.number >> step.time >> step.now;
            steps.push_back(step);
        }
        return steps;
    }

    /// How many of the changes that are older than the promise were not stored.
    std::size_t countLost(const std::vector<Step> &steps, const NoteRecord &note) const
    {
        std::size_t lost = 0;
        for (const Step &step : steps) {
            bool isStored = true;
            if (step.number % 4 == 0) // an elastic, stored at once
                isStored = std::any_of(
                    note.elastics.begin(), note.elastics.end(),
                    [&](const auto &elastic) { return elastic.elasticsSizeTypeID == step.number; });
            else if (step.time + 3.0 < steps.back().now) {
                const auto color =
                    note.bracketColorTypeIDs.find(std::to_string(2 + step.number % 14));
                isStored = color != note.bracketColorTypeIDs.end() && color->second >= step.number;
            }
            if (!isStored) ++lost;
        }
        return lost;
    }
};

TEST_F(TreatmentSessionKilled, twoHundredKillsInSteadyWorkLoseNothingOlderThanThreeSeconds)
{
    constexpr int killCount = 200;
    startTreatment();
    std::mt19937 random(20261121);
    std::size_t changeCount = 0;
    std::size_t youngCount = 0;
    for (int kill = 0; kill < killCount; ++kill) {
        treatmentID = store->addTreatment({}).value();
        const auto steps = stepsBeforeTheKill(kill, 1 + random() % 40);
        ASSERT_FALSE(steps.empty());
        const auto note = store->note(treatmentID, day(20));
        ASSERT_TRUE(note) << note.sentence().toStdString();
        EXPECT_EQ(countLost(steps, note.value().value_or(NoteRecord())), 0u) << "kill " << kill;
        changeCount += steps.size();
        for (const Step &step : steps) {
            if (step.number % 4 != 0 && step.time + 3.0 >= steps.back().now) ++youngCount;
        }
    }
    EXPECT_GT(changeCount, 10u * killCount) << "the kills came too early to tell anything";
    EXPECT_EQ(OtherConnection(path).rows(QStringLiteral("PRAGMA quick_check")),
              std::vector<std::string>{"ok"});
    std::printf("%zu changes before %d kills, %zu of them younger than three seconds\n",
                changeCount, killCount, youngCount);
}

class TwoWriters : public TreatmentSessionKilled
{
protected:
    /// What a note must hold after both: the elastics, as often as each is there.
    using Elastics = std::map<std::string, int>;

    static kelo::SavedElastic initialElastic(long number)
    {
        return {std::nullopt, number, {std::to_string(1 + number), std::to_string(17 + number)}};
    }

    static std::string textOf(const kelo::SavedElastic &elastic)
    {
        std::string text = std::to_string(elastic.elasticsSizeTypeID.value_or(-1));
        for (const std::string &member : elastic.bracketSequence)
            text += ' ' + member;
        return text;
    }

    void addTreatment()
    {
        TreatmentRecord record;
        record.notes.resize(1);
        record.notes[0].date = day(20);
        for (long number = 1; number <= 6; ++number)
            record.notes[0].elastics.push_back(initialElastic(number));
        treatmentID = store->addTreatment(record).value();
    }

    /// Runs both at a time and returns what they say they left.
    Elastics elasticsLeftByBoth() const
    {
        QProcess writers[2];
        for (int i = 0; i < 2; ++i)
            writers[i].start(QStringLiteral(KELO_SESSION_WRITER), arguments("together", i + 1));
        // In rounds, so that neither is done before the other begins.
        for (int round = 0; round < 8; ++round) {
            for (QProcess &writer : writers) {
                EXPECT_TRUE(writer.canReadLine() || writer.waitForReadyRead(30000));
                EXPECT_EQ(writer.readLine(), QByteArray("ready\n"));
            }
            for (QProcess &writer : writers) {
                writer.write("go\n");
                EXPECT_TRUE(writer.waitForBytesWritten());
            }
        }
        Elastics left;
        for (QProcess &writer : writers) {
            EXPECT_TRUE(writer.waitForFinished(60000));
            EXPECT_EQ(writer.exitCode(), 0) << writer.readAllStandardError().toStdString();
            for (const QByteArray &line : writer.readAllStandardOutput().trimmed().split('\n'))
                ++left[line.toStdString()];
        }
        return left;
    }

    /// How often the one wrote after the other; the writers' clocks show their numbers.
    std::size_t countTurns() const
    {
        std::size_t turns = 0;
        const auto changes = store->changes(treatmentID).value();
        for (std::size_t i = 1; i < changes.size(); ++i) {
            if (changes[i].changedAt != changes[i - 1].changedAt) ++turns;
        }
        return turns;
    }
};

TEST_F(TwoWriters, fiftyRunsOfTwoProgramsOnOneNoteLoseNothing)
{
    constexpr int runCount = 50;
    startTreatment();
    std::size_t turns = 0;
    std::size_t elasticCount = 0;
    for (int run = 0; run < runCount; ++run) {
        addTreatment();
        Elastics expected = elasticsLeftByBoth();
        // The other one's changes of the six, and the two that nobody touched.
        ++expected[textOf(initialElastic(5))];
        ++expected[textOf(initialElastic(6))];
        const NoteRecord note = noteOf(day(20));
        Elastics stored;
        for (const kelo::SavedElastic &elastic : note.elastics)
            ++stored[textOf(elastic)];
        EXPECT_EQ(stored, expected) << "run " << run;
        EXPECT_EQ(note.bracketColorTypeIDs.size(), 28u) << "run " << run;
        for (long step = 26; step < 40; ++step) {
            for (const long firstKey : {2L, 18L})
                EXPECT_EQ(note.bracketColorTypeIDs.at(std::to_string(firstKey + step % 14)), step);
        }
        turns += countTurns();
        elasticCount += note.elastics.size();
    }
    EXPECT_GT(turns, 3u * runCount) << "they did not work at the same time";
    std::printf("%zu elastics of %d runs, %zu turns between the two\n", elasticCount, runCount,
                turns);
}

} // namespace
} // namespace viewer
