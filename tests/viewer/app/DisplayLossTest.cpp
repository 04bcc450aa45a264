// Displays that are not there, and one that goes away.

#include "tests/support/WindowTest.h"
#include "tests/viewer/support/RunProgram.h"

#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

using namespace viewer::test;
using kelo::test::waitUntil;

namespace {

/// An X server of the test's own, without a window manager.
class XServer
{
public:
    XServer()
    {
        process_.setProgram("sh");
        process_.setArguments({"-c", "exec Xvfb -displayfd 3 -screen 0 800x600x24 -nolisten tcp "
                                     "3>&1 1>/dev/null 2>/dev/null"});
        process_.start();
        waitUntil([this] { return process_.canReadLine(); }, 60000);
        display_ = ":" + QString::fromUtf8(process_.readLine()).trimmed();
    }
    ~XServer() { kill(); }
    const QString &display() const { return display_; }
    void kill()
    {
        process_.kill();
        process_.waitForFinished();
    }

private:
    QProcess process_;
    QString display_;
};

void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(content), content.size());
}

} // namespace

TEST(DisplayLoss, aDisplayThatIsNotThereIsASentenceAndStatusThree)
{
    struct Row
    {
        const char *variable, *value, *session, *message;
    };
    const Row rows[] = {
        {"DISPLAY", ":987", "x11",
         "The display ':987' could not be opened; --headless needs none.\n"},
        {"WAYLAND_DISPLAY", "nobody", "wayland",
         "The display 'nobody' could not be opened; --headless needs none.\n"},
        {"QT_QPA_PLATFORM", "nothing", "x11",
         "The platform plug-in 'nothing' could not be started; --headless needs none.\n"},
    };
    const QTemporaryDir folder;
    for (const Row &row : rows) {
        QProcessEnvironment environment = bareEnvironment();
        environment.insert("XDG_RUNTIME_DIR", folder.path());
        environment.insert("XDG_SESSION_TYPE", row.session);
        environment.insert(row.variable, row.value);
        const Ended ended = run({"--database", ":memory:"}, environment);
        EXPECT_EQ(ended.status, 3) << row.variable;
        EXPECT_EQ(ended.errors.toStdString(), row.message);
    }
}

TEST(DisplayLoss, whatIsPendingIsStoredAndTheStatusIsThree)
{
    const QTemporaryDir folder;
    const QString database = folder.filePath("treatments.sqlite");
    writeFile(folder.filePath("a.script"),
              "modifiers control\nclick tooth 8\nmenu \"Red\"\nmodifiers\n"
              "state " +
                  folder.filePath("played.json").toUtf8() + "\nwait 600\n");
    XServer server;
    QProcess process;
    QProcessEnvironment environment = bareEnvironment();
    environment.insert("DISPLAY", server.display());
    environment.insert("ASAN_OPTIONS", "detect_leaks=0"); // nothing is taken down in order
    process.setProcessEnvironment(environment);
    process.start(KELO_VIEWER_PROGRAM, {"--database", database, "--size", "300x200", "--play",
                                        folder.filePath("a.script")});
    ASSERT_TRUE(waitUntil([&] { return QFile::exists(folder.filePath("played.json")); }, 120000))
        << process.readAllStandardError().toStdString();
    // The colour was chosen a moment ago by the view's clock, and is pending.
    const QJsonObject played =
        QJsonDocument::fromJson(contentOf(folder.filePath("played.json"))).object();
    ASSERT_EQ(played["pending"]["bracketColorTypeIDUpdates"].toObject().size(), 1);
    server.kill();
    ASSERT_TRUE(process.waitForFinished(120000));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 3);
    EXPECT_TRUE(process.readAllStandardError().contains("The display was lost.\n"));
    const Ended after = run({"--headless", "--database", database, "--state", "-"});
    EXPECT_EQ(QJsonDocument::fromJson(after.output)["bracketColorsTypeIDs"],
              played["bracketColorsTypeIDs"]);
}
