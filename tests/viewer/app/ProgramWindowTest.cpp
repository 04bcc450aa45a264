// The program with a script in a window, on a display.

#include "tests/support/WindowTest.h"
#include "tests/viewer/support/RunProgram.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

using namespace viewer::test;
using kelo::test::waitUntil;
using kelo::test::xdotool;

namespace {

/// A run in a window, whose script tells by a file how far it is.
class ProgramInWindow : public testing::Test
{
protected:
    ~ProgramInWindow() override
    {
        if (process.state() != QProcess::NotRunning) process.kill();
        process.waitForFinished();
    }

    QString path(const QString &name) const { return folder.filePath(name); }
    QByteArray stateLine(const QString &name) const
    {
        return "state " + path(name).toUtf8() + '\n';
    }
    QJsonObject state(const QString &name) const
    {
        return QJsonDocument::fromJson(contentOf(path(name))).object();
    }

    void start(const QByteArray &script)
    {
        QFile file(path("a.script"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(script);
        file.close();
        // The graphics driver is unloaded with the display. What it has kept looks lost to a leak
        // detector then, and belongs to no module that could be named.
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert("ASAN_OPTIONS", "detect_leaks=0");
        process.setProcessEnvironment(environment);
        process.start(KELO_VIEWER_PROGRAM, {"--database", ":memory:", "--size", "400x300", "--play",
                                            file.fileName(), "--state", path("end.json")});
    }
    /// Whether the script gets as far as writing this file.
    bool comesTo(const QString &name) const
    {
        return waitUntil([&] { return QFile::exists(path(name)); }, 120000);
    }
    /// Closes the window as its user would; returns whether the program ends.
    bool closeWindow()
    {
        for (int attempt = 0; attempt < 10; ++attempt) {
            // The keys go to whatever window is active; what was pressed too early is pressed
            // again.
            xdotool({"search", "--onlyvisible", "--pid", QString::number(process.processId()),
                     "--name", "Treatment viewer", "windowactivate"});
            EXPECT_TRUE(kelo::test::displayIsSettled());
            xdotool({"key", "ctrl+w"});
            if (process.waitForFinished(6000)) return true;
        }
        return false;
    }

    QTemporaryDir folder;
    QProcess process;
};

TEST_F(ProgramInWindow, theStateAtTheEndHasTheMenuThatTheScriptLeftOpen)
{
    start("modifiers control\nclick tooth 8\n" + stateLine("played.json"));
    ASSERT_TRUE(comesTo("played.json")) << process.readAllStandardError().toStdString();
    ASSERT_TRUE(closeWindow());
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    const QJsonValue endMenu = state("end.json")["menu"];
    EXPECT_EQ(endMenu["title"], QJsonValue("BracketColorType Menu"));
    EXPECT_EQ(state("end.json")["menu"], state("played.json")["menu"]);
}

TEST_F(ProgramInWindow, neitherAnAlertNorAPrintRequestStopsAScript)
{
    start("modifiers control\nclick tooth 30\nmenu \"Remove Tooth\"\nmodifiers\nadvance 4\n"
          "click bracket 8\nmenu \"Class II right\"\n"
          "click tool print\nmouth 15\n" +
          stateLine("played.json"));
    ASSERT_TRUE(comesTo("played.json")) << process.readAllStandardError().toStdString();
    EXPECT_EQ(state("played.json")["mouthOpenAngle"], QJsonValue(15.0));
    EXPECT_EQ(state("played.json")["calls"].toArray().last().toArray().first(),
              QJsonValue("printImagesLeft:front:right:forDate:elasticsLeft:front:right:"));
    ASSERT_TRUE(closeWindow());
    EXPECT_EQ(process.exitCode(), 0);
    EXPECT_EQ(process.readAllStandardError().toStdString(),
              "Cannot Place Named Elastic: The Elastic Configuration named 'Class II right' cannot "
              "be placed because 1 or more required teeth for Bracket/Button placement are "
              "missing.\nMissing: 30\n");
}

TEST_F(ProgramInWindow, aWindowThatIsClosedDuringAWaitEndsTheRunAfterTheScript)
{
    start(stateLine("waiting.json") + "wait 5\nmouth 20\n");
    ASSERT_TRUE(comesTo("waiting.json")) << process.readAllStandardError().toStdString();
    ASSERT_TRUE(closeWindow());
    EXPECT_EQ(process.exitCode(), 0);
    EXPECT_EQ(state("end.json")["mouthOpenAngle"], QJsonValue(20.0));
}

TEST_F(ProgramInWindow, aDatabaseThatCannotBeUsedIsABoxAndNoSamplePatient)
{
    ASSERT_TRUE(QDir().mkdir(path("data")));
    process.start(KELO_VIEWER_PROGRAM, {"--database", path("data"), "--state", path("end.json")});
    ASSERT_TRUE(process.waitForStarted());
    const QStringList box = {"search", "--onlyvisible",
                             "--pid",  QString::number(process.processId()),
                             "--name", "treatment-viewer"};
    bool isShown = false;
    const auto isShownOrOver = [&] {
        isShown = xdotool(box);
        return isShown || process.state() == QProcess::NotRunning;
    };
    ASSERT_TRUE(waitUntil(isShownOrOver, 120000));
    ASSERT_TRUE(isShown) << process.readAllStandardError().toStdString();
    ASSERT_EQ(process.state(), QProcess::Running) << "the box waits for its answer";
    // It takes Escape for its only answer beside trying again; what comes too early is pressed
    // again.
    bool hasEnded = false;
    for (int attempt = 0; attempt < 30 && !hasEnded; ++attempt) {
        xdotool(box + QStringList{"windowactivate", "--sync", "key", "Escape"});
        hasEnded = process.waitForFinished(2000);
    }
    ASSERT_TRUE(hasEnded);
    EXPECT_EQ(process.exitCode(), 2);
    EXPECT_EQ(process.readAllStandardError().toStdString(),
              path("data").toStdString() + ": the database could not be opened\n");
    EXPECT_FALSE(QFile::exists(path("end.json")));
    EXPECT_TRUE(QDir(path("data")).isEmpty());
}

} // namespace
