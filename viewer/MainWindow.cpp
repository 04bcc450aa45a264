#include "viewer/MainWindow.h"

#include "keloOpenGL/keloOpenGL.h"
#include "viewer/OutputFile.h"

#include <QAction>
#include <QBuffer>
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
    QAction *save = file->addAction(tr("Save &Picture…"), this, &MainWindow::savePicture);
    save->setShortcut(QKeySequence::Save);
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

void MainWindow::showTreatment(std::shared_ptr<kelo::DXDocumentModel> document,
                               const QString &patientName)
{
    setWindowTitle(tr("%1 - Treatment viewer").arg(patientName));
    view_->setDocumentModel(std::move(document));
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
