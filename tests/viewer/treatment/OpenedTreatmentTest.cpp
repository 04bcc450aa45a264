#include "viewer/treatment/OpenedTreatment.h"

#include "keloOpenGL/keloOpenGL.h"
#include "tests/support/GLTest.h"
#include "tests/support/TestClock.h"
#include "tests/support/TestSurface.h"
#include "viewer/store/TreatmentFile.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

using viewer::OpenedTreatment;

namespace {

class OpenedTreatmentTest : public testing::Test
{
protected:
    OpenedTreatmentTest()
    {
        commandLine.headless = true;
        commandLine.file = folder.filePath("patient.json");
        QFile file(commandLine.file);
        file.open(QIODevice::WriteOnly);
        file.write(R"({"format": "treatment", "version": 1, "patient": {"name": "A", "id": "1"},
                       "currentDate": "2026-11-20",
                       "notes": [{"date": "2026-11-20", "bracketVisibilities": {"8": true}}]})");
    }

    QByteArray fileContent() const
    {
        QFile file(commandLine.file);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    kelo::test::TestClock clock;
    QTemporaryDir folder;
    viewer::CommandLine commandLine;
};

} // namespace

TEST_F(OpenedTreatmentTest, openingIsNoChangeThatWantsSaving)
{
    OpenedTreatment treatment(commandLine);
    EXPECT_EQ(treatment.sentences(), QStringList());
    EXPECT_FALSE(treatment.hasUnsavedChanges());
}

TEST_F(OpenedTreatmentTest, aChangeStaysOutOfTheFileUntilItIsSaved)
{
    const QByteArray before = fileContent();
    OpenedTreatment treatment(commandLine);
    treatment.document()->toggleVisibilityOfBracket("9");
    EXPECT_TRUE(treatment.hasUnsavedChanges());
    EXPECT_EQ(fileContent(), before);

    EXPECT_EQ(treatment.save(), QString());
    EXPECT_FALSE(treatment.hasUnsavedChanges());
    OpenedTreatment reopened(commandLine);
    EXPECT_EQ(reopened.document()->bracketVisibilities().at("9"), true);
    EXPECT_EQ(reopened.document()->bracketVisibilities().at("8"), true);
    EXPECT_EQ(reopened.document()->bracketVisibilities().at("10"), false);
}

TEST_F(OpenedTreatmentTest, savingWhereNothingCanBeWrittenIsASentenceAndKeepsTheFile)
{
    OpenedTreatment treatment(commandLine);
    treatment.document()->toggleVisibilityOfTooth("9");
    ASSERT_TRUE(QFile::remove(commandLine.file));
    ASSERT_TRUE(QDir().mkdir(commandLine.file));
    EXPECT_TRUE(treatment.save().startsWith(commandLine.file + ": could not be written: "));
    EXPECT_TRUE(treatment.hasUnsavedChanges());
}

TEST_F(OpenedTreatmentTest, theSamplePatientHasNoFileToSave)
{
    commandLine.file.clear();
    OpenedTreatment treatment(commandLine);
    treatment.document()->toggleVisibilityOfTooth("9");
    EXPECT_EQ(treatment.file(), QString());
    EXPECT_FALSE(treatment.hasUnsavedChanges());
}

TEST_F(OpenedTreatmentTest, anExportReadsBackAsTheTreatment)
{
    OpenedTreatment treatment(commandLine);
    treatment.document()->toggleVisibilityOfTooth("9");
    const QString path = folder.filePath("export.json");
    ASSERT_EQ(treatment.exportTo(path), QString());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const auto reading = viewer::treatmentFromJSON(file.readAll(), kelo::Catalogue());
    ASSERT_TRUE(reading.file) << reading.problems.join("\n").toStdString();
    EXPECT_EQ(reading.file->treatment.notes.back().toothVisibilities.at("9"), false);
}

namespace {

const QByteArray approvedTreatment = R"({"format": "treatment", "version": 1,
    "patient": {"name": "A", "id": "1"}, "currentDate": "2026-11-20", "approvedDate": "2026-11-21",
    "notes": [{"date": "2026-10-01"}, {"date": "2026-11-20"}]})";

/// An approved treatment of a file, in a view.
class ApprovedTreatment : public OpenedTreatmentTest
{
protected:
    ApprovedTreatment()
    {
        write(approvedTreatment);
        view = kelo::makeView<kelo::DXOpenGL>(kelo::Rect{{0.0, 0.0}, {400.0, 300.0}});
    }
    void write(const QByteArray &text) const
    {
        QFile file(commandLine.file);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(text), text.size());
    }

    kelo::test::TestSurface surface{kelo::SurfaceKind::Surfaceless};
    std::shared_ptr<kelo::DXOpenGL> view;
};

} // namespace

TEST_F(ApprovedTreatment, isTheApprovalOfTheNoteThatItOpensOn)
{
    OpenedTreatment treatment(commandLine);
    treatment.showIn(*view);
    EXPECT_EQ(treatment.approvedDate(), QDate(2026, 11, 21));
    EXPECT_EQ(view->approvedDate().date(), QDate(2026, 11, 21));
    EXPECT_TRUE(view->displayedDateIsToday());
    EXPECT_EQ(view->mouseMode(), kelo::DXOpenGL::rotateMode) << "an approved note is read-only";
    treatment.showDate(*view, QDate(2026, 10, 1));
    EXPECT_EQ(treatment.approvedDate(), std::nullopt) << "of that note alone";
    EXPECT_FALSE(view->approvedDate().isValid());
    treatment.showDate(*view, QDate(2026, 11, 20));
    EXPECT_EQ(view->approvedDate().date(), QDate(2026, 11, 21));
    EXPECT_FALSE(treatment.hasUnsavedChanges());
    EXPECT_NO_GL_ERROR();
}

TEST_F(ApprovedTreatment, givesWayToTheApprovalOfTheNote)
{
    write(QByteArray(approvedTreatment)
              .replace(R"("date": "2026-11-20"})",
                       R"("date": "2026-11-20", "approvedDate": "2026-11-25"})"));
    OpenedTreatment treatment(commandLine);
    treatment.showIn(*view);
    EXPECT_EQ(view->approvedDate().date(), QDate(2026, 11, 25));
    EXPECT_NO_GL_ERROR();
}

TEST_F(ApprovedTreatment, canBeWithdrawnAndIsSavedSo)
{
    OpenedTreatment treatment(commandLine);
    treatment.showIn(*view);
    EXPECT_EQ(treatment.setApproved(*view, false), QString());
    EXPECT_EQ(treatment.approvedDate(), std::nullopt);
    EXPECT_FALSE(view->approvedDate().isValid());
    EXPECT_TRUE(view->mouseModeIsElastics());
    EXPECT_TRUE(treatment.hasUnsavedChanges());
    ASSERT_EQ(treatment.save(), QString());
    const OpenedTreatment reopened(commandLine);
    EXPECT_EQ(reopened.approvedDate(), std::nullopt);
    EXPECT_NO_GL_ERROR();
}
