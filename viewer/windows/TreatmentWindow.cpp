#include "viewer/windows/TreatmentWindow.h"

#include "keloOpenGL/keloOpenGL.h"
#include "viewer/output/PictureFile.h"
#include "viewer/page/PagePreview.h"
#include "viewer/page/PrintRequest.h"
#include "viewer/settings/Preferences.h"
#include "viewer/store/DatabaseAdvice.h"
#include "viewer/treatment/OpenedTreatment.h"
#include "viewer/view/ZoomToFit.h"
#include "viewer/windows/ChangeLogDialog.h"
#include "viewer/windows/DateBar.h"
#include "viewer/windows/ElasticNameController.h"
#include "viewer/windows/KeysDialog.h"
#include "viewer/windows/MaterialsPanel.h"
#include "viewer/windows/OpenTreatments.h"
#include "viewer/windows/PatientsDialog.h"
#include "viewer/windows/PlainBox.h"
#include "viewer/windows/ToothChartPanel.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QFileDialog>
#include <QKeyEvent>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPointer>
#include <QScreen>
#include <QTimer>
#include <QToolBar>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace viewer {
namespace {

/// Between the places of windows that open over each other, in points: a title bar stays in sight.
constexpr int distanceOfWindows = 32;

/// What the frames of the usual desktops have at most beside a window and below it, in points.
constexpr int widestBorder = 8;

/// Asks for a file to write; a name without an ending gets this one. Empty when the user cancels.
QString pathForSaving(QWidget *over, const QString &title, const QString &kinds, const char *ending)
{
    QFileDialog dialog(over, title, QString(), kinds);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setDefaultSuffix(QString::fromLatin1(ending));
    if (dialog.exec() != QDialog::Accepted) return {};
    return dialog.selectedFiles().value(0);
}

/// Those among the rows, and in their submenus, that have a key.
QList<QAction *> rowsWithKeys(QList<QAction *> rows)
{
    QList<QAction *> found;
    while (!rows.isEmpty()) {
        QAction *const row = rows.takeFirst();
        if (row->menu()) rows << row->menu()->actions();
        if (!row->shortcut().isEmpty()) found << row;
    }
    return found;
}

} // namespace

QPoint placeBeside(const QRect &first, const QRect &screen, int openWindowCount)
{
    const QPoint steps = QPoint(1, 1) * (openWindowCount * distanceOfWindows);
    // A title bar's height stays free below: how high it is is not known yet.
    const QRect usable = screen.adjusted(0, 0, 0, -distanceOfWindows);
    const QSize size = first.size();
    for (const QPoint &place : {first.topLeft() + steps, usable.topLeft() + steps}) {
        if (usable.contains(QRect(place, size))) return place;
    }
    return usable.topLeft();
}

QSize sizeWithinFrame(const QSize &screen)
{
    return screen - QSize(2 * widestBorder, distanceOfWindows + widestBorder);
}

TreatmentWindow::TreatmentWindow(TreatmentDocument &document, QMainWindow &window,
                                 std::shared_ptr<kelo::DXOpenGL> view, OpenTreatments &all,
                                 const PageSettings &page)
    : document_(document),
      window_(window),
      view_(std::move(view)),
      all_(all),
      treatment_(document.treatment()),
      materials_(treatment_->document()),
      page_(page),
      dateBar_(new QToolBar(tr("Dates"))),
      dates_(new DateBar),
      changes_([this] { applyMaterials(); })
{
    dateBar_->setObjectName(QStringLiteral("dates"));
    dateBar_->setMovable(false);
    dateBar_->toggleViewAction()->setVisible(false);
    dateBar_->addWidget(dates_);
    window_.addToolBar(Qt::BottomToolBarArea, dateBar_);
    // Two patients may have one name.
    const QString number = treatment_->patientIdentifier();
    const QString patient = number.isEmpty() ? treatment_->patientName()
                                             : tr("%1 (%2)").arg(treatment_->patientName(), number);
    window_.setWindowTitle(tr("%1 - Treatment viewer").arg(patient));
    window_.installEventFilter(this);
    // The view's own window has the keyboard in full screen. Without a display there is none.
    if (QWindow *const ofView = view_->window()) ofView->installEventFilter(this);

    connect(dates_, &DateBar::dateChosen, this, &TreatmentWindow::showDate);
    connect(dates_, &DateBar::approvalChosen, this, &TreatmentWindow::approve);
    connect(&Preferences::preferences(), &Preferences::changed, this,
            &TreatmentWindow::preferencesChanged);
    view_->setAnimationTimerStopsAtRest(true); // the window is open all day, mostly at rest
    delegate_.toggleFullScreenMode = [this](kelo::DXOpenGL &) { toggleFullScreen(); };
    takePrintRequests(delegate_, [this](const PrintRequest &request) { preview(request); });
    delegate_.launchElasticsConfigAssociationSheetWithElasticModel_namingAction =
        [this](const std::shared_ptr<kelo::ElasticModel> &elastic, int) { askForName(elastic); };
    delegate_.mayPlaceAgain = [this](const std::shared_ptr<kelo::ElasticsConfigType> &type) {
        return mayPlaceAgain(*type);
    };
    treatment_->callLog().logCallsOf(delegate_);
    view_->setDelegate(&delegate_);
    treatment_->session().failureHandler = [this](const QString &sentence) { tell(sentence); };
    treatment_->showIn(*view_);
    materials_.restoreAllSaved();
    changes_.watch(treatment_->document());
    // After the window's own observer, which was there first: the view's fit suits wide windows.
    kelo::NotificationCenter::defaultCenter().addObserver(
        this, [this](const kelo::Notification &) { zoomToFit(*view_); },
        kelo::zoomToFitNotification, view_.get());
    makeMenus();
    dates_->setDates(treatment_->dates(), treatment_->today());
    noteWasChosen();
    preferencesChanged();
}

TreatmentWindow::~TreatmentWindow()
{
    kelo::NotificationCenter::defaultCenter().removeObserver(this);
    treatment_->session().failureHandler = {};
    view_->setDelegate(nullptr);
}

QSize TreatmentWindow::sizeForView(const kelo::Size &size) const
{
    // The menu bar's height is only known once it is laid out.
    return {static_cast<int>(size.width), static_cast<int>(size.height) +
                                              window_.menuBar()->sizeHint().height() +
                                              dateBar_->sizeHint().height()};
}

void TreatmentWindow::resizeView(const kelo::Size &size)
{
    window_.resize(sizeForView(size));
}

void TreatmentWindow::resizeViewWithinScreen(const kelo::Size &size)
{
    window_.resize(
        sizeForView(size).boundedTo(sizeWithinFrame(window_.screen()->availableGeometry().size())));
}

bool TreatmentWindow::restorePlace(int openWindowCount)
{
    if (!window_.restoreGeometry(Preferences::preferences().windowGeometry())) return false;
    if (openWindowCount > 0 && !window_.isMaximized()) {
        window_.move(placeBeside(window_.geometry(), window_.screen()->availableGeometry(),
                                 openWindowCount));
    }
    return true;
}

void TreatmentWindow::tellAboutOpening()
{
    if (treatment_->sentences().isEmpty()) return;
    tell(treatment_->sentences().join(QLatin1Char('\n')),
         treatment_->isReadOnly() ? adviceOn(treatment_->store()->readOnlyReason()->problem)
                                  : QString());
}

bool TreatmentWindow::close()
{
    return window_.close();
}

bool TreatmentWindow::eventFilter(QObject *object, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Close:
        if (object != &window_) break;
        if (!mayClose()) {
            event->ignore();
            return true;
        }
        break;
    case QEvent::WindowActivate:
        if (object != &window_) break;
        treatment_->bringCatalogueForward();
        if (treatment_->todayIsOver())
            QTimer::singleShot(0, this, &TreatmentWindow::goOnToPresentDay);
        break;
    case QEvent::KeyPress:
        if (object == view_->window() && view_->isInFullScreenMode() &&
            actOnKeyInFullScreen(*static_cast<QKeyEvent *>(event)))
            return true;
        break;
    default:
        break;
    }
    return QObject::eventFilter(object, event);
}

bool TreatmentWindow::actOnKeyInFullScreen(const QKeyEvent &key)
{
    const auto rows = rowsWithKeys(window_.menuBar()->actions());
    const auto found = std::find_if(rows.begin(), rows.end(), [&key](const QAction *row) {
        return row->shortcuts().contains(QKeySequence(key.keyCombination())) && row->isEnabled();
    });
    if (found == rows.end()) return false;
    // Dialogs and panels would open behind the view.
    const bool opensWindow = (*found)->text().endsWith(u'…') || inFrontOfWindow_.contains(*found);
    if (opensWindow) view_->exitFullScreenModeWithOptions();
    const QPointer<QAction> row = *found;
    QTimer::singleShot(0, row, [row] { row->trigger(); }); // not inside of the view's own event
    return true;
}

void TreatmentWindow::applyMaterials()
{
    // A bracket whose colour was removed is like the others again.
    const auto &strung = view_->bracketSequence();
    materials_.apply(strung && !strung->empty() ? strung->front() : std::string());
}

bool TreatmentWindow::mayClose()
{
    view_->finishOperations(); // an elastic that is being strung is placed, not lost
    if (!mayCloseFile() || !mayCloseStore()) return false;
    if (!view_->isInFullScreenMode())
        Preferences::preferences().setWindowGeometry(window_.saveGeometry());
    return true;
}

bool TreatmentWindow::mayCloseFile()
{
    if (!treatment_->hasUnsavedChanges()) return true;
    const auto answer =
        ask(QMessageBox::Question, &window_, tr("Unsaved changes"),
            tr("Save the changes to %1?").arg(treatment_->file()),
            QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
    if (answer == QMessageBox::Save) return saveTreatment();
    return answer == QMessageBox::Discard;
}

bool TreatmentWindow::mayCloseStore()
{
    const StoreOutcome closed = treatment_->session().close();
    if (closed) return true;
    return ask(QMessageBox::Warning, &window_, tr("Changes are not stored"),
               closed.sentence() + QLatin1Char('\n') + tr("Close all the same and lose them?"),
               QMessageBox::Discard | QMessageBox::Cancel,
               QMessageBox::Cancel) == QMessageBox::Discard;
}

void TreatmentWindow::preferencesChanged()
{
    const ToothNotation notation = Preferences::preferences().notation();
    history_.setNotation(notation);
    kelo::ToothLabels labels;
    if (Preferences::preferences().showsToothNumbers()) {
        for (const auto &[key, model] : treatment_->document()->toothModels())
            labels[key] = toothName(key, notation).toStdString();
    }
    view_->setToothLabels(labels);
    kelo::ToothNaming::setNaming([](const std::string &key) {
        return toothName(key, Preferences::preferences().notation()).toStdString();
    });
    if (auto *chart = document_.existingWindowControllerForWindowNibName(ToothChartPanel::name))
        static_cast<ToothChartPanel *>(chart)->setNotation(notation);
}

PageSettings TreatmentWindow::pageSettings() const
{
    PageSettings settings = page_;
    if (!settings.isNotationGiven) settings.notation = Preferences::preferences().notation();
    return settings;
}

void TreatmentWindow::tell(const QString &sentence, const QString &advice)
{
    // Not modal: work continues while the database is out of reach.
    auto *box = new QMessageBox(QMessageBox::Warning, window_.windowTitle(), QString(),
                                QMessageBox::Ok, &window_);
    setPlainText(*box, sentence, advice);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}

void TreatmentWindow::openFile()
{
    const QString path = QFileDialog::getOpenFileName(&window_, tr("Open Treatment"), QString(),
                                                      tr("Treatments (*.json)"));
    if (!path.isEmpty()) all_.openFile(path, &window_);
}

void TreatmentWindow::importFile()
{
    const QString path = QFileDialog::getOpenFileName(&window_, tr("Import Treatment"), QString(),
                                                      tr("Treatments (*.json)"));
    if (!path.isEmpty()) all_.importFile(path, &window_);
}

void TreatmentWindow::choosePatient()
{
    const auto store = all_.store();
    if (!store) {
        tell(store.sentence(), adviceOn(store.failure().problem));
        return;
    }
    PatientsDialog dialog(*store.value(), &window_);
    if (dialog.exec() == QDialog::Accepted && dialog.treatment())
        all_.openStored(*dialog.treatment(), &window_);
}

bool TreatmentWindow::saveTreatment()
{
    const QString failure = treatment_->save();
    if (!failure.isEmpty()) tell(failure);
    return failure.isEmpty();
}

void TreatmentWindow::exportTreatment()
{
    const QString path =
        pathForSaving(&window_, tr("Export Treatment"), tr("Treatments (*.json)"), "json");
    const QString failure = path.isEmpty() ? QString() : treatment_->exportTo(path);
    if (!failure.isEmpty()) tell(failure);
}

void TreatmentWindow::savePicture()
{
    const QString path = pathForSaving(&window_, tr("Save Picture"), tr("Pictures (*.png)"), "png");
    if (path.isEmpty()) return;
    const QString failure = writePicture(*view_, path);
    if (!failure.isEmpty()) tell(failure);
}

void TreatmentWindow::preview(const PrintRequest &request)
{
    const PageSettings settings = pageSettings();
    PagePreview preview(sharpTreatmentPage(request, *view_, *treatment_, settings), settings,
                        window_.windowTitle(), &window_);
    const QString failure = preview.exec();
    if (!failure.isEmpty()) tell(failure);
}

void TreatmentWindow::savePage()
{
    const QString path =
        pathForSaving(&window_, tr("Save Page as PDF"), tr("Pages (*.pdf)"), "pdf");
    if (path.isEmpty()) return;
    const auto request = printRequestOf(*view_);
    if (!request) return; // the view has told why
    const PageSettings settings = pageSettings();
    const TreatmentPage page = sharpTreatmentPage(*request, *view_, *treatment_, settings);
    const QString failure = writeTreatmentPage(page, settings.layout, path);
    if (!failure.isEmpty()) tell(failure);
}

void TreatmentWindow::showChanges()
{
    const auto changes = treatment_->changes();
    if (!changes) {
        tell(changes.sentence());
        return;
    }
    ChangeLogDialog(changes.value(), *treatment_->document(), Preferences::preferences().notation(),
                    &window_)
        .exec();
}

void TreatmentWindow::showDate(const QDate &date)
{
    history_.endStep();
    const QStringList sentences = treatment_->showDate(*view_, date);
    dates_->setCurrentDate(treatment_->session().date());
    noteWasChosen();
    if (!sentences.isEmpty()) tell(sentences.join(QLatin1Char('\n')));
}

void TreatmentWindow::goOnToPresentDay()
{
    history_.endStep();
    const QStringList sentences = treatment_->goOnToPresentDay(*view_);
    dates_->setDates(treatment_->dates(), treatment_->today());
    noteWasChosen();
    if (!sentences.isEmpty()) tell(sentences.join(QLatin1Char('\n')));
}

void TreatmentWindow::stepDate(int steps)
{
    const std::vector<QDate> &dates = dates_->dates();
    const auto present = std::find(dates.begin(), dates.end(), treatment_->session().date());
    const auto wanted = present - dates.begin() + steps;
    if (wanted >= 0 && wanted < static_cast<std::ptrdiff_t>(dates.size()))
        showDate(dates[static_cast<std::size_t>(wanted)]);
}

void TreatmentWindow::approve(bool isApproved)
{
    if (treatment_->isReadOnly()) {
        noteMayHaveClosed(); // the button is as it was
        const StoreFailure &reason = *treatment_->store()->readOnlyReason();
        tell(reason.sentence, adviceOn(reason.problem));
        return;
    }
    history_.endStep();
    const QString problem = treatment_->setApproved(*view_, isApproved);
    history_.endStep(); // an elastic that was being strung is placed
    noteMayHaveClosed();
    if (!problem.isEmpty()) tell(problem);
}

void TreatmentWindow::noteWasChosen()
{
    // Steps belong to the note that they were made in.
    const bool isTodays = treatment_->session().date() == treatment_->today();
    history_.watch(isTodays ? treatment_->document() : nullptr);
    noteMayHaveClosed();
}

void TreatmentWindow::noteMayHaveClosed()
{
    const auto &session = treatment_->session();
    const std::optional<QDate> approval = treatment_->approvedDate();
    mayEdit_ = !treatment_->isReadOnly() && session.date() == treatment_->today() && !approval;
    history_.setOffersSteps(mayEdit_);
    dates_->setApproval(approval);
    approved_->setChecked(approval.has_value());
    const std::vector<QDate> &dates = dates_->dates();
    earlier_->setEnabled(!dates.empty() && session.date() != dates.front());
    later_->setEnabled(!dates.empty() && session.date() != dates.back());
    if (auto *chart = document_.existingWindowControllerForWindowNibName(ToothChartPanel::name))
        static_cast<ToothChartPanel *>(chart)->setMayEdit(mayEdit_);
}

void TreatmentWindow::askForName(const std::shared_ptr<kelo::ElasticModel> &elastic)
{
    const auto own = elastic->elasticsConfigType();
    auto *sheet = document_.existingWindowControllerForWindowNibName(ElasticNameController::name);
    if (!sheet) sheet = &document_.addWindowController(std::make_unique<ElasticNameController>());
    auto &naming = static_cast<ElasticNameController &>(*sheet);
    naming.setMainWindow(&window_);
    naming.ask(
        {own ? tr("Rename Elastic") : tr("Name Elastic"),
         tr("Name of the elastic %1:")
             .arg(toothNames(elastic->bracketSequence(), pageSettings().notation)),
         own ? QString::fromStdString(own->typeLabel) : QString(),
         [this, own](const QString &name) { return treatment_->nameProblem(name, own.get()); },
         [this, elastic](const QString &name) { nameElastic(elastic, name); }});
}

bool TreatmentWindow::mayPlaceAgain(const kelo::ElasticsConfigType &configuration)
{
    // The question would open behind the view.
    if (view_->isInFullScreenMode()) view_->exitFullScreenModeWithOptions();
    std::vector<std::string> members;
    for (const QString &key : QString::fromStdString(configuration.bracketSequence).split(u','))
        members.push_back(key.toStdString());
    return ask(QMessageBox::Question, &window_, tr("Place Named Elastic"),
               tr("An elastic runs over %1 already. Place %2 on top of it as a second one?")
                   .arg(toothNames(members, pageSettings().notation),
                        QString::fromStdString(configuration.typeLabel)),
               QMessageBox::Yes | QMessageBox::No, QMessageBox::No) == QMessageBox::Yes;
}

void TreatmentWindow::nameElastic(const std::shared_ptr<kelo::ElasticModel> &elastic,
                                  const QString &name)
{
    const auto &elastics = treatment_->document()->elasticModels();
    const auto found = std::find(elastics.begin(), elastics.end(), elastic);
    if (found == elastics.end()) return; // taken away while the sheet was open
    const auto index = static_cast<std::size_t>(found - elastics.begin());
    history_.endStep();
    const OpenedTreatment::Naming naming = treatment_->namingOf(*elastic, name);
    const auto apply = [this, index](const OpenedTreatment::Naming &change) {
        const QString problem = treatment_->applyNaming(change, index);
        if (!problem.isEmpty()) tell(problem);
        treatment_->bringCatalogueForward();
        all_.elasticWasNamed(*treatment_);
    };
    apply(naming);
    const QString teeth = toothNames(elastic->bracketSequence(), pageSettings().notation);
    const QString text =
        naming.before
            ? tr("Rename elastic %1, from %2 to %3")
                  .arg(teeth, QString::fromStdString(naming.before->typeLabel), name.trimmed())
            : tr("Name elastic %1, %2").arg(teeth, name.trimmed());
    history_.addStep(
        text,
        [=] {
            apply({naming.after, naming.before});
        },
        [=] { apply(naming); });
}

void TreatmentWindow::showMaterials()
{
    const auto make = [this](const std::string &name) {
        auto panel = std::make_unique<MaterialsPanel>(name, materials_,
                                                      [this] { view_->setNeedsDisplay(true); });
        panel->setMotherWindow(&window_);
        return panel;
    };
    shareKeys(document_.showUniqueWindowWithNibName_controllerClass(MaterialsPanel::name, make));
}

void TreatmentWindow::showToothChart()
{
    const auto make = [this](const std::string &name) {
        auto panel = std::make_unique<ToothChartPanel>(name, treatment_->document());
        panel->setMotherWindow(&window_);
        return panel;
    };
    auto &shown =
        document_.showUniqueWindowWithNibName_controllerClass(ToothChartPanel::name, make);
    shareKeys(shown);
    auto &chart = static_cast<ToothChartPanel &>(shown);
    chart.setNotation(pageSettings().notation);
    chart.setMayEdit(mayEdit_);
}

void TreatmentWindow::shareKeys(kelo::WindowController &panel)
{
    QWidget *const window = panel.window();
    if (!window->actions().isEmpty()) return; // shown before
    for (QAction *row : rowsWithKeys(window_.menuBar()->actions())) {
        // The key that closes a window closes the panel here.
        if (row != closeWindow_) window->addAction(row);
    }
    auto *close = new QAction(window);
    close->setShortcuts({closeWindow_->shortcut(), QKeySequence(Qt::Key_Escape)});
    connect(close, &QAction::triggered, window, &QWidget::close);
    window->addAction(close);
}

void TreatmentWindow::showKeys()
{
    KeysDialog(window_, &window_).exec();
}

void TreatmentWindow::toggleFullScreen()
{
    if (view_->isInFullScreenMode())
        view_->exitFullScreenModeWithOptions();
    else
        view_->enterFullScreenMode();
}

} // namespace viewer
