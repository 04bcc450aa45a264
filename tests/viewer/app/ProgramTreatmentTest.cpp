// What the program opens: files, databases, and what it does with bad ones.

#include "tests/viewer/support/RunProgram.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

using namespace viewer::test;

namespace {

const QByteArray treatment = R"({
  "format": "treatment", "version": 1,
  "patient": {"name": "A Patient", "id": "P-7", "birthDate": "2011-04-02"},
  "currentDate": "2026-11-20",
  "notes": [
    {"date": "2026-11-20",
     "toothVisibilities": {"5": false}, "bracketVisibilities": {"8": true, "5": true},
     "buttonVisibilities": {"8l": true}, "bracketColorTypeIDs": {"8": 4, "9": null},
     "elastics": [{"elasticsConfigTypeID": null, "elasticsSizeTypeID": 3,
                   "bracketSequence": ["8", "25"]}]}
  ]
})";

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(content), content.size());
}

QJsonObject stateOf(const QStringList &arguments)
{
    const Ended ended = run(QStringList{"--headless", "--state", "-"} + arguments);
    EXPECT_EQ(ended.status, 0) << ended.errors.toStdString();
    EXPECT_EQ(ended.errors.toStdString(), "");
    return QJsonDocument::fromJson(ended.output).object();
}

} // namespace

TEST(ProgramTreatment, aTreatmentFileIsShownAsItsNoteHasIt)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("patient.json");
    write(path, treatment);
    const QJsonObject state = stateOf({path});
    EXPECT_EQ(state["toothVisibilities"].toObject()["5"].toBool(true), false);
    EXPECT_EQ(state["toothVisibilities"].toObject()["8"].toBool(), true)
        << "a tooth that is left out is visible";
    EXPECT_EQ(state["bracketVisibilities"].toObject()["8"].toBool(), true);
    EXPECT_EQ(state["bracketVisibilities"].toObject()["9"].toBool(true), false)
        << "a bracket that is left out is not placed";
    EXPECT_EQ(state["buttonVisibilities"].toObject()["8l"].toBool(), true);
    EXPECT_EQ(state["hiddenSecondary"].toArray(), (QJsonArray{"5", "5l"}));
    EXPECT_EQ(state["bracketColorsTypeIDs"].toObject(), (QJsonObject{{"8", 4}}));
    const QJsonObject elastic = state["elasticModels"].toArray().at(0).toObject();
    EXPECT_EQ(elastic["elasticsSizeTypeID"].toInt(), 3);
    EXPECT_TRUE(elastic["elasticsConfigTypeID"].isNull());
    EXPECT_EQ(elastic["bracketSequence"].toArray(), (QJsonArray{"8", "25"}));
    // Opening is no change.
    EXPECT_EQ(state["calls"].toArray(), QJsonArray());
    for (const char *updates :
         {"bracketColorTypeIDUpdates", "bracketVisibilityUpdates", "buttonVisibilityUpdates"})
        EXPECT_TRUE(state["pending"].toObject()[updates].toObject().isEmpty()) << updates;
}

TEST(ProgramTreatment, aHeadlessRunNeverWritesToItsFile)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("patient.json");
    write(path, treatment);
    stateOf({path});
    EXPECT_EQ(contentOf(path), treatment);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{"patient.json"});
}

TEST(ProgramTreatment, aTreatmentWithoutANoteOfItsDateStartsFromTheLastEarlierOne)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("patient.json");
    write(path, QByteArray(treatment).replace("\"currentDate\": \"2026-11-20\"",
                                              "\"currentDate\": \"2026-12-24\""));
    const QJsonObject state = stateOf({path});
    EXPECT_EQ(state["bracketColorsTypeIDs"].toObject(), (QJsonObject{{"8", 4}}));
    EXPECT_EQ(state["elasticModels"].toArray().size(), 1);
}

TEST(ProgramTreatment, aBadFileIsNamedWithItsPlaceAndTheReason)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("patient.json");
    const QString picture = folder.filePath("picture.png");
    write(path, QByteArray(treatment).replace("\"8\": 4", "\"8\": 400"));
    const Ended ended = run({"--headless", "--picture", picture, path});
    EXPECT_EQ(ended.status, 2);
    EXPECT_EQ(ended.errors, path.toUtf8() + ": notes[0].bracketColorTypeIDs.8: 400 is the "
                                            "identifier of no colour\n");
    EXPECT_FALSE(QFile::exists(picture));

    const QString missing = folder.filePath("missing.json");
    const Ended absent = run({"--headless", missing});
    EXPECT_EQ(absent.status, 2);
    EXPECT_EQ(absent.errors, missing.toUtf8() + ": could not be read: No such file or directory\n");
}

TEST(ProgramTreatment, aDatabaseIsMadeOnFirstUseAndOpenedAfterwards)
{
    const QTemporaryDir folder;
    const QString database = folder.filePath("treatments.sqlite");
    const QString path = folder.filePath("patient.json");
    write(path, treatment);
    // The file's treatment goes into the new database, where the next run finds it.
    stateOf({"--database", database, path});
    ASSERT_TRUE(QFile::exists(database));
    const QJsonObject state = stateOf({"--database", database});
    EXPECT_EQ(state["bracketColorsTypeIDs"].toObject(), (QJsonObject{{"8", 4}}));
    EXPECT_EQ(state["elasticModels"].toArray().size(), 1);
}

TEST(ProgramTreatment, aNewDatabaseGetsTheSamplePatient)
{
    const QTemporaryDir folder;
    const QString database = folder.filePath("treatments.sqlite");
    for (int start = 0; start < 2; ++start) {
        const QJsonObject state = stateOf({"--database", database});
        const QJsonObject brackets = state["bracketVisibilities"].toObject();
        EXPECT_EQ(brackets.size(), 28);
        for (const QString &key : brackets.keys())
            EXPECT_TRUE(brackets[key].toBool()) << start << " " << key.toStdString();
    }
}

TEST(ProgramTreatment, aDayThatNeverWasInTheLocalCalendarCanBeEdited)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("patient.json");
    QProcessEnvironment environment = bareEnvironment();
    environment.insert("TZ", "Pacific/Apia");
    // Samoa went from 29 to 31 December 2011.
    for (const char *day : {"2011-12-29", "2011-12-30", "2011-12-31"}) {
        write(path, QByteArray(treatment).replace("2026-11-20", day));
        const Ended ended = run({"--headless", "--state", "-", path}, environment);
        ASSERT_EQ(ended.status, 0) << ended.errors.toStdString();
        const QJsonObject state = QJsonDocument::fromJson(ended.output).object();
        EXPECT_TRUE(state["displayedDateIsToday"].toBool()) << day;
        EXPECT_EQ(state["mouseMode"].toInt(), 6) << day;
    }
}

TEST(ProgramTreatment, severalTreatmentsArePrintedIntoAFolderAndABadOneIsNamed)
{
    const QTemporaryDir folder;
    const QStringList files{folder.filePath("a.json"), folder.filePath("bad.json"),
                            folder.filePath("missing.json"), folder.filePath("z.json")};
    write(files[0], treatment);
    write(files[1], "{\"format\": \"recipe\"}");
    write(files[3], treatment);
    const QString pages = folder.filePath("day/pages");
    const QString pictures = folder.filePath("pictures");
    const Ended ended =
        run(QStringList{"--headless", "--print", pages, "--print-images", pictures} + files);
    EXPECT_EQ(ended.status, 2);
    const QStringList lines = QString::fromUtf8(ended.errors).split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 2) << ended.errors.toStdString();
    EXPECT_TRUE(lines[0].startsWith(files[1] + ": ")) << lines[0].toStdString();
    EXPECT_TRUE(lines[1].startsWith(files[2] + ": could not be read: ")) << lines[1].toStdString();
    EXPECT_EQ(QDir(pages).entryList(QDir::Files, QDir::Name), (QStringList{"a.pdf", "z.pdf"}));
    for (const char *name : {"/a.pdf", "/z.pdf"}) {
        const QByteArray pdf = contentOf(pages + name);
        EXPECT_TRUE(pdf.startsWith("%PDF-")) << name;
        EXPECT_TRUE(pdf.trimmed().endsWith("%%EOF")) << name;
    }
    EXPECT_EQ(QDir(pictures + "/z").entryList(QDir::Files, QDir::Name),
              (QStringList{"elastics.json", "front.png", "left.png", "right.png"}));
}

TEST(ProgramTreatment, aFolderForPagesThatCannotBeMadeIsNamed)
{
    const QTemporaryDir folder;
    write(folder.filePath("a.json"), treatment);
    write(folder.filePath("b.json"), treatment);
    const QString pages = folder.filePath("a.json/pages");
    const Ended ended =
        run({"--headless", "--print", pages, folder.filePath("a.json"), folder.filePath("b.json")});
    EXPECT_EQ(ended.status, 2);
    EXPECT_EQ(ended.errors.toStdString(),
              (pages + ": the folder could not be made\n").toStdString());
}

TEST(ProgramTreatment, aPageThatCannotBeWrittenIsNamedAndNothingIsHalfWritten)
{
    const Ended ended = run({"--headless", "--print", "/no such folder/page.pdf"});
    EXPECT_EQ(ended.status, 2);
    EXPECT_TRUE(ended.errors.startsWith("/no such folder/page.pdf: could not be written: "))
        << ended.errors.toStdString();
    // A device without room takes nothing of the page.
    const Ended full = run({"--headless", "--print", "/dev/full"});
    EXPECT_EQ(full.status, 2);
    EXPECT_TRUE(full.errors.startsWith("/dev/full: could not be written: "))
        << full.errors.toStdString();
}
