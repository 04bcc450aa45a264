// The program with a script: what it plays, what it says, and how it ends.

#include "tests/viewer/support/RunProgram.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

using namespace viewer::test;

namespace {

class ProgramScript : public testing::Test
{
protected:
    QString write(const QByteArray &script) const
    {
        QFile file(path("a.script"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(script);
        return file.fileName();
    }
    QString path(const QString &name) const { return folder.filePath(name); }

    /// A headless run of a script that writes a picture and a state at its end.
    Ended play(const QByteArray &script) const
    {
        return run({"--headless", "--size", "200x150", "--play", write(script), "--picture",
                    path("end.png"), "--state", path("end.json")});
    }
    bool wroteNothing() const
    {
        return !QFile::exists(path("end.png")) && !QFile::exists(path("end.json"));
    }
    QJsonObject state(const QString &name) const
    {
        return QJsonDocument::fromJson(contentOf(path(name))).object();
    }

    QTemporaryDir folder;
};

/// A headless run with this on its standard input.
Ended runWithInput(const QStringList &arguments, const QByteArray &input)
{
    QProcess process;
    process.setProcessEnvironment(bareEnvironment());
    process.start(KELO_VIEWER_PROGRAM, arguments);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(120000)) return {-1, {}, process.errorString().toUtf8()};
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2,
            process.readAllStandardOutput(), process.readAllStandardError()};
}

TEST_F(ProgramScript, everyWrongLineIsNamedBeforeAnyIsPlayed)
{
    const Ended ended = play("picture " + path("first.png").toUtf8() + "\njump\n\nmouth wide\n");
    EXPECT_EQ(ended.status, 2);
    const std::string file = path("a.script").toStdString();
    EXPECT_EQ(ended.errors.toStdString(), file + ":2: 'jump' is no command\n" + file +
                                              ":4: DEGREES must be a number, not 'wide'\n");
    EXPECT_FALSE(QFile::exists(path("first.png")));
    EXPECT_TRUE(wroteNothing());
}

TEST_F(ProgramScript, aLineThatFailsEndsTheRunWithItsNumberAndWithoutOutputs)
{
    const Ended ended = play("mouth 10\n# a comment counts as a line\nclick tooth 1\nmouth 20\n");
    EXPECT_EQ(ended.status, 2);
    EXPECT_EQ(ended.errors.toStdString(),
              path("a.script").toStdString() + ":3: there is no tooth 1\n");
    EXPECT_TRUE(wroteNothing());
}

TEST_F(ProgramScript, aScriptThatCannotBeReadIsNamed)
{
    const Ended ended = run({"--headless", "--play", "/no such folder/a.script"});
    EXPECT_EQ(ended.status, 2);
    EXPECT_EQ(ended.errors.toStdString(),
              "/no such folder/a.script: could not be read: No such file or directory\n");
}

TEST_F(ProgramScript, aDashReadsTheScriptFromStandardInput)
{
    const Ended ended = runWithInput({"--headless", "--play", "-", "--state", "-"}, "mouth 12.5\n");
    EXPECT_EQ(ended.status, 0) << ended.errors.toStdString();
    EXPECT_EQ(QJsonDocument::fromJson(ended.output).object()["mouthOpenAngle"], QJsonValue(12.5));
}

TEST_F(ProgramScript, aWrongLineOfStandardInputIsNamedAsThat)
{
    const Ended wrong = runWithInput({"--headless", "--play", "-"}, "\njump\n");
    EXPECT_EQ(wrong.status, 2);
    EXPECT_EQ(wrong.errors.toStdString(), "standard input:2: 'jump' is no command\n");
    const Ended failing = runWithInput({"--headless", "--play", "-"}, "dismiss\n");
    EXPECT_EQ(failing.status, 2);
    EXPECT_EQ(failing.errors.toStdString(), "standard input:1: no menu is open\n");
}

TEST_F(ProgramScript, aStateOrPictureThatCannotBeWrittenEndsTheRunAtItsLine)
{
    for (const QByteArray command : {"state", "picture"}) {
        const Ended ended = play("mouth 10\n" + command + " \"/no such folder/out\"\n");
        EXPECT_EQ(ended.status, 2);
        const std::string beginning =
            path("a.script").toStdString() + ":2: /no such folder/out: could not be written: ";
        EXPECT_TRUE(ended.errors.startsWith(beginning.c_str())) << ended.errors.toStdString();
        EXPECT_EQ(ended.errors.count('\n'), 1);
        EXPECT_TRUE(wroteNothing());
    }
}

TEST_F(ProgramScript, picturesAndStatesAreOfTheMomentAtWhichTheyAreAskedFor)
{
    const Ended ended =
        play("state " + path("1.json").toUtf8() + "\nmouth 20\nstate " + path("2.json").toUtf8() +
             "\npicture " + path("2.png").toUtf8() + "\nmouth 30\n");
    ASSERT_EQ(ended.status, 0) << ended.errors.toStdString();
    EXPECT_EQ(state("1.json")["mouthOpenAngle"], QJsonValue(0.0));
    EXPECT_EQ(state("2.json")["mouthOpenAngle"], QJsonValue(20.0));
    EXPECT_EQ(state("end.json")["mouthOpenAngle"], QJsonValue(30.0));
    EXPECT_FALSE(contentOf(path("2.png")).isEmpty());
    EXPECT_NE(contentOf(path("2.png")), contentOf(path("end.png")));
}

TEST_F(ProgramScript, fullScreenNeedsNoDisplay)
{
    const Ended ended =
        play("fullscreen on\nstate " + path("1.json").toUtf8() + "\nfullscreen off\n");
    ASSERT_EQ(ended.status, 0) << ended.errors.toStdString();
    EXPECT_EQ(state("1.json")["fullScreen"], QJsonValue(true));
    EXPECT_EQ(state("end.json")["fullScreen"], QJsonValue(false));
}

TEST_F(ProgramScript, aMenuThatTheScriptLeavesOpenIsInTheStateAtTheEnd)
{
    const Ended ended = play("modifiers control\nclick tooth 8\n");
    ASSERT_EQ(ended.status, 0) << ended.errors.toStdString();
    const QJsonValue menu = state("end.json")["menu"];
    EXPECT_EQ(menu["title"], QJsonValue("BracketColorType Menu"));
    EXPECT_EQ(menu["items"].toArray().first()["title"], QJsonValue("Mark All Brackets"));
}

TEST_F(ProgramScript, anAlertIsALineOnStandardErrorAndTheScriptGoesOn)
{
    const Ended ended = play("modifiers control\nclick tooth 30\nmenu \"Remove Tooth\"\n"
                             "modifiers\nadvance 4\nclick bracket 8\n"
                             "menu \"Class II right\"\nmouth 15\n");
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.errors.toStdString(),
              "Cannot Place Named Elastic: The Elastic Configuration named 'Class II right' cannot "
              "be placed because 1 or more required teeth for Bracket/Button placement are "
              "missing.\nMissing: 30\n");
    EXPECT_EQ(state("end.json")["mouthOpenAngle"], QJsonValue(15.0));
}

} // namespace
