#include "viewer/store/ElasticAttributes.h"
#include "viewer/store/TreatmentSchema.h"
#include "viewer/store/TreatmentStoreTables.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace viewer::tables {
namespace {

StoreError damaged(const TreatmentStoreConnection &connection)
{
    return connection.error(
        StoreProblem::Damaged,
        QCoreApplication::translate("TreatmentStore", "the database is damaged"));
}

std::optional<QDate> dateIn(const TreatmentStoreConnection &connection, const QVariant &value)
{
    if (value.isNull()) return std::nullopt;
    // Only as this program writes it: a date in other words ("2026-11-20T10:00") would be read, and
    // then not be found by its own text. Bytes are never equal to a text.
    const QDate date = QDate::fromString(value.toString(), Qt::ISODate);
    if (!date.isValid() || value.typeId() != QMetaType::QString || textOf(date) != value.toString())
        throw damaged(connection);
    return date;
}

QDate givenDateIn(const TreatmentStoreConnection &connection, const QVariant &value)
{
    const auto date = dateIn(connection, value);
    if (!date) throw damaged(connection);
    return *date;
}

std::string keyIn(const QVariant &value)
{
    return value.toString().toStdString();
}

/// A column of numbers may hold texts all the same.
std::optional<long> numberIn(const TreatmentStoreConnection &connection, const QVariant &value)
{
    if (value.isNull()) return std::nullopt;
    if (value.typeId() != QMetaType::LongLong) throw damaged(connection);
    return static_cast<long>(value.toLongLong());
}

long givenNumberIn(const TreatmentStoreConnection &connection, const QVariant &value)
{
    const auto number = numberIn(connection, value);
    if (!number) throw damaged(connection);
    return *number;
}

/// What selects the four kinds of rows, of one note or of all notes of a treatment.
struct NoteQueries
{
    const char *visibilities;
    const char *colors;
    std::string elastics;
    const char *members;
};

const NoteQueries &ofTreatment()
{
    static const NoteQueries queries{
        "SELECT note_id, kind, name_key, visible FROM visibilities"
        " WHERE note_id IN (SELECT id FROM notes WHERE treatment_id = ?)",
        "SELECT note_id, name_key, color_type_id FROM bracket_colors"
        " WHERE note_id IN (SELECT id FROM notes WHERE treatment_id = ?)",
        "SELECT note_id, position, " + elasticColumns() +
            " FROM elastics WHERE note_id IN (SELECT id FROM notes WHERE treatment_id = ?)"
            " ORDER BY note_id, position",
        "SELECT note_id, elastic_position, name_key FROM elastic_members"
        " WHERE note_id IN (SELECT id FROM notes WHERE treatment_id = ?)"
        " ORDER BY note_id, elastic_position, position",
    };
    return queries;
}

const NoteQueries &ofNote()
{
    static const NoteQueries queries{
        "SELECT note_id, kind, name_key, visible FROM visibilities WHERE note_id = ?",
        "SELECT note_id, name_key, color_type_id FROM bracket_colors WHERE note_id = ?",
        "SELECT note_id, position, " + elasticColumns() +
            " FROM elastics WHERE note_id = ? ORDER BY position",
        "SELECT note_id, elastic_position, name_key FROM elastic_members"
        " WHERE note_id = ? ORDER BY elastic_position, position",
    };
    return queries;
}

/// Notes by their identifiers, while their rows come in.
class NotesByID
{
public:
    explicit NotesByID(TreatmentStoreConnection &connection) : connection_(connection) {}

    void add(qint64 noteID, NoteRecord &note) { notes_.emplace(noteID, &note); }

    void fill(const NoteQueries &queries, qint64 identifier)
    {
        fillVisibilities(queries.visibilities, identifier);
        fillColors(queries.colors, identifier);
        fillElastics(queries.elastics, identifier);
        fillMembers(queries.members, identifier);
    }

private:
    NoteRecord &noteOf(const StoreStatement &rows)
    {
        const qint64 noteID = rows.value(0).toLongLong();
        if (noteID != lastID_ || !last_) {
            const auto note = notes_.find(noteID);
            if (note == notes_.end()) throw damaged(connection_);
            lastID_ = noteID;
            last_ = note->second;
        }
        return *last_;
    }

    void fillVisibilities(const char *sql, qint64 identifier)
    {
        StoreStatement rows(connection_, sql, {identifier});
        while (rows.next()) {
            NoteRecord &note = noteOf(rows);
            const QString kind = rows.value(1).toString();
            auto &visibilities = kind == QStringLiteral("tooth")     ? note.toothVisibilities
                                 : kind == QStringLiteral("bracket") ? note.bracketVisibilities
                                                                     : note.buttonVisibilities;
            visibilities.insert_or_assign(keyIn(rows.value(2)), rows.value(3).toBool());
        }
    }

    void fillColors(const char *sql, qint64 identifier)
    {
        StoreStatement rows(connection_, sql, {identifier});
        while (rows.next()) {
            auto typeID = numberIn(connection_, rows.value(2));
            if (typeID == storedNoColorTypeID) typeID.reset();
            noteOf(rows).bracketColorTypeIDs.insert_or_assign(keyIn(rows.value(1)), typeID);
        }
    }

    void fillElastics(const std::string &sql, qint64 identifier)
    {
        StoreStatement rows(connection_, sql, {identifier});
        while (rows.next()) {
            auto &elastics = noteOf(rows).elastics;
            if (rows.value(1).toULongLong() != elastics.size()) throw damaged(connection_);
            kelo::SavedElastic elastic;
            int column = 2;
            for (const ElasticAttribute &attribute : elasticAttributes())
                elastic.*attribute.value = numberIn(connection_, rows.value(column++));
            elastics.push_back(std::move(elastic));
        }
    }

    void fillMembers(const char *sql, qint64 identifier)
    {
        StoreStatement rows(connection_, sql, {identifier});
        while (rows.next()) {
            auto &elastics = noteOf(rows).elastics;
            const auto position = rows.value(1).toULongLong();
            if (position >= elastics.size()) throw damaged(connection_);
            elastics[position].bracketSequence.push_back(keyIn(rows.value(2)));
        }
    }

    TreatmentStoreConnection &connection_;
    std::map<qint64, NoteRecord *> notes_;
    qint64 lastID_ = 0;
    NoteRecord *last_ = nullptr;
};

} // namespace

QVariant valueOf(const QString &text)
{
    // A null text would be stored as NULL.
    return text.isNull() ? QVariant(QStringLiteral("")) : QVariant(text);
}

QVariant valueOf(const std::string &text)
{
    return valueOf(QString::fromStdString(text));
}

QVariant valueOf(const std::optional<long> &number)
{
    return number ? QVariant(static_cast<qlonglong>(*number)) : QVariant();
}

QVariant valueOf(const std::optional<QDate> &date)
{
    return date ? QVariant(textOf(*date)) : QVariant();
}

QString textOf(const QDate &date)
{
    return date.toString(Qt::ISODate);
}

QString textOf(const std::vector<kelo::SavedElastic> &elastics)
{
    QJsonArray array;
    for (const kelo::SavedElastic &elastic : elastics)
        array.append(elasticAsJSON(elastic));
    return QString::fromUtf8(QJsonDocument(array).toJson(QJsonDocument::Compact));
}

void assertDate(TreatmentStoreConnection &connection, const std::optional<QDate> &date)
{
    // Beyond these years the texts would not sort by time.
    if (date && (!date->isValid() || date->year() < 0 || date->year() > 9999))
        throw connection.error(StoreProblem::BadRecord,
                               QStringLiteral("a date to store is no date of the years 0 to 9999"));
}

std::vector<StoredPatient> patients(TreatmentStoreConnection &connection)
{
    std::vector<StoredPatient> found;
    StoreStatement rows(connection,
                        "SELECT id, name, identifier, birth_date FROM patients ORDER BY id");
    while (rows.next())
        found.push_back({rows.value(0).toLongLong(),
                         {rows.value(1).toString(), rows.value(2).toString(),
                          dateIn(connection, rows.value(3))}});
    return found;
}

std::vector<StoredTreatment> treatments(TreatmentStoreConnection &connection, qint64 patientID)
{
    std::vector<StoredTreatment> found;
    StoreStatement rows(connection,
                        "SELECT id, shown_date, approved_date FROM treatments"
                        " WHERE patient_id = ? ORDER BY id",
                        {patientID});
    while (rows.next())
        found.push_back({rows.value(0).toLongLong(), patientID, dateIn(connection, rows.value(1)),
                         dateIn(connection, rows.value(2))});
    return found;
}

std::vector<TreatmentSummary> allTreatments(TreatmentStoreConnection &connection)
{
    std::vector<TreatmentSummary> found;
    StoreStatement rows(connection,
                        "SELECT patients.id, name, identifier, birth_date, treatments.id,"
                        " shown_date, treatments.approved_date, count(notes.id), max(notes.date)"
                        " FROM treatments JOIN patients ON patients.id = patient_id"
                        " LEFT JOIN notes ON notes.treatment_id = treatments.id"
                        " GROUP BY treatments.id ORDER BY patients.id, treatments.id");
    while (rows.next()) {
        TreatmentSummary summary;
        // One bad row hides no other: what cannot be read of it is left out, and said.
        const auto dateOf = [&](int column) -> std::optional<QDate> {
            try {
                return dateIn(connection, rows.value(column));
            } catch (const StoreError &error) {
                summary.problem = error.failure().sentence;
                return std::nullopt;
            }
        };
        const qint64 patientID = rows.value(0).toLongLong();
        summary.patient = {patientID,
                           {rows.value(1).toString(), rows.value(2).toString(), dateOf(3)}};
        summary.treatment = {rows.value(4).toLongLong(), patientID, dateOf(5), dateOf(6)};
        summary.noteCount = rows.value(7).toInt();
        summary.lastNoteDate = dateOf(8);
        found.push_back(summary);
    }
    return found;
}

TreatmentRecord treatment(TreatmentStoreConnection &connection, qint64 treatmentID)
{
    TreatmentRecord record;
    assertTreatment(connection, treatmentID);
    {
        StoreStatement row(connection,
                           "SELECT name, identifier, birth_date, shown_date,"
                           " treatments.approved_date FROM treatments"
                           " JOIN patients ON patients.id = patient_id WHERE treatments.id = ?",
                           {treatmentID});
        if (!row.next()) throw damaged(connection);
        record.patient = {row.value(0).toString(), row.value(1).toString(),
                          dateIn(connection, row.value(2))};
        record.currentDate = dateIn(connection, row.value(3));
        record.approvedDate = dateIn(connection, row.value(4));
    }
    std::vector<qint64> noteIDs;
    StoreStatement rows(connection,
                        "SELECT id, date, approved_date FROM notes WHERE treatment_id = ?"
                        " ORDER BY date",
                        {treatmentID});
    while (rows.next()) {
        NoteRecord note;
        note.date = givenDateIn(connection, rows.value(1));
        note.approvedDate = dateIn(connection, rows.value(2));
        record.notes.push_back(std::move(note));
        noteIDs.push_back(rows.value(0).toLongLong());
    }
    NotesByID notes(connection);
    for (std::size_t i = 0; i < noteIDs.size(); ++i)
        notes.add(noteIDs[i], record.notes[i]);
    notes.fill(ofTreatment(), treatmentID);
    return record;
}

void assertTreatment(TreatmentStoreConnection &connection, qint64 treatmentID)
{
    if (!StoreStatement(connection, "SELECT 1 FROM treatments WHERE id = ?", {treatmentID}).next())
        throw connection.error(StoreProblem::NoSuchRecord,
                               QStringLiteral("there is no treatment %1").arg(treatmentID));
}

std::optional<qint64> noteID(TreatmentStoreConnection &connection, qint64 treatmentID,
                             const QDate &date)
{
    assertDate(connection, date);
    StoreStatement row(connection, "SELECT id FROM notes WHERE treatment_id = ? AND date = ?",
                       {treatmentID, textOf(date)});
    if (!row.next()) return std::nullopt;
    return row.value(0).toLongLong();
}

std::optional<QDate> lastDateBefore(TreatmentStoreConnection &connection, qint64 treatmentID,
                                    const QDate &date)
{
    assertDate(connection, date);
    StoreStatement row(connection,
                       "SELECT max(date) FROM notes WHERE treatment_id = ? AND date < ?",
                       {treatmentID, textOf(date)});
    return row.next() ? dateIn(connection, row.value(0)) : std::nullopt;
}

std::optional<NoteRecord> note(TreatmentStoreConnection &connection, qint64 treatmentID,
                               const QDate &date)
{
    const auto identifier = noteID(connection, treatmentID, date);
    if (!identifier) return std::nullopt;
    NoteRecord found;
    found.date = date;
    {
        StoreStatement row(connection, "SELECT approved_date FROM notes WHERE id = ?",
                           {*identifier});
        if (!row.next()) throw damaged(connection);
        found.approvedDate = dateIn(connection, row.value(0));
    }
    NotesByID notes(connection);
    notes.add(*identifier, found);
    notes.fill(ofNote(), *identifier);
    return found;
}

NoteRecord givenNote(TreatmentStoreConnection &connection, qint64 treatmentID, const QDate &date)
{
    auto found = note(connection, treatmentID, date);
    if (!found) throw damaged(connection);
    return std::move(*found);
}

QByteArray catalogue(TreatmentStoreConnection &connection, qint64 treatmentID)
{
    StoreStatement row(connection, "SELECT catalogue FROM catalogues WHERE treatment_id = ?",
                       {treatmentID});
    return row.next() ? row.value(0).toString().toUtf8() : QByteArray();
}

std::vector<kelo::ElasticsConfigType> namedElastics(TreatmentStoreConnection &connection)
{
    std::vector<kelo::ElasticsConfigType> found;
    StoreStatement rows(connection, "SELECT type_id, label, display_order, size_type_id,"
                                    " bracket_sequence FROM named_elastics ORDER BY type_id");
    while (rows.next()) {
        kelo::ElasticsConfigType configuration;
        configuration.typeID = givenNumberIn(connection, rows.value(0));
        configuration.typeLabel = rows.value(1).toString().toStdString();
        configuration.displayOrder = givenNumberIn(connection, rows.value(2));
        configuration.elasticsSizeTypeID = givenNumberIn(connection, rows.value(3));
        configuration.bracketSequence = rows.value(4).toString().toStdString();
        found.push_back(std::move(configuration));
    }
    return found;
}

std::vector<StoredChange> changes(TreatmentStoreConnection &connection, qint64 treatmentID)
{
    const auto textIn = [](const QVariant &value) {
        return value.isNull() ? std::optional<QString>() : value.toString();
    };
    std::vector<StoredChange> found;
    StoreStatement rows(connection,
                        "SELECT at_milliseconds, note_date, what, name_key, old_value, new_value"
                        " FROM changes WHERE treatment_id = ? ORDER BY id",
                        {treatmentID});
    while (rows.next())
        found.push_back({rows.value(0).toLongLong(), dateIn(connection, rows.value(1)),
                         rows.value(2).toString(), keyIn(rows.value(3)), textIn(rows.value(4)),
                         textIn(rows.value(5))});
    return found;
}

} // namespace viewer::tables
