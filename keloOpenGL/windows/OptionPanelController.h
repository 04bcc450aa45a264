#pragma once

#include "base/Export.h"
#include "base/Rect.h"
#include "platform/widgets/WindowController.h"

#include <QPointer>
#include <QWidget>

namespace kelo {

/// Posted by whoever wants all option panels closed.
inline constexpr char closeAllOptionPanelsNotification[] = "closeAllOptionPanelsNotification";

/// Where an option panel's lower left corner lies, in points of a screen whose y axis points up:
/// its upper left corner is 5 points to the right of the mother window and 6 below its top. A panel
/// that would extend past the right edge of the screen is moved left to it, and one that would end
/// below the bottom edge is raised to that.
KELO_EXPORT Point optionPanelOrigin(const Rect &motherWindow, const Size &panel,
                                    const Rect &visibleScreen);

/// A floating panel next to the window that it belongs to, and always above it. It closes when
/// someone posts closeAllOptionPanelsNotification.
class KELO_EXPORT OptionPanelController : public WindowController
{
    Q_OBJECT

public:
    using WindowController::WindowController;
    ~OptionPanelController() override;

    /// The window that the panel belongs to; not owned.
    QWidget *motherWindow() const { return motherWindow_; }
    void setMotherWindow(QWidget *window) { motherWindow_ = window; }

    /// Gives the panel the mother window's title and shows it next to that window.
    void showWindow(QObject *sender = nullptr) override;
    void windowWillClose(QWidget *window) override;

private:
    void stopListening();

    QPointer<QWidget> motherWindow_;
};

} // namespace kelo
