#include "viewer/settings/CommandLine.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using viewer::parseCommandLine;

namespace {

viewer::ParsedCommandLine parse(const QStringList &arguments)
{
    return parseCommandLine(QStringList{QStringLiteral("treatment-viewer")} + arguments);
}

} // namespace

TEST(CommandLine, withoutArgumentsAWindowOf1024By768Opens)
{
    const auto parsed = parse({});
    EXPECT_FALSE(parsed.endsWith);
    EXPECT_FALSE(parsed.commandLine.headless);
    EXPECT_EQ(parsed.commandLine.size, (kelo::Size{1024, 768}));
    EXPECT_EQ(parsed.commandLine.scale, 1.0);
}

TEST(CommandLine, everyOptionIsTakenOver)
{
    const auto parsed =
        parse({"--headless", "--size", "800x600", "--scale", "1.25", "--meshes", "m", "--database",
               "d.sqlite", "t.json", "--picture", "p.png", "--state", "-", "--export", "e.obj"});
    ASSERT_FALSE(parsed.endsWith) << parsed.message.toStdString();
    EXPECT_TRUE(parsed.commandLine.headless);
    EXPECT_EQ(parsed.commandLine.size, (kelo::Size{800, 600}));
    EXPECT_EQ(parsed.commandLine.scale, 1.25);
    EXPECT_EQ(parsed.commandLine.file, QStringLiteral("t.json"));
    EXPECT_EQ(parsed.commandLine.database, QStringLiteral("d.sqlite"));
    EXPECT_EQ(parsed.commandLine.meshes, QStringLiteral("m"));
    EXPECT_EQ(parsed.commandLine.picture, QStringLiteral("p.png"));
    EXPECT_EQ(parsed.commandLine.state, QStringLiteral("-"));
    EXPECT_EQ(parsed.commandLine.exportedScene, QStringLiteral("e.obj"));
}

TEST(CommandLine, wrongUseIsSaidInASentenceThatQuotesWhatWasGiven)
{
    struct Row
    {
        QStringList arguments;
        const char *message;
    };
    const Row rows[] = {
        {{"--size", "800"},
         "--size takes a width and a height from 1 to 8192, as in 1024x768, not '800'."},
        {{"--size", "0x600"},
         "--size takes a width and a height from 1 to 8192, as in 1024x768, not '0x600'."},
        {{"--size", "9000x600"},
         "--size takes a width and a height from 1 to 8192, as in 1024x768, not '9000x600'."},
        {{"--size", "-5x600"},
         "--size takes a width and a height from 1 to 8192, as in 1024x768, not '-5x600'."},
        {{"--scale", "1,5"}, "--scale takes a number from 0.5 to 8, not '1,5'."},
        {{"--scale", "0"}, "--scale takes a number from 0.5 to 8, not '0'."},
        {{"--scale", "nan"}, "--scale takes a number from 0.5 to 8, not 'nan'."},
        {{"--size", "8000x8000", "--scale", "2"},
         "--size times --scale may be 8192 pixels at most on each side."},
        {{"--meshes", ""}, "--meshes takes the name of a folder."},
        {{"--headless", "--print-images", "pictures", "one.json", "day/...json"},
         "'day/...json' has no name to be printed under."},
        {{"--headless", "--print", "pages", "..json"}, "'..json' has no name to be printed under."},
        {{"--headless", "--print", "pages", ".json"}, "'.json' has no name to be printed under."},
        {{"one.json", "two.json"},
         "Unexpected argument 'two.json': several FILEs are only printed, with --headless and "
         "--print or --print-images."},
        {{"--headless", "one.json", "two.json"},
         "Unexpected argument 'two.json': several FILEs are only printed, with --headless and "
         "--print or --print-images."},
        {{"--headless", "--print", "out", "--state", "-", "one.json", "two.json"},
         "--state takes one FILE, not 2."},
        {{"--headless", "--print", "out", "--database", "d", "one.json", "two.json", "3.json"},
         "--database takes one FILE, not 3."},
        {{"--headless", "--print", "out", "a/one.json", "b/one.json"},
         "'a/one.json' and 'b/one.json' would both be printed as one."},
        {{"--headless", "--print", "page.pdf", "one.json", "two.json"},
         "--print takes a folder for several FILEs, not 'page.pdf'."},
        {{"--page-size", "a5"}, "--page-size takes a4 or letter, not 'a5'."},
        {{"--page-size", ""}, "--page-size takes a4 or letter, not ''."},
        {{"--notation", "roman"}, "--notation takes universal, fdi or palmer, not 'roman'."},
        {{""}, "FILE is the name of a treatment file."},
        {{"--database", ""}, "--database takes the name of a file."},
        {{"--frobnicate"}, "Unknown option 'frobnicate'."},
    };
    for (const Row &row : rows) {
        const auto parsed = parse(row.arguments);
        ASSERT_TRUE(parsed.endsWith) << row.message;
        EXPECT_EQ(*parsed.endsWith, viewer::WrongUse);
        EXPECT_EQ(parsed.message.toStdString(),
                  std::string(row.message) + "\nTry 'treatment-viewer --help'.\n");
    }
}

TEST(CommandLine, theScaleIsAHalfToEight)
{
    for (const char *scale : {"0.5", "8"}) {
        const auto parsed = parse({"--size", "100x100", "--scale", scale});
        EXPECT_EQ(parsed.message, QString());
        EXPECT_EQ(parsed.commandLine.scale, QString::fromLatin1(scale).toDouble());
    }
    for (const char *scale : {"0.49", "8.01"})
        EXPECT_EQ(parse({"--size", "100x100", "--scale", scale}).message.toStdString(),
                  std::string("--scale takes a number from 0.5 to 8, not '") + scale +
                      "'.\nTry 'treatment-viewer --help'.\n");
}

TEST(CommandLine, helpNamesEveryOption)
{
    const auto parsed = parse({"--help"});
    ASSERT_EQ(parsed.endsWith, viewer::Done);
    for (const char *option :
         {"--headless", "--size", "--scale", "--database", "--meshes", "--picture", "--print",
          "--print-images", "--page-size", "--portrait", "--greyscale", "--notation", "--play",
          "--state", "--export", "--help", "--version"})
        EXPECT_TRUE(parsed.message.contains(QString::fromUtf8(option))) << option;
}

TEST(CommandLine, versionNamesTheProgramAndItsVersion)
{
    const auto parsed = parse({"--version"});
    ASSERT_EQ(parsed.endsWith, viewer::Done);
    EXPECT_EQ(parsed.message.toStdString(), "treatment-viewer 0.1.0\n");
}

TEST(CommandLine, thePageIsLandscapeInColourWithUniversalNumbersUnlessAskedFor)
{
    const auto usual = parse({}).commandLine.page;
    EXPECT_EQ(usual.layout.orientation(), QPageLayout::Landscape);
    EXPECT_EQ(usual.notation, viewer::ToothNotation::Universal);
    EXPECT_FALSE(usual.isNotationGiven);
    EXPECT_FALSE(usual.greyscale);
    const auto other =
        parse({"--page-size", "letter", "--portrait", "--greyscale", "--notation", "fdi"})
            .commandLine.page;
    EXPECT_EQ(other.layout.pageSize().id(), QPageSize::Letter);
    EXPECT_EQ(other.layout.orientation(), QPageLayout::Portrait);
    EXPECT_EQ(other.layout.margins(QPageLayout::Millimeter), QMarginsF(15.0, 15.0, 15.0, 15.0));
    EXPECT_EQ(other.notation, viewer::ToothNotation::FDI);
    EXPECT_TRUE(other.isNotationGiven);
    EXPECT_TRUE(other.greyscale);
    EXPECT_EQ(parse({"--page-size", "a4"}).commandLine.page.layout.pageSize().id(), QPageSize::A4);
}

TEST(CommandLine, severalFilesAreOneRunEachUnderTheNameOfTheFile)
{
    const auto parsed = parse({"--headless", "--print", "pages", "--print-images", "pictures",
                               "day/smith.json", "day/o.neil.json"});
    ASSERT_FALSE(parsed.endsWith) << parsed.message.toStdString();
    const auto runs = viewer::runsOf(parsed.commandLine);
    ASSERT_EQ(runs.size(), 2u);
    EXPECT_EQ(runs[0].file, "day/smith.json");
    EXPECT_EQ(runs[0].print, "pages/smith.pdf");
    EXPECT_EQ(runs[0].printImages, "pictures/smith");
    EXPECT_EQ(runs[1].file, "day/o.neil.json");
    EXPECT_EQ(runs[1].print, "pages/o.neil.pdf");
    EXPECT_EQ(runs[1].printImages, "pictures/o.neil");
}

TEST(CommandLine, aSingleFileIsPrintedIntoAFolderToo)
{
    const QTemporaryDir folder;
    const auto one = parse({"--headless", "--print", folder.path(), "day/smith.json"});
    const auto runs = viewer::runsOf(one.commandLine);
    ASSERT_EQ(runs.size(), 1u);
    EXPECT_EQ(runs[0].print, folder.filePath("smith.pdf"));
    const auto sample = viewer::runsOf(parse({"--headless", "--print", folder.path()}).commandLine);
    ASSERT_EQ(sample.size(), 1u);
    EXPECT_EQ(sample[0].print, folder.filePath("sample.pdf"));
    EXPECT_EQ(sample[0].file, "");
    EXPECT_EQ(viewer::runsOf(parse({"--print", "page.pdf"}).commandLine)[0].print, "page.pdf");
}

TEST(CommandLine, anOutThatDoesNotEndInPdfIsAFolderForASingleFileToo)
{
    const auto printOf = [](const QString &out, const QString &file) {
        const auto runs = viewer::runsOf(parse({"--headless", "--print", out, file}).commandLine);
        return runs.size() == 1 ? runs[0].print : QString();
    };
    EXPECT_EQ(printOf("pages", "day/smith.json"), "pages/smith.pdf");
    EXPECT_EQ(printOf("pages/", "day/smith.json"), "pages/smith.pdf");
    EXPECT_EQ(printOf("pages.pdf/", "day/smith.json"), "pages.pdf/smith.pdf");
    EXPECT_EQ(printOf("page.pdf", "day/smith.json"), "page.pdf");
    EXPECT_EQ(printOf("PAGE.PDF", "day/smith.json"), "PAGE.PDF");
    // What is there and is no folder is written to as it is.
    EXPECT_EQ(printOf("/dev/null", "day/smith.json"), "/dev/null");
    // A run of one is such a run already.
    const auto runs =
        viewer::runsOf(parse({"--headless", "--print", "pages", "smith.json"}).commandLine);
    EXPECT_FALSE(viewer::printsIntoFolder(runs.at(0)));
    EXPECT_EQ(viewer::runsOf(runs[0])[0].print, "pages/smith.pdf");
}

TEST(CommandLine, picturesBesidePagesInAFolderAreInAFolderForEachFile)
{
    const auto run = [](const QStringList &outputs) {
        return viewer::runsOf(
            parse(QStringList{"--headless", "smith.json"} + outputs).commandLine)[0];
    };
    EXPECT_EQ(run({"--print", "pages", "--print-images", "pictures"}).printImages,
              "pictures/smith");
    EXPECT_EQ(run({"--print", "page.pdf", "--print-images", "pictures"}).printImages, "pictures");
    EXPECT_EQ(run({"--print-images", "pictures"}).printImages, "pictures");
}
