#include "viewer/page/PrintRequest.h"

#include "viewer/output/PictureFile.h"

#include "tests/keloOpenGL/ViewFixture.h"
#include "tests/support/CapturedOutput.h"
#include "viewer/app/HeadlessRun.h"
#include "viewer/treatment/OpenedTreatment.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <new>

using namespace viewer;

namespace {

QImage filled(int width, QColor color)
{
    QImage image(width, 400, QImage::Format_RGB888);
    image.fill(color);
    return image;
}

PrintRequest request()
{
    PrintRequest request;
    request.left = filled(725, Qt::red);
    request.front = filled(800, Qt::green);
    request.right = filled(725, Qt::blue);
    request.date = QDateTime(QDate(2026, 11, 20), QTime(9, 30));
    request.elasticsRight = {{kelo::Color(0.9, 0.4, 0.1, 1.0), "1/4\"", {"6", "30"}}};
    request.elasticsFront = {{std::nullopt, "", {"8l", "25"}}};
    return request;
}

TEST(PrintRequest, theDelegatesImagesAreCopied)
{
    kelo::DXOpenGLDelegate delegate;
    PrintRequest taken;
    takePrintRequests(delegate, [&taken](const PrintRequest &given) { taken = given; });
    std::vector<uchar> pixels(3 * 4 * 2, 7);
    const QImage borrowing(pixels.data(), 4, 2, 12, QImage::Format_RGB888);
    delegate.printImagesLeft_front_right_forDate_elasticsLeft_front_right(
        borrowing, borrowing, borrowing, request().date, {}, {}, request().elasticsRight);
    pixels.assign(pixels.size(), 99);
    EXPECT_EQ(taken.left.pixelColor(0, 0), QColor(7, 7, 7));
    EXPECT_EQ(taken.front.pixelColor(3, 1), QColor(7, 7, 7));
    EXPECT_EQ(taken.date, request().date);
    ASSERT_EQ(taken.elasticsRight.size(), 1u);
    EXPECT_EQ(taken.elasticsRight[0].brackets, (std::vector<std::string>{"6", "30"}));
}

TEST(PrintRequest, theListsAreJSONBySide)
{
    const QJsonObject object = QJsonDocument::fromJson(elasticsAsJSON(request())).object();
    EXPECT_EQ(object["date"].toString(), "2026-11-20");
    EXPECT_EQ(object["left"].toArray(), QJsonArray());
    const QJsonObject right = object["right"].toArray().at(0).toObject();
    EXPECT_EQ(right["color"].toArray(), (QJsonArray{0.9, 0.4, 0.1, 1.0}));
    EXPECT_EQ(right["name"].toString(), "1/4\"");
    EXPECT_EQ(right["brackets"].toArray(), (QJsonArray{"6", "30"}));
    const QJsonObject front = object["front"].toArray().at(0).toObject();
    EXPECT_TRUE(front["color"].isNull());
    EXPECT_EQ(front["brackets"].toArray(), (QJsonArray{"8l", "25"}));
}

TEST(PrintRequest, theFolderHoldsThreePicturesAndTheLists)
{
    QTemporaryDir parent;
    const QString folder = parent.filePath("made/here");
    EXPECT_EQ(writePrintImages(request(), folder), QString());
    EXPECT_EQ(QImage(folder + "/left.png"), request().left.convertToFormat(QImage::Format_RGB32));
    EXPECT_EQ(QImage(folder + "/front.png").size(), QSize(800, 400));
    EXPECT_EQ(QImage(folder + "/right.png").pixelColor(724, 399), QColor(Qt::blue));
    QFile file(folder + "/elastics.json");
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), elasticsAsJSON(request()));
}

TEST(PrintRequest, aPictureWithoutPixelsIsNamedAndLeavesNoFile)
{
    QTemporaryDir parent;
    PrintRequest broken = request();
    broken.front = QImage();
    EXPECT_EQ(writePrintImages(broken, parent.path()).toStdString(),
              parent.filePath("front.png").toStdString() + ": could not be drawn");
    EXPECT_FALSE(QFile::exists(parent.filePath("front.png")));
}

TEST(PrintRequest, aFolderThatCannotBeMadeIsNamed)
{
    QTemporaryDir parent;
    QFile file(parent.filePath("file"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    const QString folder = parent.filePath("file/folder");
    EXPECT_EQ(writePrintImages(request(), folder), folder + ": the folder could not be made");
}

TEST(PrintRequest, theLeftSideOfThePageIsThePatientsRight)
{
    CommandLine commandLine;
    commandLine.headless = true;
    const OpenedTreatment treatment(commandLine);
    PageSettings settings;
    settings.notation = ToothNotation::Palmer;
    settings.greyscale = true;
    const TreatmentPage page = treatmentPage(request(), treatment, settings);
    EXPECT_EQ(page.notation, ToothNotation::Palmer);
    EXPECT_TRUE(page.greyscale);
    EXPECT_EQ(page.patientName, "Sample Patient");
    EXPECT_EQ(page.patientIdentifier, "S-1");
    EXPECT_EQ(page.date, QDate(2026, 11, 20));
    EXPECT_EQ(page.right.picture, request().left);
    EXPECT_EQ(page.front.picture, request().front);
    EXPECT_EQ(page.left.picture, request().right);
    EXPECT_TRUE(page.right.elastics.empty());
    EXPECT_EQ(page.left.elastics.size(), 1u);
}

TEST(PrintRequest, anUnprintedTreatmentIsNamedByItsFileOrItsOutput)
{
    CommandLine commandLine;
    commandLine.printImages = "pictures";
    EXPECT_EQ(couldNotBePrinted(commandLine), "pictures: the treatment could not be printed");
    commandLine.print = "page.pdf";
    EXPECT_EQ(couldNotBePrinted(commandLine), "page.pdf: the treatment could not be printed");
    commandLine.file = "smith.json";
    EXPECT_EQ(couldNotBePrinted(commandLine), "smith.json: the treatment could not be printed");
}

/// A computer that cannot print, or has no memory for it.
class FailingView : public kelo::DXOpenGL
{
public:
    using kelo::DXOpenGL::DXOpenGL;
    bool hasFramebufferObjects = true;
    bool hasMemory = true;
    void drawContent() override
    {
        if (!hasMemory) throw std::bad_alloc();
        kelo::DXOpenGL::drawContent();
    }

protected:
    std::string openGLExtensions() const override
    {
        return hasFramebufferObjects ? kelo::DXOpenGL::openGLExtensions() : "GL_EXT_texture";
    }
};

class PrintRequests : public kelo::test::ViewFixture
{
protected:
    PrintRequests()
    {
        commandLine.headless = true;
        commandLine.file.clear();
        view->setDelegate(&delegate);
    }
    ~PrintRequests() override { view->setDelegate(nullptr); }

    CommandLine commandLine;
    kelo::DXOpenGLDelegate delegate;
    std::shared_ptr<FailingView> view =
        kelo::makeView<FailingView>(kelo::Rect{{0.0, 0.0}, {400.0, 300.0}});
};

TEST_F(PrintRequests, theViewsOwnDelegateHearsNothingAndIsBackAfterwards)
{
    int heard = 0;
    takePrintRequests(delegate, [&heard](const PrintRequest &) { ++heard; });
    EXPECT_TRUE(printRequestOf(*view));
    EXPECT_EQ(heard, 0);
    EXPECT_EQ(view->delegate(), &delegate);
    EXPECT_NO_GL_ERROR();
}

TEST_F(PrintRequests, theViewsOwnDelegateIsBackAfterARequestThatFailed)
{
    view->hasMemory = false;
    EXPECT_THROW(printRequestOf(*view), std::bad_alloc);
    EXPECT_EQ(view->delegate(), &delegate);
    EXPECT_NO_GL_ERROR();
}

TEST_F(PrintRequests, aComputerThatCannotPrintSaysWhyAndWhatWasNotPrinted)
{
    OpenedTreatment treatment(commandLine);
    treatment.showIn(*view);
    view->hasFramebufferObjects = false;
    QTemporaryDir folder;
    commandLine.print = folder.filePath("page.pdf");
    ExitStatus status = Done;
    const std::string errors =
        kelo::test::standardErrorOf([&] { status = writeOutputs(commandLine, *view, treatment); });
    EXPECT_EQ(status, BadInput);
    EXPECT_EQ(errors, "Printing Not Supported: This computer does not meet the minimum system "
                      "requirements for printing.\n" +
                          commandLine.print.toStdString() +
                          ": the treatment could not be printed\n");
    EXPECT_FALSE(QFile::exists(commandLine.print));
    EXPECT_NO_GL_ERROR();
}

TEST_F(PrintRequests, aViewThatCannotBeDrawnIsASentenceAndNoPicture)
{
    const auto flat = kelo::makeView<kelo::DXOpenGL>(kelo::Rect{{0.0, 0.0}, {0.0, 0.0}});
    QTemporaryDir folder;
    const QString file = folder.filePath("front.png");
    EXPECT_EQ(writePicture(*flat, file).toStdString(),
              file.toStdString() + ": the view could not be drawn");
    EXPECT_FALSE(QFile::exists(file));
    EXPECT_NO_GL_ERROR();
}

} // namespace
