#include "viewer/store/TreatmentSchema.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <iterator>
#include <vector>

namespace viewer {
namespace {

/// The sentences' context for translators.
struct SchemaText
{
    Q_DECLARE_TR_FUNCTIONS(TreatmentStore)
};

/// One table, index, view or trigger: its type, its name, its table's name, its definition.
using SchemaEntry = std::array<QString, 4>;
using SchemaEntries = std::vector<SchemaEntry>;

/// A name of another program's, for a sentence of one line: no control characters, not longer
/// than a person reads.
QString printableName(const QString &name)
{
    constexpr qsizetype longest = 80;
    QString shown = name.left(longest);
    for (QChar &character : shown) {
        if (!character.isPrint()) character = QLatin1Char('?');
    }
    return shown;
}

/// What the database has, sorted; without the tables that SQLite's ANALYZE makes for itself.
SchemaEntries entriesOf(TreatmentStoreConnection &connection)
{
    SchemaEntries entries;
    StoreStatement rows(connection, "SELECT type, name, tbl_name, sql FROM sqlite_schema"
                                    " WHERE NOT (type = 'table' AND name IN"
                                    " ('sqlite_stat1', 'sqlite_stat4'))");
    while (rows.next())
        entries.push_back({rows.value(0).toString(), rows.value(1).toString(),
                           rows.value(2).toString(), rows.value(3).toString().simplified()});
    std::sort(entries.begin(), entries.end());
    return entries;
}

void execute(TreatmentStoreConnection &connection, const QStringList &statements)
{
    for (const QString &statement : statements)
        connection.execute(statement);
}

/// What a database of this version has when no other program has changed it.
const SchemaEntries &expectedEntries(int version)
{
    static std::array<SchemaEntries, currentSchemaVersion + 1> known;
    SchemaEntries &entries = known.at(static_cast<std::size_t>(version));
    if (entries.empty()) {
        TreatmentStoreConnection model(QStringLiteral(":memory:"),
                                       TreatmentStoreConnection::Mode::ReadAndWrite);
        execute(model, schemaDefinitions(version));
        entries = entriesOf(model);
    }
    return entries;
}

void assertEntriesAreOurs(TreatmentStoreConnection &connection, int version)
{
    const SchemaEntries &expected = expectedEntries(version);
    const SchemaEntries found = entriesOf(connection);
    if (found == expected) return;
    SchemaEntries different;
    std::set_symmetric_difference(found.begin(), found.end(), expected.begin(), expected.end(),
                                  std::back_inserter(different));
    const SchemaEntry &first = different.front();
    throw connection.error(
        StoreProblem::Foreign,
        SchemaText::tr("the database was changed by another program (%1 \"%2\" is not as this "
                       "program makes it)")
            .arg(printableName(first[0]), printableName(first[1])));
}

int versionOf(TreatmentStoreConnection &connection)
{
    return connection.pragma(QStringLiteral("user_version")).toInt();
}

void runStep(TreatmentStoreConnection &connection)
{
    StoreTransaction transaction(connection, StoreTransaction::Kind::Writing);
    // Asked again under the lock: another program may have been faster.
    assertSchemaIsReadable(connection);
    const int version = versionOf(connection);
    if (version == currentSchemaVersion) return;
    // An empty database gets the present tables at once; older ones go from version to version.
    const bool isNew = version == 0;
    const int toVersion = isNew ? currentSchemaVersion : version + 1;
    execute(connection, isNew ? schemaDefinitions(toVersion) : schemaStep(toVersion));
    if (connection.pragma(QStringLiteral("foreign_key_check")).isValid())
        throw connection.error(StoreProblem::Damaged, SchemaText::tr("the database is damaged"));
    connection.execute(QStringLiteral("PRAGMA application_id = %1").arg(treatmentApplicationID));
    connection.execute(QStringLiteral("PRAGMA user_version = %1").arg(toVersion));
    transaction.commit();
}

} // namespace

void assertSchemaIsReadable(TreatmentStoreConnection &connection)
{
    const int version = versionOf(connection);
    if (version > currentSchemaVersion)
        throw connection.error(
            StoreProblem::NewerVersion,
            SchemaText::tr("the database was written by a newer version of this program "
                           "(its tables are of version %1, this program knows version %2)")
                .arg(version)
                .arg(currentSchemaVersion));
    const bool isEmpty = !StoreStatement(connection, "SELECT 1 FROM sqlite_schema LIMIT 1").next();
    const int application = connection.pragma(QStringLiteral("application_id")).toInt();
    if (isEmpty && version == 0 && application == 0) return;
    if (application != treatmentApplicationID || version <= 0)
        throw connection.error(StoreProblem::Foreign,
                               SchemaText::tr("the database belongs to another program"));
    assertEntriesAreOurs(connection, version);
}

void bringSchemaUpToDate(TreatmentStoreConnection &connection)
{
    while (!schemaIsUpToDate(connection))
        runStep(connection);
}

bool schemaIsUpToDate(TreatmentStoreConnection &connection)
{
    return versionOf(connection) == currentSchemaVersion;
}

} // namespace viewer
