// Printing by the program, as a night job starts it.

#include "tests/viewer/support/RunProgram.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

using namespace viewer::test;

namespace {

const QByteArray printedTreatment = R"({
  "format": "treatment", "version": 1,
  "patient": {"name": "A Patient", "id": "P-7"}, "currentDate": "2026-11-20",
  "notes": [{"date": "2026-11-20", "bracketVisibilities": {"8": true}}]
})";

/// Writes treatment files and returns their names.
QStringList files(const QTemporaryDir &folder, int count)
{
    QStringList names;
    for (int i = 0; i < count; ++i) {
        QFile file(folder.filePath(QString("p%1.json").arg(i, 2, 10, QChar('0'))));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(printedTreatment);
        names << file.fileName();
    }
    return names;
}

bool isWholePage(const QString &path)
{
    const QByteArray pdf = contentOf(path);
    return pdf.startsWith("%PDF-") && pdf.trimmed().endsWith("%%EOF");
}

} // namespace

TEST(ProgramPrint, tenTreatmentsArePrintedInOneCall)
{
    const QTemporaryDir folder;
    const QString pages = folder.filePath("pages");
    const Ended ended = run(QStringList{"--headless", "--print", pages} + files(folder, 10));
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.errors.toStdString(), "");
    const QStringList printed = QDir(pages).entryList(QDir::Files, QDir::Name);
    ASSERT_EQ(printed.size(), 10);
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(printed[i], QString("p%1.pdf").arg(i, 2, 10, QChar('0')));
        EXPECT_TRUE(isWholePage(pages + '/' + printed[i])) << printed[i].toStdString();
    }
}

TEST(ProgramPrint, aCallForTheLastTreatmentOfADayPrintsIntoTheSameFolder)
{
    const QTemporaryDir folder;
    const QString pages = folder.filePath("pages");
    const QString pictures = folder.filePath("pictures");
    const Ended ended = run(
        QStringList{"--headless", "--print", pages, "--print-images", pictures} + files(folder, 1));
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.errors.toStdString(), "");
    EXPECT_TRUE(isWholePage(pages + "/p00.pdf"));
    EXPECT_EQ(QDir(pictures + "/p00").entryList(QDir::Files, QDir::Name),
              (QStringList{"elastics.json", "front.png", "left.png", "right.png"}));
}

TEST(ProgramPrint, aSingleTreatmentsPicturesStandInTheFolderItself)
{
    const QTemporaryDir folder;
    const QString pictures = folder.filePath("pictures");
    const Ended ended =
        run(QStringList{"--headless", "--print-images", pictures} + files(folder, 1));
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.errors.toStdString(), "");
    EXPECT_EQ(QDir(pictures).entryList(QDir::Files, QDir::Name),
              (QStringList{"elastics.json", "front.png", "left.png", "right.png"}));
}

TEST(ProgramPrint, anOutputThatCannotBeWrittenIsNamedWithTheReason)
{
    struct Row
    {
        QStringList arguments;
        const char *message;
    };
    const Row rows[] = {
        {{"--print", "/no such folder/page.pdf"},
         "/no such folder/page.pdf: could not be written: No such file or directory\n"},
        {{"--print", "/dev/full"}, "/dev/full: could not be written: No space left on device\n"},
        {{"--print-images", "/dev/full/pictures"},
         "/dev/full/pictures: the folder could not be made\n"},
        {{"--print", "/dev/full/pages"}, "/dev/full/pages: the folder could not be made\n"},
        {{"--picture", "/no such folder/front.png"},
         "/no such folder/front.png: could not be written: No such file or directory\n"},
    };
    for (const Row &row : rows) {
        const Ended ended = run(QStringList{"--headless"} + row.arguments);
        EXPECT_EQ(ended.status, 2) << row.message;
        EXPECT_EQ(ended.errors.toStdString(), row.message);
    }
}

TEST(ProgramPrint, aStandardOutputThatTakesNothingIsASentence)
{
    QProcess process;
    process.setProcessEnvironment(bareEnvironment());
    process.setStandardOutputFile("/dev/full");
    process.start(KELO_VIEWER_PROGRAM, {"--headless", "--state", "-"});
    ASSERT_TRUE(process.waitForFinished(120000));
    EXPECT_EQ(process.exitCode(), 2);
    EXPECT_EQ(process.readAllStandardError().toStdString(),
              "standard output: could not be written\n");
}
