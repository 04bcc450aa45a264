#include "viewer/windows/OpenTreatments.h"

#include "viewer/settings/Preferences.h"
#include "viewer/store/DatabaseAdvice.h"
#include "viewer/store/DatabaseClaim.h"
#include "viewer/treatment/OpenedTreatment.h"
#include "viewer/windows/PlainBox.h"
#include "viewer/windows/TreatmentWindow.h"

#include <QFileInfo>
#include <QPointer>
#include <QProgressDialog>

#include <algorithm>
#include <exception>
#include <utility>

namespace viewer {
namespace {

/// Loading that takes longer than this shows how far it is.
constexpr int progressDelayInMilliseconds = 500;

} // namespace

OpenTreatments::OpenTreatments(CommandLine commandLine) : commandLine_(std::move(commandLine)) {}

OpenTreatments::~OpenTreatments() = default;

bool OpenTreatments::isShownElsewhere()
{
    const bool isInDatabase = commandLine_.file.isEmpty() || !commandLine_.database.isEmpty();
    for (const QString &own :
         {commandLine_.script, commandLine_.picture, commandLine_.state, commandLine_.exportedScene,
          commandLine_.print, commandLine_.printImages}) {
        if (!own.isEmpty()) return false;
    }
    return isInDatabase && claim().isElsewhere() && claim().bringOtherForward(commandLine_.file);
}

const DatabaseClaim &OpenTreatments::claim()
{
    if (!claim_) {
        claim_ = std::make_unique<DatabaseClaim>(databaseOf(commandLineForStored()));
        connect(claim_.get(), &DatabaseClaim::wanted, this, &OpenTreatments::comeForward);
    }
    return *claim_;
}

void OpenTreatments::comeForward(const QString &file)
{
    // A window that is about to open comes to the front on its own.
    QWidget *window = nullptr;
    for (auto one = documents_.rbegin(); one != documents_.rend() && !window; ++one) {
        if ((*one)->isClosed()) continue;
        kelo::WindowController &controller = *(*one)->windowControllers().front();
        controller.showWindow();
        window = controller.window();
    }
    if (!file.isEmpty()) importFile(file, window);
}

TreatmentDocument &OpenTreatments::openFirst()
{
    return open(commandLine_);
}

TreatmentDocument *OpenTreatments::openedBefore(const CommandLine &commandLine)
{
    const auto found =
        std::find_if(documents_.begin(), documents_.end(), [&](const auto &document) {
            const OpenedTreatment &treatment = *document->treatment();
            if (document->isClosed()) return false;
            if (!commandLine.file.isEmpty())
                return QFileInfo(treatment.file()) == QFileInfo(commandLine.file);
            return treatment.file().isEmpty() && treatment.store() == store_ &&
                   commandLine.treatment == treatment.treatmentID();
        });
    return found == documents_.end() ? nullptr : found->get();
}

TreatmentDocument &OpenTreatments::open(const CommandLine &commandLine)
{
    QProgressDialog progress(tr("Loading the meshes…"), QString(), 0, 0);
    progress.setMinimumDuration(progressDelayInMilliseconds);
    const LoadingProgress told = [&progress](std::size_t doneCount, std::size_t fileCount) {
        progress.setMaximum(static_cast<int>(fileCount));
        progress.setValue(static_cast<int>(doneCount));
    };
    // A treatment of a file has a store in memory to itself, unless a database is named.
    const bool isInDatabase = commandLine.file.isEmpty() || !commandLine.database.isEmpty();
    if (isInDatabase) {
        // The only place where windows open the database: beside another program nothing is made
        // that is not there, and what fails is not tried again in another way.
        if (const auto opened = store(); !opened) throw UnusableDatabase(opened.failure());
    }
    auto document = std::make_unique<TreatmentDocument>(commandLine, told, *this,
                                                        isInDatabase ? store_ : nullptr);
    progress.reset();
    TreatmentDocument &opened = *document;
    connect(&opened, &kelo::Document::closed, this, &OpenTreatments::forgetClosed,
            Qt::QueuedConnection);
    documents_.push_back(std::move(document));
    opened.showWindows();
    opened.mainWindow()->tellAboutOpening();
    if (!commandLine.file.isEmpty()) Preferences::preferences().addRecentFile(commandLine.file);
    return opened;
}

void OpenTreatments::openOrTell(const CommandLine &commandLine, QWidget *over)
{
    if (TreatmentDocument *const before = openedBefore(commandLine)) {
        before->windowControllers().front()->showWindow(); // not the panels that are closed
        return;
    }
    try {
        open(commandLine);
    } catch (const UnusableDatabase &failure) {
        warn(over, tr("Open Treatment"), QString::fromUtf8(failure.what()),
             adviceOn(failure.problem()));
    } catch (const std::exception &failure) {
        warn(over, tr("Open Treatment"), QString::fromUtf8(failure.what()));
    }
}

void OpenTreatments::openFile(const QString &path, QWidget *over)
{
    CommandLine commandLine = commandLine_;
    commandLine.file = path;
    commandLine.files = {path};
    commandLine.database.clear();
    openOrTell(commandLine, over);
}

CommandLine OpenTreatments::commandLineForStored() const
{
    CommandLine commandLine = commandLine_;
    commandLine.file.clear();
    commandLine.files.clear();
    return commandLine;
}

void OpenTreatments::openStored(qint64 treatmentID, QWidget *over)
{
    CommandLine commandLine = commandLineForStored();
    commandLine.treatment = treatmentID;
    openOrTell(commandLine, over);
}

void OpenTreatments::importFile(const QString &path, QWidget *over)
{
    const auto database = store();
    try {
        if (!database) throw UnusableDatabase(database.failure());
        openStored(importTreatment(*database.value(), path), over);
    } catch (const UnusableDatabase &failure) {
        warn(over, tr("Import Treatment"), QString::fromUtf8(failure.what()),
             adviceOn(failure.problem()));
    } catch (const BadTreatment &failure) {
        warn(over, tr("Import Treatment"), QString::fromUtf8(failure.what()));
    }
}

StoreResult<std::shared_ptr<TreatmentStore>> OpenTreatments::store()
{
    if (store_) return store_;
    auto opened = TreatmentStore::open(databaseOf(commandLineForStored()),
                                       claim().isElsewhere() ? StoreAccess::ReadOnly
                                                             : StoreAccess::ReadAndWrite);
    if (opened) store_ = opened.value();
    return opened;
}

void OpenTreatments::elasticWasNamed(const OpenedTreatment &treatment)
{
    for (const auto &document : documents_) {
        OpenedTreatment &other = *document->treatment();
        if (&other != &treatment && other.store() == treatment.store()) other.takeNewNames();
    }
}

bool OpenTreatments::closeAll()
{
    // Documents that have closed are forgotten while a window's question waits for its answer.
    std::vector<QPointer<TreatmentDocument>> open;
    for (const auto &document : documents_)
        open.emplace_back(document.get());
    for (const auto &remaining : open) {
        TreatmentDocument *const document = remaining.data();
        if (!document || document->isClosed()) continue;
        if (!document->mainWindow()->close()) return false;
    }
    return true;
}

void OpenTreatments::forgetClosed()
{
    std::erase_if(documents_, [](const auto &document) { return document->isClosed(); });
}

} // namespace viewer
