#pragma once

#include "viewer/store/TreatmentRecord.h"

#include <QDate>

#include <optional>
#include <string>
#include <vector>

namespace viewer {

/// What happened to the elastics.
enum class ElasticsEvent {
    Placed,
    Removed,
    Recolored,  ///< one has another size
    Named,      ///< one has a named configuration now
    Refactored, ///< some were shortened or removed around a key that was hidden
};

struct ElasticsReport
{
    ElasticsEvent event = ElasticsEvent::Placed;
    /// The members of the elastic that it is about, joined by commas; of a refactoring, the key.
    std::string key;
    /// All that the reporter shows now, in placing order.
    std::vector<kelo::SavedElastic> elastics;
    /// All that it showed before. The difference is what is stored (see mergedElastics): another
    /// program may have placed elastics meanwhile that the reporter knows nothing of.
    std::vector<kelo::SavedElastic> before;
    bool operator==(const ElasticsReport &) const = default;
};

/// The configuration of an elastic has another name. Nothing of the note changes.
struct RenameReport
{
    std::string key; ///< the elastic's members, joined by commas
    std::string oldName;
    std::string newName;
    bool operator==(const RenameReport &) const = default;
};

/// The approval of a note, or its withdrawal.
struct ApprovalReport
{
    std::optional<QDate> approvedDate;
    bool operator==(const ApprovalReport &) const = default;
};

/// Changes to the note of one date that belong together: they are stored all or not at all.
struct NoteReport
{
    QDate date;
    /// UTC milliseconds since 1970; absent: the time of storing.
    std::optional<qint64> changedAt;
    kelo::NameKeyDictionary<bool> toothVisibilities;
    kelo::NameKeyDictionary<bool> bracketVisibilities;
    kelo::NameKeyDictionary<bool> buttonVisibilities;
    /// No value: the colour was taken away.
    kelo::NameKeyDictionary<std::optional<long>> bracketColorTypeIDs;
    std::optional<ElasticsReport> elastics;
    std::optional<RenameReport> rename;
    std::optional<ApprovalReport> approval;
    bool operator==(const NoteReport &) const = default;
};

/// The note with the report's changes. Its date stays, and so do changes to elastics that others
/// made.
NoteRecord noteAfterReport(NoteRecord note, const NoteReport &report);

/// A note of a later date that starts as `earlier` stands: all but the approval.
NoteRecord noteStartedFrom(NoteRecord earlier, const QDate &date);

} // namespace viewer
