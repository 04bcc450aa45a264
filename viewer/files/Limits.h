#pragma once

#include <QtGlobal>

namespace viewer {

// How much of what comes from elsewhere is taken: whatever lies beyond is refused with a sentence.
// docs/limits.md lists every limit with its message. Those of catalogues are in
// keloModel/Catalogue.h, that of problems in keloModel/JSONProblems.h.

inline constexpr qint64 mebibyte = 1024 * 1024;

/// In bytes. Thirty years of a visit a week, every tooth written out, take 8 MiB.
inline constexpr qint64 largestTreatmentFile = 64 * mebibyte;
/// In bytes. The longest scripts, those of a thousand random lines, take 40 KiB.
inline constexpr qint64 largestScript = 4 * mebibyte;
/// Of a treatment: a note a day over 27 years.
inline constexpr qsizetype mostNotes = 10'000;
/// Of a note; every tooth of one jaw could be tied to every tooth of the other.
inline constexpr qsizetype mostElastics = 1'000;
/// Of an elastic; there are 56 brackets and lingual buttons, and a band may pass one twice.
inline constexpr qsizetype mostMembers = 112;
/// In characters: the name of a patient, the number.
inline constexpr qsizetype longestText = 1'000;
/// In pixels: larger views than this exceed what renderers draw at once.
inline constexpr int largestSide = 8192;
/// Of a script's `advance` and `wait`: an hour, after which nothing of a view is still moving.
inline constexpr double mostSeconds = 3600.0;

} // namespace viewer
