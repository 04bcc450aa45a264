#pragma once

#include "viewer/TreatmentStoreConnection.h"

namespace viewer {

/// The version of the tables that this program reads and writes, kept in the database's
/// user_version. Version 1 had no lingual buttons, configurations, birth dates and log of changes;
/// version 2 had no named elastics, version 3 no catalogues of treatments.
inline constexpr int currentSchemaVersion = 4;

/// Marks the database as one of treatments ("kelo", as SQLite's application_id).
inline constexpr int treatmentApplicationID = 0x6b656c6f;

/// What stands in place of a bracket's colour type when it has none.
inline constexpr long storedNoColorTypeID = 4999;

/// Throws StoreError for a database of a newer version or of another program; changes nothing. A
/// database without tables passes.
void assertSchemaIsReadable(TreatmentStoreConnection &connection);

/// Makes the tables in an empty database, or brings older ones to the present version, each step in
/// one transaction.
void bringSchemaUpToDate(TreatmentStoreConnection &connection);

} // namespace viewer
