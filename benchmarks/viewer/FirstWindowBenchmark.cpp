// From the start of the process to the first window with its first frame, by phases, beside a bare
// window. Needs a display. Rows are repeated, and the spread is next to the median.

#include <benchmark/benchmark.h>

#include <QProcess>
#include <QString>
#include <QStringList>

#include <algorithm>
#include <ctime>
#include <map>
#include <string>

namespace {

long long nowInNanoseconds()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec * 1'000'000'000LL + now.tv_nsec;
}

/// The phases' ends in milliseconds after the start, by name; empty when the program failed.
std::map<std::string, double> phasesOf(const char *kind)
{
    QProcess program;
    program.start(QStringLiteral(KELO_FIRST_WINDOW),
                  {QString::number(nowInNanoseconds()), QString::fromLatin1(kind)});
    std::map<std::string, double> phases;
    if (!program.waitForFinished() || program.exitCode() != 0) return phases;
    const QString output = QString::fromUtf8(program.readAllStandardOutput());
    for (const QString &line : output.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        const QStringList words = line.split(QLatin1Char(' '));
        phases[words.value(0).toStdString()] = words.value(1).toDouble();
    }
    return phases;
}

void firstWindow(benchmark::State &state, const char *kind, const char *last)
{
    for (auto _ : state) {
        const auto phases = phasesOf(kind);
        const auto end = phases.find(last);
        if (end == phases.end()) {
            state.SkipWithError("the program did not come to its end; is there a display?");
            return;
        }
        state.SetIterationTime(end->second / 1000.0);
        for (const auto &[phase, milliseconds] : phases)
            state.counters[phase] = milliseconds;
    }
}

void rows(benchmark::internal::Benchmark *row)
{
    row->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(1)->Repetitions(15);
    row->ReportAggregatesOnly();
}

BENCHMARK_CAPTURE(firstWindow, bare, "bare", "window")->Apply(rows);
BENCHMARK_CAPTURE(firstWindow, viewer, "viewer", "frame")->Apply(rows);

} // namespace

BENCHMARK_MAIN();
