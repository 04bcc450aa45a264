#pragma once

#include "viewer/page/TreatmentPage.h"

#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QString>
#include <QStringList>

namespace viewer {

/// Shows the treatment page as it will be printed, and prints it from there: on a printer, or into
/// a PDF file, which appears whole or not at all. Where there is no printer the preview says so and
/// offers the file. Main thread only.
class PagePreview
{
public:
    /// Paper, orientation and greyscale are those of the settings until the user chooses others.
    PagePreview(TreatmentPage page, const PageSettings &settings, const QString &title,
                QWidget *parent);
    PagePreview(const PagePreview &) = delete;
    PagePreview &operator=(const PagePreview &) = delete;

    /// Open until the user has printed or closed it. Returns what went wrong with the printing, as
    /// a sentence, or an empty string.
    QString exec();

    /// The last problem of printing; an empty string while nothing went wrong.
    const QString &failure() const { return failure_; }
    QPrinter &printer() { return printer_; }
    QPrintPreviewDialog &dialog() { return dialog_; }

private:
    void paint(QPrinter &device);
    QString print(QPrinter &device);

    TreatmentPage page_;
    QPrinter printer_;
    QPrintPreviewDialog dialog_; ///< last: it paints on the printer
    QString failure_;
};

/// What to say when none of these is a printer; an empty string when there are printers.
QString noPrinterSentence(const QStringList &printerNames);

} // namespace viewer
