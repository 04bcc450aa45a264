#pragma once

#include "viewer/store/TreatmentStoreResult.h"

#include <QString>

namespace viewer {

/// What a user can do about a database that cannot be used, in a sentence or two.
QString adviceOn(StoreProblem problem);

/// Whether it may work a moment later, without anything being changed about the database itself.
bool isWorthAnotherTry(StoreProblem problem);

} // namespace viewer
