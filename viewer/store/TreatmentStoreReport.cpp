#include "viewer/store/TreatmentStoreReport.h"

#include "viewer/store/ElasticMerge.h"

namespace viewer {
namespace {

template<class Value>
void overlay(kelo::NameKeyDictionary<Value> &values, const kelo::NameKeyDictionary<Value> &changes)
{
    for (const auto &[key, value] : changes)
        values.insert_or_assign(key, value);
}

} // namespace

NoteRecord noteAfterReport(NoteRecord note, const NoteReport &report)
{
    overlay(note.toothVisibilities, report.toothVisibilities);
    overlay(note.bracketVisibilities, report.bracketVisibilities);
    overlay(note.buttonVisibilities, report.buttonVisibilities);
    overlay(note.bracketColorTypeIDs, report.bracketColorTypeIDs);
    if (report.elastics)
        note.elastics =
            mergedElastics(report.elastics->before, report.elastics->elastics, note.elastics);
    if (report.approval) note.approvedDate = report.approval->approvedDate;
    return note;
}

NoteRecord noteStartedFrom(NoteRecord earlier, const QDate &date)
{
    earlier.date = date;
    earlier.approvedDate.reset();
    return earlier;
}

} // namespace viewer
