#pragma once

#include "keloModel/BracketColorType.h"
#include "viewer/store/TreatmentSchemaVersions.h"
#include "viewer/store/TreatmentStoreConnection.h"

namespace viewer {

/// Marks the database as one of treatments ("kelo", as SQLite's application_id). The version of its
/// tables is the user_version.
inline constexpr int treatmentApplicationID = 0x6b656c6f;

/// What is stored for a bracket without colour. Databases hold this number: should the library's
/// ever be another one, it is translated here.
inline constexpr long storedNoColorTypeID = 4999;
static_assert(storedNoColorTypeID == kelo::noBracketColorTypeID);

/// Throws StoreError for a database of a newer version or of another program, and for one with
/// tables, views or triggers that this program did not make: none of them is ever run. Changes
/// nothing. A database without tables passes.
void assertSchemaIsReadable(TreatmentStoreConnection &connection);

/// Makes the tables in an empty database, or brings older ones to the present version, each step in
/// one transaction.
void bringSchemaUpToDate(TreatmentStoreConnection &connection);

/// Whether the tables are those of the present version. Changes nothing.
bool schemaIsUpToDate(TreatmentStoreConnection &connection);

} // namespace viewer
