#include "keloOpenGL/windows/OptionPanelController.h"

#include "platform/NotificationCenter.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <QWindow>

namespace kelo {
namespace {

constexpr const char *closeAllOptionPanels = "closeAllOptionPanelsNotification";

/// Between the mother window's right edge and the panel, and below its top.
constexpr double distanceBeside = 5.0;
constexpr double distanceBelowTop = 6.0;

/// The desktop counts y from the top of the main screen downwards, the placement from its bottom
/// upwards.
double screenHeight()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen ? screen->geometry().bottom() + 1.0 : 0.0;
}

Rect upwards(const QRect &rect)
{
    return {{static_cast<double>(rect.x()), screenHeight() - rect.y() - rect.height()},
            {static_cast<double>(rect.width()), static_cast<double>(rect.height())}};
}

/// By the native windows alone: a widget's parent would own the panel.
void stayAbove(QWidget &panel, QWidget &motherWindow)
{
    if (panel.isVisible()) return;
    panel.setWindowFlag(Qt::Tool);
    panel.winId();
    motherWindow.winId();
    panel.windowHandle()->setTransientParent(motherWindow.windowHandle());
}

} // namespace

Point optionPanelOrigin(const Rect &mother, const Size &panel, const Rect &screen)
{
    const double x = mother.origin.x + mother.size.width + distanceBeside;
    const double y = mother.origin.y + mother.size.height - distanceBelowTop - panel.height;
    const double overflow = x + panel.width - (screen.origin.x + screen.size.width);
    const double below = y - screen.origin.y;
    return {overflow > 0.0 ? x - overflow : x, below < 0.0 ? screen.origin.y : y};
}

OptionPanelController::~OptionPanelController()
{
    stopListening();
}

void OptionPanelController::showWindow(QObject *sender)
{
    QWidget *const panel = window();
    if (!panel) return;
    if (motherWindow_) {
        panel->setWindowTitle(motherWindow_->windowTitle());
        stayAbove(*panel, *motherWindow_);
        if (!panel->testAttribute(Qt::WA_Resized)) panel->adjustSize(); // as showing it would
        const QSize size = panel->frameGeometry().size();
        const QScreen *screen = QGuiApplication::primaryScreen();
        const Point origin = optionPanelOrigin(
            upwards(motherWindow_->frameGeometry()),
            {static_cast<double>(size.width()), static_cast<double>(size.height())},
            upwards(screen ? screen->availableGeometry() : QRect()));
        panel->move(static_cast<int>(origin.x),
                    static_cast<int>(screenHeight() - origin.y - size.height()));
    }
    WindowController::showWindow(sender);
    stopListening(); // shown again, it still closes once
    NotificationCenter::defaultCenter().addObserver(
        panel, [panel](const Notification &) { panel->close(); }, closeAllOptionPanels);
}

void OptionPanelController::windowWillClose(QWidget *closing)
{
    if (isWindowLoaded() && closing == window()) stopListening();
    WindowController::windowWillClose(closing);
}

void OptionPanelController::stopListening()
{
    if (isWindowLoaded())
        NotificationCenter::defaultCenter().removeObserver(window(), closeAllOptionPanels);
}

} // namespace kelo
