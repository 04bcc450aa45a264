// A second start of the viewer on a database that is open in a window.

#include "tests/viewer/support/TreatmentWindowFixture.h"
#include "viewer/store/DatabaseClaim.h"

#include <QProcess>

#include <optional>

using namespace viewer;
using namespace viewer::test;

namespace {

class SecondStart : public TreatmentWindows
{
protected:
    ~SecondStart() override
    {
        second.kill();
        second.waitForFinished();
    }

    /// Runs the program on the same database, while the first one's windows go on.
    bool startAgain(const QStringList &more = {})
    {
        second.start(KELO_VIEWER_PROGRAM, QStringList{"--database", commandLine.database} + more);
        return waitUntil([&] { return second.state() == QProcess::NotRunning; }, 120000);
    }

    QProcess second;
};

TEST_F(SecondStart, bringsTheWindowToTheFrontAndEnds)
{
    TreatmentDocument &document = open();
    windowOf(document).showMinimized();
    ASSERT_TRUE(waitUntil([&] { return windowOf(document).isMinimized(); }));
    ASSERT_TRUE(startAgain());
    EXPECT_EQ(second.exitCode(), 0);
    EXPECT_EQ(second.readAllStandardError().toStdString(), "");
    EXPECT_TRUE(waitUntil([&] { return windowOf(document).isActiveWindow(); }));
    EXPECT_FALSE(windowOf(document).isMinimized());
    EXPECT_EQ(all->documents().size(), 1u);
    EXPECT_NO_GL_ERROR();
}

TEST_F(SecondStart, handsItsFileOver)
{
    open();
    const QString file = writeFile("patient.json");
    ASSERT_TRUE(startAgain({file}));
    EXPECT_EQ(second.exitCode(), 0);
    EXPECT_TRUE(waitUntil([&] { return all->documents().size() == 2u; }));
    EXPECT_EQ(all->store().value()->allTreatments().value().size(), 2u);
    EXPECT_NO_GL_ERROR();
}

TEST_F(SecondStart, besideAProgramWithoutItsDatabaseIsUnusable)
{
    const DatabaseClaim held(commandLine.database);
    ASSERT_FALSE(held.isElsewhere());
    all = std::make_unique<OpenTreatments>(commandLine);
    std::optional<StoreProblem> problem;
    try {
        all->openFirst();
    } catch (const UnusableDatabase &failure) {
        problem = failure.problem();
        EXPECT_EQ(QString::fromUtf8(failure.what()),
                  commandLine.database + ": the database could not be opened");
    }
    EXPECT_EQ(problem, StoreProblem::NotReachable);
    EXPECT_FALSE(QFile::exists(commandLine.database));

    answerNextBox(QMessageBox::Ok);
    all->importFile(writeFile("patient.json"), nullptr);
    EXPECT_EQ(said, commandLine.database + ": the database could not be opened");
    EXPECT_EQ(advised, "Check that the folder is there, that you may read and write the file, and "
                       "that there is room on the disk, then try again.");
}

TEST_F(SecondStart, thatIsToPlayAScriptOpensForReadingOnly)
{
    open();
    CommandLine another = commandLine;
    another.script = "a.script";
    OpenTreatments others(another);
    EXPECT_FALSE(others.isShownElsewhere());
    QString sentence, advice;
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, [&] {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            auto *box = qobject_cast<QMessageBox *>(widget);
            if (!box || !box->isVisible()) continue;
            sentence = box->text();
            advice = box->informativeText();
            box->accept();
        }
    });
    answer.start(50);
    TreatmentDocument &document = others.openFirst();
    waitUntil([&] { return !sentence.isEmpty(); });
    EXPECT_EQ(sentence,
              commandLine.database +
                  ": another window of the program works with the database; it is open for "
                  "reading only");
    EXPECT_EQ(advice, "Close the other program that works with the database, then try again.");
    EXPECT_TRUE(document.treatment()->isReadOnly());
    const auto &view = document.mainWindow()->view();
    EXPECT_FALSE(view.displayedDateIsToday());
    EXPECT_EQ(view.mouseMode(), kelo::DXOpenGL::rotateMode);
    EXPECT_FALSE(document.treatment()->todayIsOver());
    EXPECT_NO_GL_ERROR();
}

} // namespace
