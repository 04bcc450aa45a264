#include "keloOpenGL/windows/OptionPanelController.h"

#include "platform/time/NotificationCenter.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <QWindow>

namespace kelo {
namespace {

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

/// What the desktop adds around a window's content; nothing until the window was shown once.
QMargins frameOf(const QWidget &window)
{
    const QRect frame = window.frameGeometry();
    const QRect content = window.geometry();
    return {content.left() - frame.left(), content.top() - frame.top(),
            frame.right() - content.right(), frame.bottom() - content.bottom()};
}

void place(QWidget &panel, const QWidget &motherWindow)
{
    const bool isFrameKnown = !frameOf(panel).isNull();
    // A new panel will have a frame like its mother window's.
    const QMargins frame = isFrameKnown ? frameOf(panel) : frameOf(motherWindow);
    const QSize size = panel.size().grownBy(frame);
    const QScreen *screen = QGuiApplication::primaryScreen();
    const Point origin =
        optionPanelOrigin(upwards(motherWindow.frameGeometry()),
                          {static_cast<double>(size.width()), static_cast<double>(size.height())},
                          upwards(screen ? screen->availableGeometry() : QRect()));
    const QPoint corner(static_cast<int>(origin.x),
                        static_cast<int>(screenHeight() - origin.y - size.height()));
    // Without a known frame, move() places the content.
    panel.move(isFrameKnown ? corner : corner + QPoint(frame.left(), frame.top()));
}

void showBeside(QWidget &panel, QWidget &motherWindow)
{
    panel.setWindowTitle(motherWindow.windowTitle());
    stayAbove(panel, motherWindow);
    if (!panel.testAttribute(Qt::WA_Resized)) panel.adjustSize(); // as showing it would
    place(panel, motherWindow);
}

/// A panel that is shown again still closes once.
void closeWithAllPanels(QWidget &panel)
{
    NotificationCenter &center = NotificationCenter::defaultCenter();
    center.removeObserver(&panel, closeAllOptionPanelsNotification);
    center.addObserver(
        &panel, [&panel](const Notification &) { panel.close(); },
        closeAllOptionPanelsNotification);
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
    if (motherWindow_) showBeside(*panel, *motherWindow_);
    WindowController::showWindow(sender);
    closeWithAllPanels(*panel);
}

void OptionPanelController::windowWillClose(QWidget *closing)
{
    if (isWindowLoaded() && closing == window()) stopListening();
    WindowController::windowWillClose(closing);
}

void OptionPanelController::stopListening()
{
    if (isWindowLoaded())
        NotificationCenter::defaultCenter().removeObserver(window(),
                                                           closeAllOptionPanelsNotification);
}

} // namespace kelo
