#pragma once

#include "keloModel/NameKey.h"
#include "keloModel/SavedElastic.h"

#include <QDate>
#include <QString>

#include <optional>
#include <vector>

namespace viewer {

/// What the host keeps of one treatment: plain values, as they are in the database and in
/// treatment files. Equality is value for value, so that a round trip can be checked.

/// The state of a treatment at one date.
struct NoteRecord
{
    QDate date;
    std::optional<QDate> approvedDate;
    /// A tooth that is left out is visible; a bracket or button that is left out is not placed.
    kelo::NameKeyDictionary<bool> toothVisibilities;
    kelo::NameKeyDictionary<bool> bracketVisibilities;
    kelo::NameKeyDictionary<bool> buttonVisibilities;
    /// No value: the bracket has no colour.
    kelo::NameKeyDictionary<std::optional<long>> bracketColorTypeIDs;
    std::vector<kelo::SavedElastic> elastics; ///< in placing order
    bool operator==(const NoteRecord &) const = default;
};

struct PatientRecord
{
    QString name;
    QString identifier;
    std::optional<QDate> birthDate;
    bool operator==(const PatientRecord &) const = default;
};

/// A whole treatment: the patient and the notes, oldest first, one a date.
struct TreatmentRecord
{
    PatientRecord patient;
    std::optional<QDate> currentDate;  ///< absent: the day of opening
    std::optional<QDate> approvedDate; ///< of the treatment as a whole
    std::vector<NoteRecord> notes;
    bool operator==(const TreatmentRecord &) const = default;
};

} // namespace viewer
