// The program itself, as a person or a night job starts it.

#include "tests/viewer/support/RunProgram.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <cstdlib>

using namespace viewer::test;

TEST(Program, aHeadlessRunWithoutADisplayWritesThePictureInDevicePixels)
{
    const QTemporaryDir folder;
    const QString picture = folder.filePath("front.png");
    const Ended ended =
        run({"--headless", "--size", "400x300", "--scale", "1.5", "--picture", picture});
    EXPECT_EQ(ended.status, 0) << ended.errors.toStdString();
    EXPECT_EQ(ended.errors, QByteArray());
    EXPECT_EQ(ended.output, QByteArray());
    const QImage image(picture);
    ASSERT_EQ(image.size(), QSize(600, 450));
    int gumPixels = 0, toothPixels = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor color = image.pixelColor(x, y);
            gumPixels += color.red() > color.green() + 40 && color.red() > color.blue() + 20;
            toothPixels += color.red() > 170 && std::abs(color.red() - color.blue()) < 20;
        }
    }
    // The background is blue: whatever is red or white there was drawn.
    EXPECT_GT(gumPixels, 600 * 450 / 20);
    EXPECT_GT(toothPixels, 600 * 450 / 20);
}

TEST(Program, twoRunsGiveTheSameBytes)
{
    const QTemporaryDir folder;
    const QString first = folder.filePath("1.png");
    const QString second = folder.filePath("2.png");
    ASSERT_EQ(run({"--headless", "--picture", first}).status, 0);
    ASSERT_EQ(run({"--headless", "--picture", second}).status, 0);
    EXPECT_FALSE(contentOf(first).isEmpty());
    EXPECT_EQ(contentOf(first), contentOf(second));
}

TEST(Program, theStateGoesToStandardOutput)
{
    const Ended ended = run({"--headless", "--state", "-"});
    ASSERT_EQ(ended.status, 0) << ended.errors.toStdString();
    const QJsonObject state = QJsonDocument::fromJson(ended.output).object();
    EXPECT_EQ(state["mouseMode"].toInt(), 6) << "today's treatment, not approved";
    EXPECT_EQ(state["mouthOpenAngle"].toDouble(), 0.0);
    EXPECT_EQ(state["worldRotation"].toArray(), (QJsonArray{90, -1, 0, 0}));
    EXPECT_EQ(state["toothVisibilities"].toObject().size(), 28);
    EXPECT_EQ(state["bracketVisibilities"].toObject()["8"].toBool(), true);
    EXPECT_EQ(state["buttonVisibilities"].toObject()["8l"].toBool(), true);
    EXPECT_EQ(state["fullScreen"].toBool(true), false);
}

TEST(Program, theSceneIsExportedWithAllOfItsModels)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("scene.obj");
    ASSERT_EQ(run({"--headless", "--export", path}).status, 0);
    EXPECT_EQ(contentOf(path).count("\no "), 86 + 4) << "the models, and the sample's elastics";
    EXPECT_EQ(contentOf(path).count("\no elastic_"), 4);
}

TEST(Program, wrongUseEndsWithStatusOne)
{
    const Ended ended = run({"--headless", "--size", "big"});
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.errors.toStdString(),
              "--size takes a width and a height from 1 to 8192, as in 1024x768, not 'big'.\n"
              "Try 'treatment-viewer --help'.\n");
}

TEST(Program, badMeshesEndWithStatusTwoAndNothingIsWritten)
{
    const QTemporaryDir folder;
    const QString picture = folder.filePath("front.png");
    const Ended ended = run({"--headless", "--meshes", folder.path(), "--picture", picture});
    EXPECT_EQ(ended.status, 2);
    EXPECT_EQ(ended.errors, folder.path() +
                                ": there is no tooth, bracket or button in this folder\n" +
                                folder.path() + "/_upper_gums.obj: the file is missing\n" +
                                folder.path() + "/_lower_gums.obj: the file is missing\n");
    EXPECT_FALSE(QFile::exists(picture));
}

TEST(Program, anUnwritablePictureIsNamedAndEndsWithStatusTwo)
{
    const Ended ended = run({"--headless", "--picture", "/no such folder/front.png"});
    EXPECT_EQ(ended.status, 2);
    EXPECT_TRUE(ended.errors.startsWith("/no such folder/front.png: could not be written: "))
        << ended.errors.toStdString();
}

TEST(Program, withoutADisplayItSaysSoInsteadOfCrashing)
{
    const Ended ended = run({});
    EXPECT_EQ(ended.status, 3);
    EXPECT_EQ(ended.errors.toStdString(),
              "There is no display to open a window on; --headless needs none.\n");
}

TEST(Program, helpAndVersionNeedNeitherDisplayNorPlugin)
{
    QProcessEnvironment environment = bareEnvironment();
    environment.insert("QT_QPA_PLATFORM", "nothing");
    EXPECT_EQ(run({"--version"}, environment).output.toStdString(), "treatment-viewer 0.1.0\n");
    const Ended help = run({"--help"}, environment);
    EXPECT_EQ(help.status, 0);
    EXPECT_TRUE(help.output.contains("--picture"));
    EXPECT_EQ(help.errors.toStdString(), "");
}

TEST(Program, helpThatHasNoRoomIsToldAndEndsWithStatusTwo)
{
    for (const char *option : {"--help", "--version"}) {
        QProcess process;
        process.setProcessEnvironment(bareEnvironment());
        process.setStandardOutputFile("/dev/full");
        const Ended full = ended(process, {option});
        EXPECT_EQ(full.status, 2) << option;
        EXPECT_EQ(full.errors.toStdString(), "standard output: could not be written\n");
    }
}

TEST(Program, anArgumentThatIsNoTextIsRefused)
{
    const QTemporaryDir folder;
    QProcess process;
    process.setProcessEnvironment(bareEnvironment());
    process.setWorkingDirectory(folder.path());
    process.start("sh", {"-c", "exec \"$0\" --headless --picture \"$(printf 'caf\\351.png')\"",
                         KELO_VIEWER_PROGRAM});
    ASSERT_TRUE(process.waitForFinished(120000));
    EXPECT_EQ(process.exitCode(), 1);
    EXPECT_EQ(QString::fromUtf8(process.readAllStandardError()),
              QString("Argument 3 is not text in the encoding of the system: 'caf\ufffd.png'.\n"));
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
}

namespace {

/// No graphics driver, and no other to fall back to.
QProcessEnvironment environmentWithoutOpenGL()
{
    QProcessEnvironment environment = bareEnvironment();
    environment.insert("__EGL_VENDOR_LIBRARY_FILENAMES", "/nonexistent.json");
    return environment;
}

} // namespace

TEST(Program, withoutUsableOpenGLItEndsWithStatusThreeAndASentence)
{
    const Ended ended = run({"--headless", "--picture", "/dev/null"}, environmentWithoutOpenGL());
    EXPECT_EQ(ended.status, 3) << ended.errors.toStdString();
    EXPECT_EQ(ended.errors.count('\n'), 1) << ended.errors.toStdString();
}

TEST(Program, aStateAndASceneNeedNoOpenGLAndAreTheSame)
{
    const QTemporaryDir folder;
    const QString script = folder.filePath("nothing.script");
    QFile(script).open(QIODevice::WriteOnly);
    const QStringList size{"--headless", "--size", "500x700", "--scale", "2"};
    // With a script the view draws.
    const Ended drawn = run(size + QStringList{"--play", script, "--state", "-", "--export",
                                               folder.filePath("drawn.obj")});
    const Ended computed =
        run(size + QStringList{"--state", "-", "--export", folder.filePath("computed.obj")},
            environmentWithoutOpenGL());
    EXPECT_EQ(computed.status, 0);
    EXPECT_EQ(computed.errors.toStdString(), "");
    EXPECT_EQ(computed.output.toStdString(), drawn.output.toStdString());
    EXPECT_GT(contentOf(folder.filePath("computed.obj")).size(), 1000000);
    EXPECT_EQ(contentOf(folder.filePath("computed.obj")), contentOf(folder.filePath("drawn.obj")));
}

namespace {

void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(content), content.size());
}

/// As on desktops with many fonts, which one replaces a missing one depends on the language.
QByteArray fontsByLanguage(const QString &cache)
{
    QByteArray rules;
    for (const QByteArray language : {"fr", "de"})
        rules += R"(<match target="pattern"><test name="lang" compare="contains"><string>)" +
                 language + R"(</string></test><edit name="family" mode="prepend" binding="strong">
<string>DejaVu Sans Mono</string></edit></match>)";
    return R"(<?xml version="1.0"?><!DOCTYPE fontconfig SYSTEM "fonts.dtd">
<fontconfig><dir>/usr/share/fonts</dir><cachedir>)" +
           cache.toUtf8() + "</cachedir>" + rules +
           R"(<match target="pattern"><edit name="family" mode="append"><string>DejaVu Sans</string>
</edit></match></fontconfig>)";
}

} // namespace

TEST(Program, oneTextGivesOnePictureInEveryLocale)
{
    const QTemporaryDir folder;
    const QString fonts = folder.filePath("fonts.conf");
    writeFile(fonts, fontsByLanguage(folder.path()));
    const QString script = folder.filePath("a.script");
    writeFile(script, "date 2030-12-31\n");
    const auto pictureIn = [&](const QString &locale) {
        QProcessEnvironment environment = bareEnvironment();
        environment.insert("LC_ALL", locale);
        environment.insert("LANG", locale);
        environment.insert("FONTCONFIG_FILE", fonts);
        const QString picture = folder.filePath(locale + ".png");
        const Ended ended =
            run({"--headless", "--size", "300x300", "--play", script, "--picture", picture},
                environment);
        EXPECT_EQ(ended.status, 0) << ended.errors.toStdString();
        return contentOf(picture);
    };
    const QByteArray english = pictureIn("en_GB.UTF-8");
    ASSERT_FALSE(english.isEmpty());
    EXPECT_EQ(pictureIn("fr_FR.UTF-8"), english) << "31/12/2030";
    const QByteArray german = pictureIn("de_DE.UTF-8");
    EXPECT_NE(german, english) << "31.12.30 is another text";
    EXPECT_EQ(pictureIn("lv_LV.UTF-8"), german) << "31.12.30";
}
