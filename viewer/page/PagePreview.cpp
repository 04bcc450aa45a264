#include "viewer/page/PagePreview.h"

#include <QBoxLayout>
#include <QCoreApplication>
#include <QLabel>
#include <QPaintEngine>
#include <QPrinterInfo>

#include <utility>

namespace viewer {
namespace {

/// The texts' context for translators.
struct PagePreviewText
{
    Q_DECLARE_TR_FUNCTIONS(PagePreview)
};

/// The preview's buttons show what the printer is set to when the preview is made.
QPrinter *prepared(QPrinter &printer, const PageSettings &settings, const QString &title)
{
    printer.setPageLayout(settings.layout);
    printer.setDocName(title);
    // Otherwise it is the printer's own: many print no colours at all.
    if (settings.greyscale) printer.setColorMode(QPrinter::GrayScale);
    return &printer;
}

/// While a preview is made, the printer records what is painted instead of printing it.
bool isPreviewing(const QPrinter &device)
{
    return device.paintEngine()->type() == QPaintEngine::Picture;
}

} // namespace

QString noPrinterSentence(const QStringList &printerNames)
{
    if (!printerNames.isEmpty()) return {};
    return PagePreviewText::tr("There is no printer: the page can be printed into a PDF file.");
}

PagePreview::PagePreview(TreatmentPage page, const PageSettings &settings, const QString &title,
                         QWidget *parent)
    : page_(std::move(page)),
      printer_(QPrinter::HighResolution),
      dialog_(prepared(printer_, settings, title), parent)
{
    dialog_.setWindowTitle(PagePreviewText::tr("Print"));
    auto *const noPrinter = new QLabel(noPrinterSentence(QPrinterInfo::availablePrinterNames()));
    noPrinter->setObjectName(QStringLiteral("noPrinter"));
    noPrinter->setMargin(noPrinter->fontMetrics().height() / 2);
    noPrinter->setVisible(!noPrinter->text().isEmpty());
    if (auto *const column = qobject_cast<QBoxLayout *>(dialog_.layout()))
        column->insertWidget(0, noPrinter);
    else
        dialog_.layout()->addWidget(noPrinter);
    QObject::connect(&dialog_, &QPrintPreviewDialog::paintRequested, &dialog_,
                     [this](QPrinter *device) { paint(*device); });
}

QString PagePreview::exec()
{
    return dialog_.exec() == QDialog::Accepted ? failure_ : QString();
}

void PagePreview::paint(QPrinter &device)
{
    page_.greyscale = device.colorMode() == QPrinter::GrayScale;
    if (isPreviewing(device))
        paintTreatmentPage(page_, device);
    else
        failure_ = print(device);
}

QString PagePreview::print(QPrinter &device)
{
    // The printer itself would leave a part of a page on a full disk, and not say so.
    const QString file = device.outputFileName();
    if (!file.isEmpty()) return writeTreatmentPage(page_, device.pageLayout(), file);
    if (device.isValid() && paintTreatmentPage(page_, device) > 0) return {};
    return PagePreviewText::tr("The page could not be printed: %1 cannot be written to.")
        .arg(device.printerName());
}

} // namespace viewer
