#include "viewer/MainWindow.h"

#include "keloOpenGL/keloOpenGL.h"
#include "viewer/OpenedTreatment.h"
#include "viewer/OutputFile.h"

#include <QAction>
#include <QBuffer>
#include <QCloseEvent>
#include <QFileDialog>
#include <QImage>
#include <QMenuBar>
#include <QMessageBox>

namespace viewer {

MainWindow::MainWindow(const QSize &viewSize)
    : view_(kelo::makeView<kelo::DXOpenGL>(kelo::Rect{
          {0.0, 0.0},
          {static_cast<double>(viewSize.width()), static_cast<double>(viewSize.height())}}))
{
    QWidget *container = view_->createContainer(this);
    container->setAccessibleName(tr("Treatment view"));
    setCentralWidget(container);
    makeMenus();
    setWindowTitle(tr("Treatment viewer"));
    // The menu bar's height is only known once it is laid out.
    resize(viewSize.width(), viewSize.height() + menuBar()->sizeHint().height());
}

MainWindow::~MainWindow() = default;

void MainWindow::makeMenus()
{
    QMenu *file = menuBar()->addMenu(tr("&File"));
    save_ = file->addAction(tr("&Save Treatment"), this, &MainWindow::saveTreatment);
    save_->setShortcut(QKeySequence::Save);
    save_->setEnabled(false);
    file->addAction(tr("&Export Treatment…"), this, &MainWindow::exportTreatment);
    file->addAction(tr("Save &Picture…"), this, &MainWindow::savePicture);
    file->addSeparator();
    QAction *quit = file->addAction(tr("&Quit"), this, &QWidget::close);
    quit->setShortcut(QKeySequence::Quit);

    QMenu *viewMenu = menuBar()->addMenu(tr("&View"));
    QAction *fit = viewMenu->addAction(tr("&Zoom to Fit"), this, [this] { view_->zoomToFit(); });
    fit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_0));
    QAction *fullScreen =
        viewMenu->addAction(tr("&Full Screen"), this, &MainWindow::toggleFullScreen);
    fullScreen->setShortcut(QKeySequence(Qt::Key_F11));
}

void MainWindow::showTreatment(std::shared_ptr<OpenedTreatment> treatment)
{
    treatment_ = std::move(treatment);
    treatment_->session().failureHandler = [this](const QString &sentence) { tell(sentence); };
    setWindowTitle(tr("%1 - Treatment viewer").arg(treatment_->patientName()));
    save_->setEnabled(!treatment_->file().isEmpty());
    treatment_->showIn(*view_);
    if (!treatment_->sentences().isEmpty()) tell(treatment_->sentences().join(QLatin1Char('\n')));
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    if (treatment_ && !(mayCloseFile() && mayCloseStore())) {
        event->ignore();
        return;
    }
    QMainWindow::closeEvent(event);
}

bool MainWindow::mayCloseFile()
{
    if (!treatment_->hasUnsavedChanges()) return true;
    const auto answer = QMessageBox::question(
        this, tr("Unsaved changes"), tr("Save the changes to %1?").arg(treatment_->file()),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
    if (answer == QMessageBox::Save) return saveTreatment();
    return answer == QMessageBox::Discard;
}

bool MainWindow::mayCloseStore()
{
    const StoreOutcome closed = treatment_->session().close();
    if (closed) return true;
    return QMessageBox::warning(this, tr("Changes are not stored"),
                                closed.sentence() + QLatin1Char('\n') +
                                    tr("Close all the same and lose them?"),
                                QMessageBox::Discard | QMessageBox::Cancel,
                                QMessageBox::Cancel) == QMessageBox::Discard;
}

bool MainWindow::saveTreatment()
{
    const QString failure = treatment_->save();
    if (!failure.isEmpty()) tell(failure);
    return failure.isEmpty();
}

void MainWindow::tell(const QString &sentence)
{
    // Not modal: a treatment goes on while its database is out of reach.
    auto *box =
        new QMessageBox(QMessageBox::Warning, windowTitle(), sentence, QMessageBox::Ok, this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}

void MainWindow::exportTreatment()
{
    if (!treatment_) return;
    const QString path = QFileDialog::getSaveFileName(this, tr("Export Treatment"), QString(),
                                                      tr("Treatments (*.json)"));
    const QString failure = path.isEmpty() ? QString() : treatment_->exportTo(path);
    if (!failure.isEmpty()) tell(failure);
}

void MainWindow::savePicture()
{
    const QString path =
        QFileDialog::getSaveFileName(this, tr("Save Picture"), QString(), tr("Pictures (*.png)"));
    if (path.isEmpty()) return;
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    view_->grabImage().save(&buffer, "PNG");
    const QString failure = writeWholeFile(path, png);
    if (!failure.isEmpty()) QMessageBox::warning(this, tr("Save Picture"), failure);
}

void MainWindow::toggleFullScreen()
{
    if (isFullScreen())
        showNormal();
    else
        showFullScreen();
}

} // namespace viewer
