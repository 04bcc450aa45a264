#pragma once

#include "viewer/store/TreatmentStoreReport.h"

namespace viewer::test {

/// What a report of this number tells of elastics.
inline std::vector<kelo::SavedElastic> elasticsOfNumber(int number)
{
    const auto key = [number](int factor) { return std::to_string(2 + number * factor % 14); };
    std::vector<kelo::SavedElastic> elastics;
    for (int i = 0; i < number % 7; ++i)
        elastics.push_back({std::nullopt, number, {key(i), key(1) + "l"}});
    return elastics;
}

/// The reports of a long session, each known by its number (1 and up), so that a program that
/// writes them and one that checks them agree. Every hundredth is the first of a new date, and each
/// carries its number as its time.
inline NoteReport reportOfNumber(int number)
{
    const auto key = [number](int factor) { return std::to_string(2 + number * factor % 14); };
    NoteReport report;
    report.date = QDate(2026, 1, 1).addDays(number / 100);
    report.changedAt = number;
    switch (number % 5) {
    case 0:
        report.toothVisibilities[key(3)] = number % 2 == 0;
        break;
    case 1:
    case 2:
        for (int factor = 1; factor < 12; ++factor) {
            report.bracketVisibilities[key(factor)] = (number + factor) % 3 != 0;
            report.bracketColorTypeIDs[key(factor)] =
                number % 4 == 0 ? std::nullopt : std::optional<long>(number);
        }
        break;
    case 3:
        report.buttonVisibilities[key(5) + "l"] = number % 2 == 0;
        break;
    default:
        // The last report about elastics was five before.
        report.elastics = ElasticsReport{ElasticsEvent::Placed, key(1), elasticsOfNumber(number),
                                         number > 5 ? elasticsOfNumber(number - 5)
                                                    : std::vector<kelo::SavedElastic>()};
        break;
    }
    return report;
}

} // namespace viewer::test
