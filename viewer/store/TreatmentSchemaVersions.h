#pragma once

#include <QStringList>

namespace viewer {

/// The tables of every version of the database. What is written down of a version that databases
/// were made with stays as it is, to the letter: it is what their tables are compared with, and
/// what the next version's step starts from. A new version gets a list and a step of its own.
///
/// Version 1 had no lingual buttons, configurations, birth dates and log of changes; version 2 had
/// no named elastics, version 3 no catalogues of treatments.
inline constexpr int currentSchemaVersion = 4;

/// The definitions of all tables and indexes of a version (1 to currentSchemaVersion), in an order
/// in which they can be made.
QStringList schemaDefinitions(int version);

/// The statements that lead to a version (2 to currentSchemaVersion) from the one before.
QStringList schemaStep(int toVersion);

} // namespace viewer
