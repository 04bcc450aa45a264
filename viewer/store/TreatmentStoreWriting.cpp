#include "viewer/store/ElasticAttributes.h"
#include "viewer/store/ElasticMerge.h"
#include "viewer/store/TreatmentSchema.h"
#include "viewer/store/TreatmentStoreTables.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace viewer::tables {
namespace {

long storedTypeID(const std::optional<long> &typeID)
{
    return typeID.value_or(storedNoColorTypeID);
}

void insertVisibilities(TreatmentStoreConnection &connection, qint64 noteID, const char *kind,
                        const kelo::NameKeyDictionary<bool> &visibilities)
{
    for (const auto &[key, visible] : visibilities)
        StoreStatement(connection,
                       "INSERT INTO visibilities (note_id, kind, name_key, visible)"
                       " VALUES (?, ?, ?, ?)",
                       {noteID, QString::fromLatin1(kind), valueOf(key), visible ? 1 : 0});
}

/// "INSERT INTO elastics (note_id, position, ...) VALUES (?, ?, ...)"
const std::string &insertionOfElastic()
{
    static const std::string sql = [] {
        std::string places = "?, ?";
        for (std::size_t i = 0; i < elasticAttributes().size(); ++i)
            places += ", ?";
        return "INSERT INTO elastics (note_id, position, " + elasticColumns() + ") VALUES (" +
               places + ")";
    }();
    return sql;
}

/// Those from a position on.
void insertElastics(TreatmentStoreConnection &connection, qint64 noteID,
                    const std::vector<kelo::SavedElastic> &elastics, std::size_t first = 0)
{
    for (std::size_t index = first; index < elastics.size(); ++index) {
        const kelo::SavedElastic &elastic = elastics[index];
        const auto position = static_cast<qint64>(index);
        QVariantList values{noteID, position};
        for (const ElasticAttribute &attribute : elasticAttributes())
            values << valueOf(elastic.*attribute.value);
        StoreStatement(connection, insertionOfElastic(), values);
        qint64 memberPosition = 0;
        for (const std::string &member : elastic.bracketSequence)
            StoreStatement(connection,
                           "INSERT INTO elastic_members"
                           " (note_id, elastic_position, position, name_key) VALUES (?, ?, ?, ?)",
                           {noteID, position, memberPosition++, valueOf(member)});
    }
}

const char *nameOf(ElasticsEvent event)
{
    switch (event) {
    case ElasticsEvent::Placed:
        return "elastic placed";
    case ElasticsEvent::Removed:
        return "elastic removed";
    case ElasticsEvent::Recolored:
        return "elastic color";
    case ElasticsEvent::Named:
        return "elastic named";
    case ElasticsEvent::Refactored:
        break;
    }
    return "elastics refactored";
}

/// Writes one report to one note, and what it changes to the log.
class ReportWriter
{
public:
    ReportWriter(TreatmentStoreConnection &connection, qint64 treatmentID, qint64 noteID,
                 const NoteRecord &stored, qint64 changedAt)
        : connection_(connection),
          treatmentID_(treatmentID),
          noteID_(noteID),
          stored_(stored),
          changedAt_(changedAt)
    {}

    void write(const NoteReport &report)
    {
        writeVisibilities("tooth", stored_.toothVisibilities, report.toothVisibilities);
        writeVisibilities("bracket", stored_.bracketVisibilities, report.bracketVisibilities);
        writeVisibilities("button", stored_.buttonVisibilities, report.buttonVisibilities);
        writeColors(report.bracketColorTypeIDs);
        if (report.elastics) writeElastics(*report.elastics);
        if (report.rename)
            log(QStringLiteral("elastic renamed"), report.rename->key,
                QString::fromStdString(report.rename->oldName),
                QString::fromStdString(report.rename->newName));
        if (report.approval) writeApproval(*report.approval);
    }

private:
    void writeVisibilities(const char *kind, const kelo::NameKeyDictionary<bool> &stored,
                           const kelo::NameKeyDictionary<bool> &changes)
    {
        const auto text = [](bool visible) {
            return visible ? QStringLiteral("visible") : QStringLiteral("hidden");
        };
        for (const auto &[key, visible] : changes) {
            const auto before = stored.find(key);
            // Reports repeat what the note has already: only differences are written and logged.
            if (before != stored.end() && before->second == visible) continue;
            StoreStatement(connection_,
                           "INSERT INTO visibilities (note_id, kind, name_key, visible)"
                           " VALUES (?, ?, ?, ?) ON CONFLICT (note_id, kind, name_key)"
                           " DO UPDATE SET visible = excluded.visible",
                           {noteID_, QString::fromLatin1(kind), valueOf(key), visible ? 1 : 0});
            log(QString::fromLatin1(kind) + QStringLiteral(" visibility"), key,
                // A note without the key says nothing of it, which is neither value.
                before == stored.end() ? std::optional<QString>() : text(before->second),
                text(visible));
        }
    }

    void writeColors(const kelo::NameKeyDictionary<std::optional<long>> &changes)
    {
        for (const auto &[key, typeID] : changes) {
            const auto before = stored_.bracketColorTypeIDs.find(key);
            const bool known = before != stored_.bracketColorTypeIDs.end();
            const long value = storedTypeID(typeID);
            if (known && storedTypeID(before->second) == value) continue;
            StoreStatement(connection_,
                           "INSERT INTO bracket_colors (note_id, name_key, color_type_id)"
                           " VALUES (?, ?, ?) ON CONFLICT (note_id, name_key)"
                           " DO UPDATE SET color_type_id = excluded.color_type_id",
                           {noteID_, valueOf(key), static_cast<qlonglong>(value)});
            log(QStringLiteral("bracket color"), key,
                known ? QString::number(storedTypeID(before->second)) : std::optional<QString>(),
                QString::number(value));
        }
    }

    void writeElastics(const ElasticsReport &report)
    {
        const auto merged = mergedElastics(report.before, report.elastics, stored_.elastics);
        if (merged == stored_.elastics) return;
        // Rows are numbered by position, so all from the first difference on are written again.
        const auto same = std::mismatch(merged.begin(), merged.end(), stored_.elastics.begin(),
                                        stored_.elastics.end());
        const auto first = static_cast<std::size_t>(same.first - merged.begin());
        // The members go with their elastics.
        StoreStatement(connection_, "DELETE FROM elastics WHERE note_id = ? AND position >= ?",
                       {noteID_, static_cast<qlonglong>(first)});
        insertElastics(connection_, noteID_, merged, first);
        log(QString::fromLatin1(nameOf(report.event)), report.key, textOf(stored_.elastics),
            textOf(merged));
    }

    void writeApproval(const ApprovalReport &report)
    {
        assertDate(connection_, report.approvedDate);
        if (report.approvedDate == stored_.approvedDate) return;
        StoreStatement(connection_, "UPDATE notes SET approved_date = ? WHERE id = ?",
                       {valueOf(report.approvedDate), noteID_});
        const auto text = [](const std::optional<QDate> &date) {
            return date ? textOf(*date) : std::optional<QString>();
        };
        log(QStringLiteral("note approval"), {}, text(stored_.approvedDate),
            text(report.approvedDate));
    }

    void log(const QString &what, const std::string &key, std::optional<QString> oldValue,
             std::optional<QString> newValue)
    {
        insertChange(
            connection_, treatmentID_,
            {changedAt_, stored_.date, what, key, std::move(oldValue), std::move(newValue)});
    }

    TreatmentStoreConnection &connection_;
    qint64 treatmentID_;
    qint64 noteID_;
    const NoteRecord &stored_;
    qint64 changedAt_;
};

} // namespace

qint64 insertPatient(TreatmentStoreConnection &connection, const PatientRecord &patient)
{
    assertDate(connection, patient.birthDate);
    StoreStatement(
        connection, "INSERT INTO patients (name, identifier, birth_date) VALUES (?, ?, ?)",
        {valueOf(patient.name), valueOf(patient.identifier), valueOf(patient.birthDate)});
    return connection.lastInsertedID();
}

qint64 insertTreatment(TreatmentStoreConnection &connection, qint64 patientID,
                       const std::optional<QDate> &currentDate,
                       const std::optional<QDate> &approvedDate)
{
    assertDate(connection, currentDate);
    assertDate(connection, approvedDate);
    if (!StoreStatement(connection, "SELECT 1 FROM patients WHERE id = ?", {patientID}).next())
        throw connection.error(StoreProblem::NoSuchRecord,
                               QStringLiteral("there is no patient %1").arg(patientID));
    StoreStatement(connection,
                   "INSERT INTO treatments (patient_id, shown_date, approved_date)"
                   " VALUES (?, ?, ?)",
                   {patientID, valueOf(currentDate), valueOf(approvedDate)});
    return connection.lastInsertedID();
}

qint64 insertNote(TreatmentStoreConnection &connection, qint64 treatmentID, const NoteRecord &note)
{
    assertDate(connection, note.approvedDate);
    if (noteID(connection, treatmentID, note.date))
        throw connection.error(
            StoreProblem::BadRecord,
            QStringLiteral("the treatment has two notes of %1").arg(textOf(note.date)));
    StoreStatement(connection,
                   "INSERT INTO notes (treatment_id, date, approved_date) VALUES (?, ?, ?)",
                   {treatmentID, textOf(note.date), valueOf(note.approvedDate)});
    const qint64 identifier = connection.lastInsertedID();
    insertVisibilities(connection, identifier, "tooth", note.toothVisibilities);
    insertVisibilities(connection, identifier, "bracket", note.bracketVisibilities);
    insertVisibilities(connection, identifier, "button", note.buttonVisibilities);
    for (const auto &[key, typeID] : note.bracketColorTypeIDs)
        StoreStatement(connection,
                       "INSERT INTO bracket_colors (note_id, name_key, color_type_id)"
                       " VALUES (?, ?, ?)",
                       {identifier, valueOf(key), static_cast<qlonglong>(storedTypeID(typeID))});
    insertElastics(connection, identifier, note.elastics);
    return identifier;
}

void insertChange(TreatmentStoreConnection &connection, qint64 treatmentID,
                  const StoredChange &change)
{
    const auto value = [](const std::optional<QString> &text) {
        return text ? valueOf(*text) : QVariant();
    };
    StoreStatement(connection,
                   "INSERT INTO changes (treatment_id, note_date, at_milliseconds, what, name_key,"
                   " old_value, new_value) VALUES (?, ?, ?, ?, ?, ?, ?)",
                   {treatmentID, valueOf(change.noteDate), change.changedAt, change.what,
                    valueOf(change.key), value(change.oldValue), value(change.newValue)});
}

qint64 startNote(TreatmentStoreConnection &connection, qint64 treatmentID, const QDate &date,
                 qint64 changedAt)
{
    assertTreatment(connection, treatmentID);
    NoteRecord started;
    started.date = date;
    StoredChange change{changedAt, date, QStringLiteral("note started"), {}, {}, textOf(date)};
    if (const auto earlier = lastDateBefore(connection, treatmentID, date)) {
        started = noteStartedFrom(givenNote(connection, treatmentID, *earlier), date);
        // The note that it was copied from.
        change.key = textOf(*earlier).toStdString();
    }
    const qint64 identifier = insertNote(connection, treatmentID, started);
    insertChange(connection, treatmentID, change);
    return identifier;
}

void applyReport(TreatmentStoreConnection &connection, qint64 treatmentID, const NoteReport &report,
                 qint64 changedAt)
{
    assertTreatment(connection, treatmentID);
    const auto known = noteID(connection, treatmentID, report.date);
    const qint64 identifier =
        known ? *known : startNote(connection, treatmentID, report.date, changedAt);
    // Read after a note was started: it begins with the values of the one before.
    const NoteRecord stored = givenNote(connection, treatmentID, report.date);
    ReportWriter(connection, treatmentID, identifier, stored, changedAt).write(report);
}

void saveCatalogue(TreatmentStoreConnection &connection, qint64 treatmentID,
                   const QByteArray &catalogue)
{
    StoreStatement(connection,
                   "INSERT INTO catalogues (treatment_id, catalogue) VALUES (?, ?)"
                   " ON CONFLICT (treatment_id) DO UPDATE SET catalogue = excluded.catalogue",
                   {treatmentID, QString::fromUtf8(catalogue)});
}

void saveNamedElastic(TreatmentStoreConnection &connection,
                      const kelo::ElasticsConfigType &configuration)
{
    StoreStatement(connection,
                   "INSERT INTO named_elastics"
                   " (type_id, label, display_order, size_type_id, bracket_sequence)"
                   " VALUES (?, ?, ?, ?, ?) ON CONFLICT (type_id) DO UPDATE SET"
                   " label = excluded.label, display_order = excluded.display_order,"
                   " size_type_id = excluded.size_type_id,"
                   " bracket_sequence = excluded.bracket_sequence",
                   {static_cast<qlonglong>(configuration.typeID), valueOf(configuration.typeLabel),
                    static_cast<qlonglong>(configuration.displayOrder),
                    static_cast<qlonglong>(configuration.elasticsSizeTypeID),
                    valueOf(configuration.bracketSequence)});
}

void removeNamedElastic(TreatmentStoreConnection &connection, long typeID)
{
    // A name that a note has must stay: the note refers to it.
    StoreStatement(connection,
                   "DELETE FROM named_elastics WHERE type_id = ? AND type_id NOT IN"
                   " (SELECT config_type_id FROM elastics WHERE config_type_id IS NOT NULL)",
                   {static_cast<qlonglong>(typeID)});
}

void setApprovedDate(TreatmentStoreConnection &connection, qint64 treatmentID,
                     const std::optional<QDate> &approvedDate, qint64 changedAt)
{
    assertTreatment(connection, treatmentID);
    assertDate(connection, approvedDate);
    std::optional<QString> before;
    {
        StoreStatement row(connection, "SELECT approved_date FROM treatments WHERE id = ?",
                           {treatmentID});
        if (row.next() && !row.value(0).isNull()) before = row.value(0).toString();
    }
    const auto after = approvedDate ? textOf(*approvedDate) : std::optional<QString>();
    if (before == after) return;
    StoreStatement(connection, "UPDATE treatments SET approved_date = ? WHERE id = ?",
                   {valueOf(approvedDate), treatmentID});
    insertChange(
        connection, treatmentID,
        {changedAt, std::nullopt, QStringLiteral("treatment approval"), {}, before, after});
}

} // namespace viewer::tables
