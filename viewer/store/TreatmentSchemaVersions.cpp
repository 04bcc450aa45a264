#include "viewer/store/TreatmentSchemaVersions.h"

#include <span>
#include <stdexcept>
#include <string>

namespace viewer {
namespace {

using Texts = std::span<const char *const>;

constexpr const char *tablesOfVersion1[] = {
    "CREATE TABLE patients (id INTEGER PRIMARY KEY,"
    " name TEXT NOT NULL,"
    " identifier TEXT NOT NULL)",
    "CREATE TABLE treatments (id INTEGER PRIMARY KEY,"
    " patient_id INTEGER NOT NULL REFERENCES patients (id) ON DELETE CASCADE,"
    " approved_date TEXT)",
    "CREATE TABLE notes (id INTEGER PRIMARY KEY,"
    " treatment_id INTEGER NOT NULL REFERENCES treatments (id) ON DELETE CASCADE,"
    " date TEXT NOT NULL,"
    " UNIQUE (treatment_id, date))",
    "CREATE TABLE tooth_visibilities (note_id INTEGER NOT NULL REFERENCES notes (id) ON DELETE "
    "CASCADE,"
    " name_key TEXT NOT NULL,"
    " visible INTEGER NOT NULL,"
    " PRIMARY KEY (note_id, name_key)) WITHOUT ROWID",
    "CREATE TABLE brackets (note_id INTEGER NOT NULL REFERENCES notes (id) ON DELETE CASCADE,"
    " name_key TEXT NOT NULL,"
    " visible INTEGER NOT NULL,"
    " color_type_id INTEGER,"
    " PRIMARY KEY (note_id, name_key)) WITHOUT ROWID",
    "CREATE TABLE elastics (id INTEGER PRIMARY KEY,"
    " note_id INTEGER NOT NULL REFERENCES notes (id) ON DELETE CASCADE,"
    " position INTEGER NOT NULL,"
    " size_type_id INTEGER,"
    " bracket_sequence TEXT NOT NULL)",
};

/// A tooth that is not listed is visible, a bracket or button that is not
/// listed is not placed. Dates are texts as in "2026-11-20", which sort by time.
constexpr const char *tablesOfVersion2[] = {
    "CREATE TABLE patients ("
    " id INTEGER PRIMARY KEY,"
    " name TEXT NOT NULL,"
    " identifier TEXT NOT NULL,"
    " birth_date TEXT)",
    "CREATE TABLE treatments ("
    " id INTEGER PRIMARY KEY,"
    " patient_id INTEGER NOT NULL REFERENCES patients (id) ON DELETE CASCADE,"
    " shown_date TEXT,"
    " approved_date TEXT)",
    "CREATE INDEX treatments_of_patient ON treatments (patient_id)",
    "CREATE TABLE notes ("
    " id INTEGER PRIMARY KEY,"
    " treatment_id INTEGER NOT NULL REFERENCES treatments (id) ON DELETE CASCADE,"
    " date TEXT NOT NULL,"
    " approved_date TEXT,"
    " UNIQUE (treatment_id, date))",
    "CREATE TABLE visibilities ("
    " note_id INTEGER NOT NULL REFERENCES notes (id) ON DELETE CASCADE,"
    " kind TEXT NOT NULL CHECK (kind IN ('tooth', 'bracket', 'button')),"
    " name_key TEXT NOT NULL,"
    " visible INTEGER NOT NULL CHECK (visible IN (0, 1)),"
    " PRIMARY KEY (note_id, kind, name_key)) WITHOUT ROWID",
    "CREATE TABLE bracket_colors ("
    " note_id INTEGER NOT NULL REFERENCES notes (id) ON DELETE CASCADE,"
    " name_key TEXT NOT NULL,"
    " color_type_id INTEGER NOT NULL," // 4999: no colour
    " PRIMARY KEY (note_id, name_key)) WITHOUT ROWID",
    "CREATE TABLE elastics ("
    " note_id INTEGER NOT NULL REFERENCES notes (id) ON DELETE CASCADE,"
    " position INTEGER NOT NULL,"
    " config_type_id INTEGER,"
    " size_type_id INTEGER,"
    " PRIMARY KEY (note_id, position)) WITHOUT ROWID",
    "CREATE TABLE elastic_members ("
    " note_id INTEGER NOT NULL,"
    " elastic_position INTEGER NOT NULL,"
    " position INTEGER NOT NULL,"
    " name_key TEXT NOT NULL,"
    " PRIMARY KEY (note_id, elastic_position, position),"
    " FOREIGN KEY (note_id, elastic_position) REFERENCES elastics (note_id, position)"
    " ON DELETE CASCADE) WITHOUT ROWID",
    "CREATE TABLE changes ("
    " id INTEGER PRIMARY KEY,"
    " treatment_id INTEGER NOT NULL REFERENCES treatments (id) ON DELETE CASCADE,"
    " note_date TEXT,"
    " at_milliseconds INTEGER NOT NULL," // UTC, since 1970
    " what TEXT NOT NULL,"
    " name_key TEXT NOT NULL,"
    " old_value TEXT,"
    " new_value TEXT)",
    "CREATE INDEX changes_of_treatment ON changes (treatment_id)",
};

/// The old tables step aside, those of version 2 are made with the same words as in a new database
/// of that version, and the content is carried over.
constexpr const char *setVersion1Aside[] = {
    "ALTER TABLE patients RENAME TO version1_patients",
    "ALTER TABLE treatments RENAME TO version1_treatments",
    "ALTER TABLE notes RENAME TO version1_notes",
    "ALTER TABLE elastics RENAME TO version1_elastics",
};

constexpr const char *carryVersion1Over[] = {
    "INSERT INTO patients (id, name, identifier)"
    " SELECT id, name, identifier FROM version1_patients",
    "INSERT INTO treatments (id, patient_id, approved_date)"
    " SELECT id, patient_id, approved_date FROM version1_treatments",
    "INSERT INTO notes (id, treatment_id, date)"
    " SELECT id, treatment_id, date FROM version1_notes",
    "INSERT INTO visibilities (note_id, kind, name_key, visible)"
    " SELECT note_id, 'tooth', name_key, visible FROM tooth_visibilities",
    "INSERT INTO visibilities (note_id, kind, name_key, visible)"
    " SELECT note_id, 'bracket', name_key, visible FROM brackets",
    // A missing colour was nothing in version 1.
    "INSERT INTO bracket_colors (note_id, name_key, color_type_id)"
    " SELECT note_id, name_key, coalesce(color_type_id, 4999) FROM brackets",
    // Positions of version 1 could leave gaps.
    "INSERT INTO elastics (note_id, position, size_type_id)"
    " SELECT note_id, row_number() OVER (PARTITION BY note_id ORDER BY position, id) - 1,"
    " size_type_id FROM version1_elastics",
    // The sequence was one text, its members joined by commas.
    "WITH RECURSIVE split (note_id, elastic_position, position, name_key, rest) AS ("
    " SELECT note_id, row_number() OVER (PARTITION BY note_id ORDER BY position, id) - 1, -1, '',"
    " bracket_sequence || ',' FROM version1_elastics"
    " UNION ALL"
    " SELECT note_id, elastic_position, position + 1, substr(rest, 1, instr(rest, ',') - 1),"
    " substr(rest, instr(rest, ',') + 1) FROM split WHERE rest <> '')"
    " INSERT INTO elastic_members (note_id, elastic_position, position, name_key)"
    " SELECT note_id, elastic_position, position, name_key FROM split"
    " WHERE position >= 0 AND name_key <> ''",
    // Children first, so that no deletion runs on into what was carried over.
    "DROP TABLE version1_elastics",
    "DROP TABLE brackets",
    "DROP TABLE tooth_visibilities",
    "DROP TABLE version1_notes",
    "DROP TABLE version1_treatments",
    "DROP TABLE version1_patients",
};

constexpr const char *namedElasticsOfVersion3 =
    "CREATE TABLE named_elastics ("
    " type_id INTEGER PRIMARY KEY,"
    " label TEXT NOT NULL,"
    " display_order INTEGER NOT NULL,"
    " size_type_id INTEGER NOT NULL,"   // 0: none
    " bracket_sequence TEXT NOT NULL)"; // members joined by commas

/// Only treatments that brought one have a row.
constexpr const char *cataloguesOfVersion4 =
    "CREATE TABLE catalogues ("
    " treatment_id INTEGER PRIMARY KEY REFERENCES treatments (id) ON DELETE CASCADE,"
    " catalogue TEXT NOT NULL)"; // JSON, as in a catalogue file

void append(QStringList &list, Texts texts)
{
    for (const char *text : texts)
        list.append(QString::fromUtf8(text));
}

void assertVersion(int version, int first)
{
    if (version < first || version > currentSchemaVersion)
        throw std::out_of_range("no version of the database's tables");
}

} // namespace

QStringList schemaDefinitions(int version)
{
    assertVersion(version, 1);
    QStringList definitions;
    if (version == 1) {
        append(definitions, tablesOfVersion1);
        return definitions;
    }
    // Since version 2, each version is the one before and a table more.
    append(definitions, tablesOfVersion2);
    if (version >= 3) definitions.append(QString::fromUtf8(namedElasticsOfVersion3));
    if (version >= 4) definitions.append(QString::fromUtf8(cataloguesOfVersion4));
    return definitions;
}

QStringList schemaStep(int toVersion)
{
    assertVersion(toVersion, 2);
    QStringList step;
    switch (toVersion) {
    case 2:
        append(step, setVersion1Aside);
        append(step, tablesOfVersion2);
        append(step, carryVersion1Over);
        break;
    case 3:
        step.append(QString::fromUtf8(namedElasticsOfVersion3));
        break;
    case 4:
        step.append(QString::fromUtf8(cataloguesOfVersion4));
        break;
    default:
        // A version without a step would be called by its number and have the tables of another.
        throw std::logic_error("no step leads to version " + std::to_string(toVersion));
    }
    return step;
}

} // namespace viewer
