#include "viewer/store/TreatmentFile.h"

#include <gtest/gtest.h>

using viewer::treatmentAsJSON;
using viewer::TreatmentFileReading;
using viewer::treatmentFromJSON;

namespace {

/// One colour 4, one size 3, one configuration 1.
kelo::Catalogue catalogue()
{
    return *kelo::catalogueFromJSON(QByteArray(R"({
        "bracketColorTypes": [{"typeID": 4, "typeLabel": "Light blue", "displayOrder": 10,
                               "bracketColor": [0.53, 0.81, 0.98, 1.0]}],
        "elasticsSizeTypes": [{"typeID": 3, "typeLabel": "1/4\" 3.5 oz", "displayOrder": 3,
                               "elasticsColor": [0.9, 0.4, 0.1, 1.0]}],
        "elasticsConfigTypes": [{"typeID": 1, "typeLabel": "Class II right", "displayOrder": 1,
                                 "elasticsSizeTypeID": 3, "bracketSequence": "6,30"}]})"))
                .catalogue;
}

/// A file with these notes; everything else in it is in order.
QByteArray withNotes(const QByteArray &notes)
{
    return R"({"format": "treatment", "version": 1, "patient": {"name": "A", "id": "1"},
               "notes": [)" +
           notes + "]}";
}

QByteArray withElastic(const QByteArray &elastic)
{
    return withNotes(R"({"date": "2026-11-20", "elastics": [)" + elastic + "]}");
}

const QByteArray example = R"({
  "format": "treatment", "version": 1,
  "patient": {"name": "Sample Patient", "id": "S-1", "birthDate": "2011-04-02"},
  "currentDate": "2026-11-20", "approvedDate": null,
  "notes": [
    {"date": "2026-11-20",
     "toothVisibilities": {"5": false}, "bracketVisibilities": {"8": true, "9": true},
     "buttonVisibilities": {"8l": true}, "bracketColorTypeIDs": {"8": 4, "9": null},
     "elastics": [{"elasticsConfigTypeID": null, "elasticsSizeTypeID": 3,
                   "bracketSequence": ["6", "30"]}]},
    {"date": "2026-10-01", "approvedDate": "2026-10-02"}
  ]
})";

} // namespace

TEST(TreatmentFile, theExampleIsReadMemberByMember)
{
    const TreatmentFileReading reading = treatmentFromJSON(example, catalogue());
    ASSERT_TRUE(reading.file) << reading.problems.join("\n").toStdString();
    const viewer::TreatmentRecord &treatment = reading.file->treatment;
    EXPECT_EQ(treatment.patient.name, QStringLiteral("Sample Patient"));
    EXPECT_EQ(treatment.patient.identifier, QStringLiteral("S-1"));
    EXPECT_EQ(treatment.patient.birthDate, QDate(2011, 4, 2));
    EXPECT_EQ(treatment.currentDate, QDate(2026, 11, 20));
    EXPECT_EQ(treatment.approvedDate, std::nullopt);
    ASSERT_EQ(treatment.notes.size(), 2u);
    EXPECT_EQ(treatment.notes[0].date, QDate(2026, 10, 1)) << "notes are sorted by date";
    EXPECT_EQ(treatment.notes[0].approvedDate, QDate(2026, 10, 2));
    const viewer::NoteRecord &note = treatment.notes[1];
    EXPECT_EQ(note.toothVisibilities.at("5"), false);
    EXPECT_EQ(note.bracketVisibilities.size(), 2u);
    EXPECT_EQ(note.buttonVisibilities.at("8l"), true);
    EXPECT_EQ(note.bracketColorTypeIDs.at("8"), 4);
    EXPECT_EQ(note.bracketColorTypeIDs.at("9"), std::nullopt);
    ASSERT_EQ(note.elastics.size(), 1u);
    EXPECT_EQ(note.elastics[0].elasticsConfigTypeID, std::nullopt);
    EXPECT_EQ(note.elastics[0].elasticsSizeTypeID, 3);
    EXPECT_EQ(note.elastics[0].bracketSequence, (std::vector<std::string>{"6", "30"}));
}

TEST(TreatmentFile, aTreatmentThatIsWrittenAndReadIsTheSame)
{
    const auto first = treatmentFromJSON(example, catalogue()).file;
    ASSERT_TRUE(first);
    const QByteArray written = treatmentAsJSON(*first);
    // Read without defaults that could replace a lost catalogue.
    const auto second = treatmentFromJSON(written, kelo::Catalogue());
    ASSERT_TRUE(second.file) << second.problems.join("\n").toStdString();
    EXPECT_EQ(second.file->treatment, first->treatment);
    EXPECT_EQ(treatmentAsJSON(*second.file), written);
}

TEST(TreatmentFile, withoutACurrentDateItIsTheDayOfOpening)
{
    const auto reading = treatmentFromJSON(withNotes(""), catalogue());
    ASSERT_TRUE(reading.file);
    EXPECT_EQ(reading.file->treatment.currentDate, std::nullopt);
    EXPECT_FALSE(treatmentAsJSON(*reading.file).contains("currentDate"));
}

TEST(TreatmentFile, aGivenCatalogueListReplacesTheDefaultOne)
{
    const auto reading = treatmentFromJSON(
        R"({"format": "treatment", "version": 1, "patient": {},
            "catalogue": {"bracketColorTypes": [{"typeID": 7, "typeLabel": "Red",
                                                 "bracketColor": [1, 0, 0, 1]}]}})",
        catalogue());
    ASSERT_TRUE(reading.file) << reading.problems.join("\n").toStdString();
    EXPECT_TRUE(reading.file->catalogue.bracketColorType(7));
    EXPECT_FALSE(reading.file->catalogue.bracketColorType(4));
    EXPECT_TRUE(reading.file->catalogue.elasticsSizeType(3));
}

TEST(TreatmentFile, theIdentifierOfNoColourIsReadAsNoColour)
{
    const auto reading = treatmentFromJSON(
        withNotes(R"({"date": "2026-11-20", "bracketColorTypeIDs": {"8": 4999}})"), catalogue());
    ASSERT_TRUE(reading.file);
    EXPECT_EQ(reading.file->treatment.notes[0].bracketColorTypeIDs.at("8"), std::nullopt);
}

struct TreatmentFileProblem
{
    QByteArray text;
    const char *problem;
};
const TreatmentFileProblem treatmentFileProblems[] = {
    {"{\n\"format\": tru}", "line 2: illegal value"},
    {"[]", "must be an object"},
    {R"({"version": 1})", "format: must be \"treatment\""},
    {R"({"format": "treatment"})", "version: must be a whole number from 1"},
    {R"({"format": "treatment", "version": 0})", "version: must be a whole number from 1"},
    {R"({"format": "treatment", "version": 2})",
     "version: this file was written by a newer program (version 2; this one reads up to 1)"},
    {R"({"format": "treatment", "version": 1})", "patient: the patient is missing"},
    {R"({"format": "treatment", "version": 1, "patient": 3})", "patient: must be an object"},
    {R"({"format": "treatment", "version": 1, "patient": {"name": 3}})",
     "patient.name: must be a text"},
    {R"({"format": "treatment", "version": 1, "patient": {"birthDate": "2.4.2011"}})",
     "patient.birthDate: must be a date, as in 2026-11-20"},
    {R"({"format": "treatment", "version": 1, "patient": {}, "note": []})",
     "note: there is no such member"},
    {R"({"format": "treatment", "version": 1, "patient": {}, "notes": 1})",
     "notes: must be a list"},
    {R"({"format": "treatment", "version": 1, "patient": {}, "catalogue": []})",
     "catalogue: must be an object"},
    {R"({"format": "treatment", "version": 1, "patient": {},
             "catalogue": {"bracketColorTypes": [{}, 1]}})",
     "catalogue.bracketColorTypes[0].typeID: the identifier is missing"},
    {withNotes("7"), "notes[0]: must be an object"},
    {withNotes("{}"), "notes[0].date: the date is missing"},
    {withNotes(R"({"date": "2026-02-30"})"), "notes[0].date: must be a date, as in 2026-11-20"},
    {withNotes(R"({"date": "2026-11-20"}, {"date": "2026-11-20"})"),
     "notes[1].date: there is a note of this date already"},
    {withNotes(R"({"date": "2026-11-20", "toothVisibilities": {"16": true}})"),
     "notes[0].toothVisibilities: '16' is no tooth or button"},
    {withNotes(R"({"date": "2026-11-20", "toothVisibilities": {"8": 1}})"),
     "notes[0].toothVisibilities.8: must be true or false"},
    {withNotes(R"({"date": "2026-11-20", "buttonVisibilities": {"8": true}})"),
     "notes[0].buttonVisibilities: '8' is no tooth or button"},
    {withNotes(R"({"date": "2026-11-20", "bracketVisibilities": []})"),
     "notes[0].bracketVisibilities: must be an object"},
    {withNotes(R"({"date": "2026-11-20", "bracketColorTypeIDs": {"8": 5}})"),
     "notes[0].bracketColorTypeIDs.8: 5 is the identifier of no colour"},
    {withNotes(R"({"date": "2026-11-20", "bracketColorTypeIDs": {"8": "4"}})"),
     "notes[0].bracketColorTypeIDs.8: must be a whole number or null"},
    {withNotes(R"({"date": "2026-11-20", "elastics": {}})"), "notes[0].elastics: must be a list"},
    {withElastic("1"), "notes[0].elastics[0]: must be an object"},
    {withElastic(R"({"elasticsSizeTypeID": 3})"),
     "notes[0].elastics[0].bracketSequence: the sequence is missing"},
    {withElastic(R"({"elasticsSizeTypeID": 9, "bracketSequence": ["6", "30"]})"),
     "notes[0].elastics[0].elasticsSizeTypeID: 9 is the identifier of no size"},
    {withElastic(R"({"elasticsConfigTypeID": 9, "bracketSequence": ["6", "30"]})"),
     "notes[0].elastics[0].elasticsConfigTypeID: 9 is the identifier of no configuration"},
    {withElastic(R"({"bracketSequence": ["6", "32"]})"),
     "notes[0].elastics[0].bracketSequence[1]: '32' is no tooth or button"},
    {withElastic(R"({"bracketSequence": ["6", 30]})"),
     "notes[0].elastics[0].bracketSequence[1]: must be a text"},
    {withElastic(R"({"bracketSequence": ["6"]})"),
     "notes[0].elastics[0].bracketSequence: a band needs two brackets or buttons"},
};

TEST(TreatmentFile, everyProblemIsNamedWithItsPlaceAndNothingIsTaken)
{
    for (const TreatmentFileProblem &row : treatmentFileProblems) {
        const TreatmentFileReading reading = treatmentFromJSON(row.text, catalogue());
        EXPECT_FALSE(reading.file) << row.problem;
        ASSERT_FALSE(reading.problems.isEmpty()) << row.problem;
        EXPECT_EQ(reading.problems.front().toStdString(), row.problem);
    }
}
