// docs/formats.md against the program: its examples are read, and its tables name what there is.

#include "tests/viewer/support/ScriptFixture.h"
#include "tests/viewer/support/TreatmentStoreFixture.h"
#include "viewer/output/StateReport.h"
#include "viewer/store/TreatmentFile.h"
#include "viewer/store/TreatmentSchemaVersions.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include <set>

namespace {

using viewer::test::bytesOf;
using viewer::test::OtherConnection;
using Names = std::set<QString>;

QString formatsPage()
{
    return QString::fromUtf8(bytesOf(QStringLiteral(KELO_SOURCE_DIR "/docs/formats.md")));
}

/// From the line of a heading to the next one of the same level.
QString sectionOfPage(const QString &heading)
{
    const QString text = formatsPage();
    const qsizetype begin = text.indexOf(QLatin1Char('\n') + heading + QLatin1Char('\n'));
    EXPECT_GE(begin, 0) << heading.toStdString();
    const QString mark = heading.section(QLatin1Char(' '), 0, 0);
    const qsizetype end = text.indexOf(QLatin1Char('\n') + mark + QLatin1Char(' '), begin + 1);
    return text.mid(begin, end < 0 ? -1 : end - begin);
}

/// The first block of a language in a text.
QString block(const QString &text, const QString &language)
{
    const QString mark = QStringLiteral("```%1\n").arg(language);
    const qsizetype begin = text.indexOf(mark) + mark.size();
    EXPECT_GE(begin, mark.size()) << language.toStdString();
    return text.mid(begin, text.indexOf(QStringLiteral("```"), begin) - begin);
}

/// What the first cells of the tables name.
Names namesInTables(const QString &text)
{
    static const QRegularExpression name(QStringLiteral("`([^`]+)`"));
    Names names;
    for (const QString &line : text.split(QLatin1Char('\n'))) {
        if (!line.startsWith(QStringLiteral("| `"))) continue;
        auto cells = name.globalMatch(line.section(QLatin1Char('|'), 1, 1));
        while (cells.hasNext())
            names.insert(cells.next().captured(1));
    }
    return names;
}

/// The names of all members, but not of those of `leaves`: name keys, and what has its own page.
void collectMembers(const QJsonValue &value, const Names &leaves, Names &names)
{
    for (const QJsonValue element : value.toArray())
        collectMembers(element, leaves, names);
    const QJsonObject object = value.toObject();
    for (auto member = object.begin(); member != object.end(); ++member) {
        names.insert(member.key());
        if (!leaves.contains(member.key())) collectMembers(member.value(), leaves, names);
    }
}

Names membersOf(const QByteArray &json, const Names &leaves)
{
    Names names;
    collectMembers(QJsonDocument::fromJson(json).object(), leaves, names);
    return names;
}

std::string listed(const Names &names)
{
    return QStringList(names.begin(), names.end()).join(QLatin1Char('\n')).toStdString();
}

} // namespace

TEST(DocumentedFormats, theTreatmentFileIsReadAndItsTablesAreWhole)
{
    const QString text = sectionOfPage(QStringLiteral("## Treatment files"));
    const QByteArray example = block(text, QStringLiteral("json")).toUtf8();
    const auto reading = viewer::treatmentFromJSON(example, {});
    ASSERT_TRUE(reading.file) << reading.problems.join(QLatin1Char('\n')).toStdString();
    const Names leaves{"toothVisibilities", "bracketVisibilities", "buttonVisibilities",
                       "bracketColorTypeIDs", "catalogue"};
    const Names names = namesInTables(text);
    EXPECT_EQ(listed(membersOf(viewer::treatmentAsJSON(*reading.file), leaves)), listed(names));
    EXPECT_EQ(listed(membersOf(example, leaves)), listed(names));
}

class DocumentedState : public viewer::test::ScriptFixture
{};

TEST_F(DocumentedState, theTablesNameEveryMemberAndNoOther)
{
    play("modifiers control\nclick bracket 8\n");
    const QByteArray state =
        viewer::stateAsJSON(*view, treatment->callLog(), player->openMenu().get());
    const Names leaves{"toothVisibilities",        "bracketVisibilities",
                       "buttonVisibilities",       "bracketColorsTypeIDs",
                       "bracketVisibilityUpdates", "buttonVisibilityUpdates",
                       "bracketColorTypeIDUpdates"};
    Names names = namesInTables(sectionOfPage(QStringLiteral("## The state report")));
    // The table of the calls is one of operations.
    std::erase_if(names, [](const QString &name) { return name.endsWith(QLatin1Char(':')); });
    EXPECT_EQ(listed(membersOf(state, leaves)), listed(names));
    EXPECT_NO_GL_ERROR();
}

class DocumentedDatabase : public viewer::test::TreatmentStoreFixture
{};

TEST_F(DocumentedDatabase, everyTableAndColumnIsListedAndNoOther)
{
    ASSERT_NO_FATAL_FAILURE(startTreatment());
    const OtherConnection connection(path);
    const QString text = sectionOfPage(QStringLiteral("## The database"));
    Names tables;
    for (const std::string &row :
         connection.rows(QStringLiteral("SELECT name FROM sqlite_schema WHERE type = 'table'"))) {
        const QString table = QString::fromStdString(row);
        tables.insert(table);
        std::string columns;
        for (const std::string &column : connection.rows(
                 QStringLiteral("SELECT '| `' || name || '` | ' || type ||"
                                " iif(pk = 1 AND type = 'INTEGER' AND \"notnull\" = 0,"
                                " ' PRIMARY KEY', iif(\"notnull\", ' NOT NULL', '')) || ' |'"
                                " FROM pragma_table_info('%1')")
                     .arg(table)))
            columns += column + "\n";
        const QString own = sectionOfPage(QStringLiteral("### `%1`").arg(table));
        std::string documented;
        for (const QString &line : own.split(QLatin1Char('\n'))) {
            if (line.startsWith(QStringLiteral("| `")) && line.count(QLatin1Char('|')) == 4 &&
                !line.startsWith(QStringLiteral("| `what` | `name_key`")))
                documented += line.section(QLatin1Char('|'), 0, 2).toStdString() + "|\n";
        }
        EXPECT_EQ(columns, documented) << row;
    }
    EXPECT_EQ(tables.size(), 10u);
    EXPECT_EQ(text.count(QStringLiteral("\n### `")), static_cast<qsizetype>(tables.size()));
    EXPECT_TRUE(text.contains(
        QStringLiteral("are version %1, the present one").arg(viewer::currentSchemaVersion)));
}

TEST_F(DocumentedDatabase, theQueryFindsThePatientsElastics)
{
    store = opened();
    ASSERT_TRUE(store->addTreatment(viewer::test::fullRecord()));
    const QString query =
        block(sectionOfPage(QStringLiteral("## The database")), QStringLiteral("sql"));
    const std::vector<std::string> rows = OtherConnection(path).rows(query);
    ASSERT_EQ(rows.size(), 6u);
    EXPECT_EQ(rows[0], "2026-11-02|0|3|6");
    EXPECT_EQ(rows[1], "2026-11-02|0|3|30");
    EXPECT_EQ(rows[2], "2026-11-02|1||3l");
}
