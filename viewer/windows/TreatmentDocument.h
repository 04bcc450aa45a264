#pragma once

#include "keloOpenGL/keloOpenGL.h"
#include "viewer/settings/CommandLine.h"
#include "viewer/treatment/TreatmentLoader.h"

#include <memory>

namespace viewer {

class OpenedTreatment;
class OpenTreatments;
class TreatmentStore;
class TreatmentWindow;

/// One treatment with its windows: the main window of the interface file "SolidView", with the
/// viewer's menus and its bar of dates, and the option panels beside it.
class TreatmentDocument : public kelo::DXDocument
{
    Q_OBJECT

public:
    /// Opens the treatment into the document's model, from the store where one is given; throws
    /// what OpenedTreatment throws. `all` is not owned.
    TreatmentDocument(const CommandLine &commandLine, const LoadingProgress &progress,
                      OpenTreatments &all, std::shared_ptr<TreatmentStore> store = nullptr);
    ~TreatmentDocument() override;

    const std::shared_ptr<OpenedTreatment> &treatment() const { return treatment_; }
    /// Null before the windows are made. Outlives the closing of its window, not the document.
    TreatmentWindow *mainWindow() const { return mainWindow_.get(); }

    void windowControllerDidLoadNib(kelo::WindowController &controller) override;

private:
    OpenTreatments &all_;
    CommandLine commandLine_;
    std::shared_ptr<OpenedTreatment> treatment_;
    std::unique_ptr<TreatmentWindow> mainWindow_; ///< last: it leaves the window first
};

} // namespace viewer
