// Printing and saving the treatment page from a window, on a display.

#include "tests/support/GLTest.h"
#include "tests/support/TestSurface.h"
#include "tests/support/WindowTest.h"
#include "tests/viewer/support/PDFPages.h"
#include "tests/viewer/support/PreferencesFixture.h"
#include "viewer/page/PagePreview.h"
#include "viewer/settings/Preferences.h"
#include "viewer/windows/InterfaceFiles.h"
#include "viewer/windows/OpenTreatments.h"
#include "viewer/windows/TreatmentWindow.h"

#include <QMessageBox>
#include <QPrintPreviewWidget>
#include <QTimer>

namespace {

using namespace viewer;
using kelo::test::waitUntil;
using viewer::test::PDFPages;

class PageWindows : public testing::Test
{
protected:
    PageWindows()
    {
        addViewerInterfaceFiles();
        commandLine.database = QStringLiteral(":memory:");
        commandLine.size = {400.0, 300.0};
        commandLine.isSizeGiven = true;
    }
    ~PageWindows() override
    {
        all.reset();
        kelo::removeInterfaceFileFolders();
    }

    TreatmentWindow &open()
    {
        all = std::make_unique<OpenTreatments>(commandLine);
        TreatmentWindow &window = *all->openFirst().mainWindow();
        EXPECT_TRUE(waitUntil([&] { return window.view().isExposed(); }));
        return window;
    }

    /// Looks at the preview that the next print request opens, and closes it.
    void whenPreviewOpens(const std::function<void(QPrintPreviewDialog &)> &look)
    {
        QTimer::singleShot(0, &receiver, [this, look] {
            auto *dialog = qobject_cast<QPrintPreviewDialog *>(QApplication::activeModalWidget());
            if (!dialog) return whenPreviewOpens(look);
            look(*dialog);
            dialog->accept();
        });
    }

    /// What the box that is shown last says.
    static QString saidInABox()
    {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            auto *box = qobject_cast<QMessageBox *>(widget);
            if (box && box->isVisible()) return box->text();
        }
        return {};
    }

    static void printIntoFile(QPrintPreviewDialog &dialog, const QString &file)
    {
        dialog.printer()->setOutputFormat(QPrinter::PdfFormat);
        dialog.printer()->setOutputFileName(file);
        dialog.findChild<QPrintPreviewWidget *>()->print();
    }

    kelo::test::TestSurface surface{kelo::SurfaceKind::Window};
    viewer::test::PreferencesOfTheTest settings;
    QTemporaryDir folder;
    CommandLine commandLine;
    std::unique_ptr<OpenTreatments> all;
    QObject receiver;
};

TEST_F(PageWindows, thePreviewBeginsWithTheProgramsPageOptions)
{
    commandLine.page.layout.setPageSize(QPageSize(QPageSize::Letter));
    commandLine.page.layout.setOrientation(QPageLayout::Portrait);
    commandLine.page.greyscale = true;
    TreatmentWindow &window = open();
    int looks = 0;
    whenPreviewOpens([&](QPrintPreviewDialog &dialog) {
        ++looks;
        EXPECT_EQ(dialog.printer()->pageLayout().pageSize().id(), QPageSize::Letter);
        EXPECT_EQ(dialog.printer()->pageLayout().orientation(), QPageLayout::Portrait);
        EXPECT_EQ(dialog.printer()->colorMode(), QPrinter::GrayScale);
        EXPECT_EQ(dialog.printer()->docName(), "Sample Patient (S-1) - Treatment viewer");
    });
    window.view().submitPrintRequest();
    EXPECT_EQ(looks, 1);
    EXPECT_EQ(saidInABox(), QString());
    EXPECT_NO_GL_ERROR();
}

TEST_F(PageWindows, anExplicitNotationWinsOverThePreferredOne)
{
    Preferences::preferences().setNotation(ToothNotation::Palmer);
    // The sample patient has an elastic from 6 to 30, which are 13 and 46 in FDI numbers.
    const auto textOfPage = [this] {
        TreatmentWindow &window = open();
        const QString file = folder.filePath("page.pdf");
        whenPreviewOpens([&](QPrintPreviewDialog &dialog) { printIntoFile(dialog, file); });
        window.view().submitPrintRequest();
        QFile page(file);
        EXPECT_TRUE(page.open(QIODevice::ReadOnly));
        return PDFPages(page.readAll()).text();
    };
    EXPECT_FALSE(textOfPage().contains("13 \u2013 46"));
    commandLine.page.notation = ToothNotation::FDI;
    commandLine.page.isNotationGiven = true;
    EXPECT_TRUE(textOfPage().contains("13 \u2013 46"));
    EXPECT_NO_GL_ERROR();
}

TEST_F(PageWindows, aPageThatCannotBeWrittenIsToldInABox)
{
    TreatmentWindow &window = open();
    const QString file = folder.filePath("no such folder/page.pdf");
    whenPreviewOpens([&](QPrintPreviewDialog &dialog) { printIntoFile(dialog, file); });
    window.view().submitPrintRequest();
    EXPECT_EQ(saidInABox().toStdString(),
              file.toStdString() + ": could not be written: No such file or directory");
    EXPECT_NO_GL_ERROR();
}

} // namespace
