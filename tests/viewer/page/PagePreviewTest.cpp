// The print preview of the treatment page, and what it prints into a file. Without a display:
// nothing here is shown.

#include "viewer/page/PagePreview.h"

#include "tests/viewer/support/PDFPages.h"

#include <QAction>
#include <QFile>
#include <QLabel>
#include <QPrintPreviewWidget>
#include <QPrinterInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <csignal>

using namespace viewer;
using viewer::test::hasColour;
using viewer::test::PDFPages;

namespace {

TreatmentPage page()
{
    TreatmentPage page;
    page.patientName = "Sample Patient";
    page.patientIdentifier = "S-1";
    page.date = QDate(2026, 11, 20);
    for (PrintedSide *side : {&page.right, &page.front, &page.left}) {
        side->picture = QImage(side == &page.front ? 800 : 725, 400, QImage::Format_RGB888);
        side->picture.fill(Qt::red);
    }
    return page;
}

PageSettings uprightLetter()
{
    PageSettings settings;
    settings.layout.setPageSize(QPageSize(QPageSize::Letter));
    settings.layout.setOrientation(QPageLayout::Portrait);
    return settings;
}

/// Prints as the preview's own button does once a file is chosen.
void printIntoFile(PagePreview &preview, const QString &file)
{
    preview.printer().setOutputFormat(QPrinter::PdfFormat);
    preview.printer().setOutputFileName(file);
    preview.dialog().findChild<QPrintPreviewWidget *>()->print();
}

QByteArray pageFileContent(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// While it lives, no file of this program can grow beyond some bytes, as on a full disk.
class FullDisk
{
public:
    explicit FullDisk(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &kept_);
        keptHandler_ = std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{bytes, kept_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &kept_);
        std::signal(SIGXFSZ, keptHandler_);
    }
    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

private:
    rlimit kept_{};
    void (*keptHandler_)(int) = nullptr;
};

TEST(PagePreview, paperOrientationAndGreyscaleAreThoseOfTheSettingsAtFirst)
{
    PageSettings settings = uprightLetter();
    settings.greyscale = true;
    PagePreview preview(page(), settings, "Sample Patient", nullptr);
    EXPECT_EQ(preview.printer().pageLayout().pageSize().id(), QPageSize::Letter);
    EXPECT_EQ(preview.printer().pageLayout().orientation(), QPageLayout::Portrait);
    EXPECT_EQ(preview.printer().colorMode(), QPrinter::GrayScale);
    EXPECT_EQ(preview.printer().docName(), "Sample Patient");
    EXPECT_EQ(preview.dialog().windowTitle(), "Print");
    const auto *shown = preview.dialog().findChild<QPrintPreviewWidget *>();
    EXPECT_EQ(shown->orientation(), QPageLayout::Portrait);
    PagePreview landscape(page(), PageSettings(), "Sample Patient", nullptr);
    // The preview's buttons for the orientation are a pair of which one is down.
    const auto isDown = [](PagePreview &one, const char *text) {
        for (const QAction *action : one.dialog().findChildren<QAction *>()) {
            if (action->text() == QLatin1String(text)) return action->isChecked();
        }
        return false;
    };
    EXPECT_TRUE(isDown(preview, "Portrait"));
    EXPECT_FALSE(isDown(preview, "Landscape"));
    EXPECT_TRUE(isDown(landscape, "Landscape"));
    EXPECT_FALSE(isDown(landscape, "Portrait"));
}

TEST(PagePreview, printedIntoAFileItIsAWholePageOnThatPaper)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("page.pdf");
    PagePreview preview(page(), uprightLetter(), "Sample Patient", nullptr);
    printIntoFile(preview, file);
    EXPECT_EQ(preview.failure(), QString());
    const QByteArray pdf = pageFileContent(file);
    EXPECT_TRUE(pdf.trimmed().endsWith("%%EOF"));
    const PDFPages pages(pdf);
    EXPECT_TRUE(pages.information().contains("612 x 792 pts (letter)"));
    EXPECT_TRUE(pages.text().contains("Sample Patient (S-1)"));
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{"page.pdf"});
}

TEST(PagePreview, whatTheUserChoosesOnThePrinterIsPrinted)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("page.pdf");
    PagePreview preview(page(), PageSettings(), "Sample Patient", nullptr);
    preview.printer().setColorMode(QPrinter::Color);
    printIntoFile(preview, file);
    EXPECT_TRUE(hasColour(PDFPages(pageFileContent(file)).pictures().at(0)));
    preview.printer().setColorMode(QPrinter::GrayScale);
    preview.printer().setPageSize(QPageSize(QPageSize::A5));
    printIntoFile(preview, file);
    EXPECT_EQ(preview.failure(), QString());
    const PDFPages pages(pageFileContent(file));
    EXPECT_FALSE(hasColour(pages.pictures().at(0)));
    EXPECT_TRUE(pages.information().contains("595 x 420 pts")) << pages.information().toStdString();
}

TEST(PagePreview, aPlaceThatCannotBeWrittenToIsASentence)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("no such folder/page.pdf");
    PagePreview preview(page(), PageSettings(), "Sample Patient", nullptr);
    printIntoFile(preview, file);
    EXPECT_EQ(preview.failure().toStdString(),
              file.toStdString() + ": could not be written: No such file or directory");
    printIntoFile(preview, folder.filePath("page.pdf"));
    EXPECT_EQ(preview.failure(), QString()) << "the next attempt counts";
}

TEST(PagePreview, aFullDiskIsASentenceAndLeavesTheEarlierPageWhole)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("page.pdf");
    PagePreview preview(page(), PageSettings(), "Sample Patient", nullptr);
    printIntoFile(preview, file);
    const QByteArray earlier = pageFileContent(file);
    ASSERT_GT(earlier.size(), 4096);
    {
        const FullDisk disk(4096);
        printIntoFile(preview, file);
    }
    EXPECT_EQ(preview.failure().toStdString(),
              file.toStdString() + ": could not be written: File too large");
    EXPECT_EQ(pageFileContent(file), earlier);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{"page.pdf"});
}

TEST(PagePreview, thePreviewItselfWritesNothing)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("page.pdf");
    PagePreview preview(page(), PageSettings(), "Sample Patient", nullptr);
    preview.printer().setOutputFormat(QPrinter::PdfFormat);
    preview.printer().setOutputFileName(file);
    int painted = 0;
    QObject::connect(&preview.dialog(), &QPrintPreviewDialog::paintRequested, &preview.dialog(),
                     [&painted] { ++painted; });
    auto *widget = preview.dialog().findChild<QPrintPreviewWidget *>();
    widget->show(); // a preview paints once it is seen
    widget->updatePreview();
    EXPECT_GT(painted, 0);
    EXPECT_EQ(widget->pageCount(), 1);
    EXPECT_FALSE(QFile::exists(file));
    EXPECT_EQ(preview.failure(), QString());
}

TEST(PagePreview, whereThereIsNoPrinterItSaysSoAndOffersTheFile)
{
    EXPECT_EQ(noPrinterSentence({}),
              "There is no printer: the page can be printed into a PDF file.");
    EXPECT_EQ(noPrinterSentence({"Office"}), QString());
    PagePreview preview(page(), PageSettings(), "Sample Patient", nullptr);
    const auto *label = preview.dialog().findChild<QLabel *>("noPrinter");
    ASSERT_NE(label, nullptr);
    const QStringList printers = QPrinterInfo::availablePrinterNames();
    EXPECT_EQ(label->text(), noPrinterSentence(printers));
    EXPECT_EQ(label->isHidden(), !printers.isEmpty());
    EXPECT_EQ(preview.printer().outputFormat() == QPrinter::PdfFormat, printers.isEmpty());
}

} // namespace
