#include "tests/house/OutputCheck.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QImage>

namespace {

using namespace kelo::test;

/// 20 by 20 pixels, of which the first `shownCount`, from the second on, differ from the corner.
QByteArray pictureShowing(int shownCount)
{
    QImage picture(20, 20, QImage::Format_RGB32);
    picture.fill(qRgb(10, 20, 30));
    for (int i = 1; i <= shownCount; ++i)
        picture.setPixel(i % 20, i / 20, qRgb(200, 100, 50));
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, "PNG");
    return png;
}

TEST(OutputCheck, aPictureThatShowsSomethingIsWhole)
{
    EXPECT_EQ(problemWithPNG(pictureShowing(150)), "");
    EXPECT_EQ(problemWithPNG(pictureShowing(4)), "");
}

TEST(OutputCheck, aPictureOfOneColourIsTold)
{
    EXPECT_EQ(problemWithPNG(pictureShowing(0)), "shows nothing but one colour");
    EXPECT_EQ(problemWithPNG(pictureShowing(3)), "shows nothing but one colour");
}

TEST(OutputCheck, aCutPictureIsTold)
{
    const QByteArray whole = pictureShowing(150);
    EXPECT_EQ(problemWithPNG(whole.left(whole.size() - 1)), "ends before its end chunk");
    EXPECT_EQ(problemWithPNG(whole.mid(1)), "does not start as a PNG");
    EXPECT_EQ(problemWithPNG({}), "does not start as a PNG");
}

TEST(OutputCheck, aPictureWithoutItsMiddleIsTold)
{
    const QByteArray whole = pictureShowing(150);
    EXPECT_EQ(problemWithPNG(whole.left(8) + whole.right(12)), "does not decode");
}

TEST(OutputCheck, aPDFNeedsHeaderPageAndEnd)
{
    const QByteArray page = "%PDF-1.4\n1 0 obj <</Type /Pages>>\n2 0 obj <</Type /Page>>\n%%EOF\n";
    EXPECT_EQ(problemWithPDF(page), "");
    EXPECT_EQ(problemWithPDF("%PDF-1.4\n1 0 obj <</Type /Pages>>\n%%EOF\n"), "has no page");
    EXPECT_EQ(problemWithPDF(page.left(page.size() - 3)), "ends before its end mark");
    EXPECT_EQ(problemWithPDF("PDF"), "does not start as a PDF");
}

TEST(OutputCheck, aSceneNeedsGroupsVerticesAndFaces)
{
    EXPECT_EQ(problemWithOBJ("o tooth_8\nv 0 0 0\nf 1 1 1\n"), "");
    EXPECT_EQ(problemWithOBJ("v 0 0 0\nf 1 1 1\n"), "has no line that starts with 'o '");
    EXPECT_EQ(problemWithOBJ("o tooth_8\nv 0 0 0\n"), "has no line that starts with 'f '");
    EXPECT_EQ(problemWithOBJ("o tooth_8\nv 0 0 0\nf 1 1 1"), "ends within a line");
}

TEST(OutputCheck, aMissingFileAndAnUnknownKindAreTold)
{
    EXPECT_EQ(problemWithFile("no/such/file.png"), "cannot be read");
    EXPECT_EQ(problemWithFile(__FILE__), "is of a kind that cannot be checked");
}

} // namespace
