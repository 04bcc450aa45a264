// Treatment files from elsewhere: what is too much is refused with a sentence.

#include "viewer/store/TreatmentFile.h"

#include <gtest/gtest.h>

using viewer::treatmentFromJSON;

namespace {

QByteArray withMembers(const QByteArray &members)
{
    return R"({"format": "treatment", "version": 1, )" + members + "}";
}

QByteArray treatmentWithNotes(const QByteArray &notes)
{
    return withMembers(R"("patient": {"name": "A", "id": "1"}, "notes": [)" + notes + "]");
}

QByteArray repeated(const QByteArray &entry, int count)
{
    QByteArray list = (entry + ",").repeated(count);
    list.chop(1);
    return list;
}

QByteArray notes(int count)
{
    QByteArray list;
    for (int i = 0; i < count; ++i)
        list += (i == 0 ? "" : ",") + QByteArray(R"({"date": ")") +
                QDate(1900, 1, 1).addDays(i).toString(Qt::ISODate).toUtf8() + "\"}";
    return treatmentWithNotes(list);
}

QByteArray treatmentWithElastics(int count)
{
    return treatmentWithNotes(R"({"date": "2026-11-20", "elastics": [)" +
                              repeated(R"({"bracketSequence": ["6", "30"]})", count) + "]}");
}

QByteArray members(int count)
{
    return treatmentWithNotes(R"({"date": "2026-11-20", "elastics": [{"bracketSequence": [)" +
                              repeated("\"6\"", count) + "]}]}");
}

QByteArray named(int count)
{
    QByteArray list;
    for (int i = 1; i <= count; ++i)
        list += (i == 1 ? "" : ",") + QByteArray(R"({"typeID": )") + QByteArray::number(i) +
                R"(, "typeLabel": "E", "bracketSequence": "6,30"})";
    return withMembers(R"("patient": {"name": "A", "id": "1"},
                          "catalogue": {"elasticsConfigTypes": [)" +
                       list + "]}");
}

QByteArray patientNamed(int length)
{
    return withMembers(R"("patient": {"name": ")" + QByteArray(length, 'x') + R"(", "id": "1"})");
}

QByteArray elasticNamed(int length)
{
    return withMembers(R"("patient": {"name": "A", "id": "1"},
                          "catalogue": {"elasticsConfigTypes": [{"typeID": 1, "typeLabel": ")" +
                       QByteArray(length, 'x') + R"("}]})");
}

QStringList problemsOf(const QByteArray &text)
{
    kelo::Catalogue none;
    return treatmentFromJSON(text, none).problems;
}

} // namespace

TEST(TreatmentFileLimits, whatIsTooMuchIsRefusedAndWhatIsJustEnoughIsRead)
{
    struct Row
    {
        QByteArray (*text)(int count);
        int most;
        const char *message; ///< of one more
    };
    const Row rows[] = {
        {notes, 10000, "notes: has 10001 notes; at most 10000 are read"},
        {treatmentWithElastics, 1000,
         "notes[0].elastics: has 1001 elastics; at most 1000 are read"},
        {members, 112,
         "notes[0].elastics[0].bracketSequence: has 113 members; at most 112 are read"},
        {named, 10000, "catalogue.elasticsConfigTypes: has 10001 entries; at most 10000 are read"},
        {patientNamed, 1000, "patient.name: has 1001 characters; at most 1000 are read"},
        {elasticNamed, 1000,
         "catalogue.elasticsConfigTypes[0].typeLabel: has 1001 characters; at most 1000 are read"},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(problemsOf(row.text(row.most)), QStringList()) << row.message;
        EXPECT_EQ(problemsOf(row.text(row.most + 1)), QStringList(row.message));
    }
}

TEST(TreatmentFileLimits, aHundredProblemsAreToldAndHowManyMoreThereAre)
{
    QByteArray wrong;
    for (int i = 0; i < 1234; ++i)
        wrong += (i == 0 ? "" : ",") + QByteArray("\"k") + QByteArray::number(i) + "\": true";
    const QByteArray text =
        treatmentWithNotes(R"({"date": "2026-11-20", "bracketVisibilities": {)" + wrong + "}}");
    const QStringList problems = problemsOf(text);
    ASSERT_EQ(problems.size(), 101);
    EXPECT_EQ(problems[0].toStdString(),
              "notes[0].bracketVisibilities: 'k0' is no tooth or button");
    EXPECT_EQ(problems[100].toStdString(), "and 1134 more");
}

TEST(TreatmentFileLimits, aLongKeyIsRepeatedWithItsBeginning)
{
    const QByteArray key(10'000'000, 'k');
    EXPECT_EQ(problemsOf(withMembers(R"("patient": {"name": "A", "id": "1"}, ")" + key + "\": 1")),
              QStringList(QString(80, 'k') + QStringLiteral("…: there is no such member")));
    EXPECT_EQ(problemsOf(treatmentWithNotes(R"({"date": "2026-11-20", "toothVisibilities": {")" +
                                            key + R"(": true}})")),
              QStringList("notes[0].toothVisibilities: '" + QString(80, 'k') +
                          QStringLiteral("…' is no tooth or button")));
    // Cut between two characters: ä takes two bytes, of which the 80th is the second.
    const QString umlauts = QString(79, 'k') + QString::fromUtf8("äää");
    EXPECT_EQ(problemsOf(withMembers(R"("patient": {"name": "A", "id": "1"}, ")" +
                                     umlauts.toUtf8() + "\": 1")),
              QStringList(QString(79, 'k') + QStringLiteral("…: there is no such member")));
}

TEST(TreatmentFileLimits, aLineBreakInAKeyDoesNotBeginALine)
{
    EXPECT_EQ(
        problemsOf(withMembers(R"("patient": {"name": "A", "id": "1"}, "a\nother.json: ok": 1)")),
        QStringList("a\\x0aother.json: ok: there is no such member"));
    EXPECT_EQ(problemsOf(treatmentWithNotes(
                  R"({"date": "2026-11-20", "toothVisibilities": {"8\nb": true}})")),
              QStringList("notes[0].toothVisibilities: '8\\x0ab' is no tooth or button"));
}
