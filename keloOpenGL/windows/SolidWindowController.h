#pragma once

#include "base/Export.h"
#include "keloOpenGL/windows/TreatmentView.h"
#include "keloOpenGL/windows/WindowControllerWithDocumentController.h"

#include <QPointer>

#include <memory>
#include <string>

namespace kelo {

/// Asks the view that is its object to fit the scene into the window.
inline constexpr char zoomToFitNotification[] = "zoomToFitNotification";

/// The main window of a treatment: its interface file holds a kelo::TreatmentView named "view",
/// which shows the document's model while the window is open, and may hold a control named
/// "mouseModeView".
class KELO_EXPORT SolidWindowController : public WindowControllerWithDocumentController
{
    Q_OBJECT

public:
    explicit SolidWindowController(std::string windowNibName);
    ~SolidWindowController() override;

    /// Null before the window is loaded, and for an interface file without such a view.
    std::shared_ptr<DXOpenGL> view() const;
    /// An outlet that nothing here uses.
    QWidget *mouseModeView() const { return mouseModeView_; }

    /// Binds the view's "documentModel" to the document's "model" and queues a
    /// zoomToFitNotification about the view.
    void awakeFromNib() override;
    void windowWillClose(QWidget *window) override;

private:
    void bindView();
    void forgetView();

    QPointer<TreatmentView> treatmentView_;
    QPointer<QWidget> mouseModeView_;
    std::unique_ptr<PropertyBinding> documentModel_;
};

} // namespace kelo
