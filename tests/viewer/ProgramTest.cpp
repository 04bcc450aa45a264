// The program itself, as a person or a night job starts it.

#include "tests/viewer/RunProgram.h"

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
    EXPECT_TRUE(ended.errors.contains("_tooth_2.obj: the file is missing\n"));
    EXPECT_EQ(ended.errors.count('\n'), 86);
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
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.errors.toStdString(),
              "There is no display to open a window on; --headless needs none.\n");
}

TEST(Program, helpAndVersionNeedNoDisplay)
{
    EXPECT_EQ(run({"--version"}).output.toStdString(), "treatment-viewer 0.1.0\n");
    const Ended help = run({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_TRUE(help.output.contains("--picture"));
}

TEST(Program, withoutUsableOpenGLItEndsWithStatusThreeAndASentence)
{
    QProcessEnvironment environment = bareEnvironment();
    // A driver that does not exist, and no other to fall back to.
    environment.insert("__EGL_VENDOR_LIBRARY_FILENAMES", "/nonexistent.json");
    const Ended ended = run({"--headless", "--picture", "/dev/null"}, environment);
    EXPECT_EQ(ended.status, 3) << ended.errors.toStdString();
    EXPECT_EQ(ended.errors.count('\n'), 1) << ended.errors.toStdString();
}
