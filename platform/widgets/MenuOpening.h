#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QPoint>
#include <QRect>

class QMenu;
class QMouseEvent;

namespace kelo {

/// Brings a native menu up for a press in a view: puts it and its submenus in their places, and
/// keeps the press that opens it from choosing in it. Until the buttons that are held when this is
/// made are released, the menu hears neither of the pointer's moves nor of that release, however
/// far the pointer has gone; the further presses of a double click belong to the first.
class MenuOpening : public QObject
{
public:
    /// pointer: where the press was, on the screen. area: what the menus stay inside of. The menu
    /// has been filled (fillNativeMenu) and outlives this object or ends first.
    MenuOpening(QMenu &menu, const QPoint &pointer, const QRect &area);

    /// Where the menu comes up.
    QPoint menuPosition() const;
    /// Whether a button that was held at the beginning has been released since. If it is held now,
    /// it was pressed anew.
    bool pressHasEnded() const { return pressHasEnded_; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QRect placeOf(const QMenu &menu) const;
    /// Makes a menu that is higher than its place scroll.
    void limitHeight(QMenu &menu) const;
    bool pressIsMeantForTheView(const QMouseEvent &press);
    bool releaseIsMeantForTheView(const QMouseEvent &release);
    bool moveIsMeantForTheView(const QMouseEvent &move);

    QMenu *menu_;
    QPoint pointer_;
    QRect area_;
    QElapsedTimer sinceThePress_;
    Qt::MouseButtons pressed_; ///< held at the beginning
    Qt::MouseButtons held_;    ///< of these, still held
    bool clickMayGoOn_;        ///< no other press has come yet
    bool pressHasEnded_ = false;
};

} // namespace kelo
