#include "viewer/MainWindow.h"

#include "keloOpenGL/keloOpenGL.h"
#include "viewer/ChangeLogDialog.h"
#include "viewer/DateBar.h"
#include "viewer/ElasticNameSheet.h"
#include "viewer/OpenedTreatment.h"
#include "viewer/OutputFile.h"
#include "viewer/PrintRequest.h"
#include "viewer/StandardView.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QCloseEvent>
#include <QFileDialog>
#include <QImage>
#include <QMenuBar>
#include <QMessageBox>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QSettings>
#include <QTimer>
#include <QVBoxLayout>

#include <utility>

namespace viewer {
namespace {

/// The tooth notation that the user chose, in the user's settings.
const QString notationKey = QStringLiteral("toothNotation");

} // namespace

MainWindow::MainWindow(const QSize &viewSize)
    : view_(kelo::makeView<kelo::DXOpenGL>(kelo::Rect{
          {0.0, 0.0},
          {static_cast<double>(viewSize.width()), static_cast<double>(viewSize.height())}}))
{
    QWidget *container = view_->createContainer(this);
    container->setAccessibleName(tr("Treatment view"));
    dates_ = new DateBar;
    auto *middle = new QWidget;
    auto *layout = new QVBoxLayout(middle);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(container, 1);
    layout->addWidget(dates_);
    setCentralWidget(middle);
    connect(dates_, &DateBar::dateChosen, this, &MainWindow::showDate);
    connect(dates_, &DateBar::approvalChosen, this, &MainWindow::approve);
    qApp->installEventFilter(this);
    delegate_.toggleFullScreenMode = [this](kelo::DXOpenGL &) { toggleFullScreen(); };
    takePrintRequests(delegate_, [this](const PrintRequest &request) { preview(request); });
    delegate_.launchElasticsConfigAssociationSheetWithElasticModel_namingAction =
        [this](const std::shared_ptr<kelo::ElasticModel> &elastic, int) { askForName(elastic); };
    view_->setDelegate(&delegate_);
    makeMenus();
    setWindowTitle(tr("Treatment viewer"));
    // The menu bar's height is only known once it is laid out.
    resize(viewSize.width(),
           viewSize.height() + menuBar()->sizeHint().height() + dates_->sizeHint().height());
}

MainWindow::~MainWindow()
{
    view_->setDelegate(nullptr);
}

void MainWindow::makeMenus()
{
    QMenu *file = menuBar()->addMenu(tr("&File"));
    save_ = file->addAction(tr("&Save Treatment"), this, &MainWindow::saveTreatment);
    save_->setShortcut(QKeySequence::Save);
    save_->setEnabled(false);
    file->addAction(tr("&Export Treatment…"), this, &MainWindow::exportTreatment);
    file->addAction(tr("Save &Picture…"), this, &MainWindow::savePicture);
    QAction *print = file->addAction(tr("&Print…"), this, [this] { view_->submitPrintRequest(); });
    print->setShortcut(QKeySequence::Print);
    file->addAction(tr("Save Page as P&DF…"), this, &MainWindow::savePage);
    file->addSeparator();
    QAction *quit = file->addAction(tr("&Quit"), this, &QWidget::close);
    quit->setShortcut(QKeySequence::Quit);

    makeEditMenu();
    QMenu *viewMenu = menuBar()->addMenu(tr("&View"));
    QAction *fit = viewMenu->addAction(tr("&Zoom to Fit"), this, [this] { view_->zoomToFit(); });
    fit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_0));
    QAction *fullScreen =
        viewMenu->addAction(tr("&Full Screen"), this, &MainWindow::toggleFullScreen);
    fullScreen->setShortcut(QKeySequence(Qt::Key_F11));
    viewMenu->addSeparator();
    makeStandardViewRows(*viewMenu);
    viewMenu->addSeparator();
    makeScenePartRows(*viewMenu->addMenu(tr("Sho&w")));
    makeNotationMenu(*viewMenu->addMenu(tr("&Tooth Numbers")));
}

void MainWindow::makeEditMenu()
{
    QMenu *edit = menuBar()->addMenu(tr("&Edit"));
    QAction *undo = history_.stack().createUndoAction(this, tr("&Undo"));
    undo->setShortcut(QKeySequence::Undo);
    edit->addAction(undo);
    QAction *redo = history_.stack().createRedoAction(this, tr("&Redo"));
    redo->setShortcut(QKeySequence::Redo);
    edit->addAction(redo);
    edit->addSeparator();
    QAction *copy = edit->addAction(tr("&Copy Picture"), this, [this] {
        QGuiApplication::clipboard()->setImage(view_->grabImage());
    });
    copy->setShortcut(QKeySequence::Copy);
    edit->addSeparator();
    edit->addAction(tr("C&hanges…"), this, &MainWindow::showChanges);
}

bool MainWindow::eventFilter(QObject *object, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        QTimer::singleShot(0, this, [this] { history_.noticeChanges(); });
        break;
    default:
        break;
    }
    return QMainWindow::eventFilter(object, event);
}

void MainWindow::askForName(const std::shared_ptr<kelo::ElasticModel> &elastic)
{
    if (!treatment_) return;
    const auto own = elastic->elasticsConfigType();
    QStringList teeth;
    for (const std::string &key : elastic->bracketSequence())
        teeth << toothName(key, pageSettings().notation);
    const QString question =
        tr("Name of the elastic %1:").arg(teeth.join(QStringLiteral(" \u2013 ")));
    auto *sheet = new ElasticNameSheet(
        question, own ? QString::fromStdString(own->typeLabel) : QString(),
        [this, own](const QString &name) { return treatment_->nameProblem(name, own.get()); },
        this);
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    connect(sheet, &QDialog::accepted, this, [this, sheet, elastic] {
        const QString failure = treatment_->nameElastic(elastic, sheet->name());
        if (!failure.isEmpty()) tell(failure);
    });
    sheet->open();
}

void MainWindow::showDate(const QDate &date)
{
    if (!treatment_) return;
    history_.noticeChanges();
    const QStringList sentences = treatment_->showDate(*view_, date);
    dates_->setCurrentDate(treatment_->session().date());
    noteWasChosen();
    if (!sentences.isEmpty()) tell(sentences.join(QLatin1Char('\n')));
}

void MainWindow::approve(bool isApproved)
{
    if (!treatment_) return;
    treatment_->setApproved(*view_, isApproved);
    noteWasChosen();
}

void MainWindow::noteWasChosen()
{
    const auto &session = treatment_->session();
    const bool mayEdit = session.date() == treatment_->today() && !session.approvedDate();
    // Steps belong to the note that they were made in.
    history_.watch(mayEdit ? treatment_->document() : nullptr);
    dates_->setApproval(session.approvedDate());
}

void MainWindow::showChanges()
{
    if (!treatment_) return;
    const auto changes = treatment_->changes();
    if (!changes) {
        tell(changes.sentence());
        return;
    }
    ChangeLogDialog(changes.value(), *treatment_->document(), pageSettings().notation, this).exec();
}

void MainWindow::makeStandardViewRows(QMenu &menu)
{
    int key = Qt::Key_1;
    for (const StandardView standardView : standardViews) {
        QAction *action = menu.addAction(titleOfStandardView(standardView), this,
                                         [=, this] { showStandardView(*view_, standardView); });
        action->setShortcut(QKeySequence(Qt::CTRL | static_cast<Qt::Key>(key++)));
    }
}

void MainWindow::makeScenePartRows(QMenu &menu)
{
    const std::pair<kelo::ScenePart, QString> titles[] = {
        {kelo::ScenePart::UpperArch, tr("&Upper Arch")},
        {kelo::ScenePart::LowerArch, tr("&Lower Arch")},
        {kelo::ScenePart::Gums, tr("&Gums")},
        {kelo::ScenePart::Brackets, tr("&Brackets")},
        {kelo::ScenePart::Buttons, tr("Lingual Bu&ttons")},
        {kelo::ScenePart::Elastics, tr("&Elastics")},
    };
    for (const auto &[part, title] : titles) {
        QAction *action = menu.addAction(title);
        action->setCheckable(true);
        connect(action, &QAction::triggered, this,
                [this, part = part](bool shows) { view_->setShowsScenePart(part, shows); });
        // Standard views show and leave out arches too.
        connect(&menu, &QMenu::aboutToShow, action,
                [this, action, part = part] { action->setChecked(view_->showsScenePart(part)); });
    }
}

void MainWindow::makeNotationMenu(QMenu &menu)
{
    auto *group = new QActionGroup(&menu);
    const std::pair<ToothNotation, QString> titles[] = {
        {ToothNotation::Universal, tr("&Universal")},
        {ToothNotation::FDI, tr("&FDI")},
        {ToothNotation::Palmer, tr("&Palmer")},
    };
    for (const auto &[notation, title] : titles) {
        QAction *action = menu.addAction(title, this, [this, notation = notation] {
            QSettings().setValue(notationKey, nameOfToothNotation(notation));
            history_.setNotation(notation);
        });
        action->setCheckable(true);
        action->setChecked(notation == pageSettings().notation);
        group->addAction(action);
    }
}

void MainWindow::showTreatment(std::shared_ptr<OpenedTreatment> treatment)
{
    treatment_ = std::move(treatment);
    treatment_->callLog().logCallsOf(delegate_);
    treatment_->session().failureHandler = [this](const QString &sentence) { tell(sentence); };
    setWindowTitle(tr("%1 - Treatment viewer").arg(treatment_->patientName()));
    save_->setEnabled(!treatment_->file().isEmpty());
    treatment_->showIn(*view_);
    history_.setNotation(pageSettings().notation);
    dates_->setDates(treatment_->dates(), treatment_->today());
    noteWasChosen();
    if (!treatment_->sentences().isEmpty()) tell(treatment_->sentences().join(QLatin1Char('\n')));
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    view_->finishOperations(); // an elastic that is being strung is placed, not lost
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

void MainWindow::preview(const PrintRequest &request)
{
    if (!treatment_) return;
    TreatmentPage page = sharpTreatmentPage(request, *view_, *treatment_, pageSettings());
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageLayout(defaultPageLayout());
    printer.setDocName(windowTitle());
    QPrintPreviewDialog dialog(&printer, this);
    dialog.setWindowTitle(tr("Print"));
    bool isPainted = true;
    connect(&dialog, &QPrintPreviewDialog::paintRequested, this, [&](QPrinter *device) {
        page.greyscale = device->colorMode() == QPrinter::GrayScale;
        isPainted = paintTreatmentPage(page, *device) > 0;
    });
    if (dialog.exec() == QDialog::Accepted && !isPainted) {
        const QString target =
            printer.outputFileName().isEmpty() ? printer.printerName() : printer.outputFileName();
        tell(tr("The page could not be printed: %1 cannot be written to.").arg(target));
    }
}

void MainWindow::savePage()
{
    if (!treatment_) return;
    const QString path =
        QFileDialog::getSaveFileName(this, tr("Save Page as PDF"), QString(), tr("Pages (*.pdf)"));
    if (path.isEmpty()) return;
    const auto request = printRequestOf(*view_);
    if (!request) return; // the view has told why
    const PageSettings settings = pageSettings();
    const TreatmentPage page = sharpTreatmentPage(*request, *view_, *treatment_, settings);
    const QString failure = writeWholeFile(path, treatmentPageAsPDF(page, settings.layout));
    if (!failure.isEmpty()) tell(failure);
}

PageSettings MainWindow::pageSettings() const
{
    PageSettings settings;
    const QString name = QSettings().value(notationKey).toString();
    settings.notation = toothNotationFromName(name).value_or(ToothNotation::Universal);
    return settings;
}

void MainWindow::toggleFullScreen()
{
    if (view_->isInFullScreenMode())
        view_->exitFullScreenModeWithOptions();
    else
        view_->enterFullScreenMode();
}

} // namespace viewer
