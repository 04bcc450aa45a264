#include "viewer/windows/TreatmentDocument.h"

#include "viewer/treatment/OpenedTreatment.h"
#include "viewer/windows/OpenTreatments.h"
#include "viewer/windows/TreatmentWindow.h"

#include <QMainWindow>

#include <utility>

namespace viewer {

TreatmentDocument::TreatmentDocument(const CommandLine &commandLine,
                                     const LoadingProgress &progress, OpenTreatments &all,
                                     std::shared_ptr<TreatmentStore> store)
    : all_(all),
      commandLine_(commandLine),
      treatment_(
          std::make_shared<OpenedTreatment>(commandLine, progress, model(), std::move(store)))
{}

TreatmentDocument::~TreatmentDocument() = default;

void TreatmentDocument::windowControllerDidLoadNib(kelo::WindowController &controller)
{
    auto *const window = qobject_cast<QMainWindow *>(controller.window());
    auto *const solid = qobject_cast<kelo::SolidWindowController *>(&controller);
    if (!window || !solid || !solid->view())
        throw kelo::InterfaceFileProblem(
            kelo::interfaceFilePath(controller.windowNibName()) +
            ": the viewer needs a main window with a treatment view named \"view\"");
    mainWindow_ =
        std::make_unique<TreatmentWindow>(*this, *window, solid->view(), all_, commandLine_.page);
    const auto others = static_cast<int>(all_.documents().size()) - 1;
    if (commandLine_.isSizeGiven)
        mainWindow_->resizeView(commandLine_.size);
    else if (!mainWindow_->restorePlace(others))
        mainWindow_->resizeViewWithinScreen(commandLine_.size);
}

} // namespace viewer
