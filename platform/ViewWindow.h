#pragma once

#include "platform/OpenGLView.h"
#include "platform/ViewInput.h"

#include <QWindow>

namespace kelo {

/// The native window of a view: hands exposure, sizes and input to it. Lets go of the view with
/// detach, which also ends the window as soon as no event of its own is being handled.
class ViewWindow : public QWindow
{
public:
    explicit ViewWindow(OpenGLView &view);

    /// Forgets the view and ends the window, at once or after the event that is being handled.
    void detach();
    ViewInput &input() { return input_; }

protected:
    bool event(QEvent *event) override;
    void exposeEvent(QExposeEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;

private:
    bool handleEvent(QEvent *event);
    void draw();
    bool isWithin(const QWindow *ancestor) const;
    void focusWindowDidChange(QWindow *focusWindow);
    void takeKeyboard(const QObject *focusObject, int attempts);
    void takeKeyboardLater(const QObject *focusObject, int attempts);
    void nativeWindowWillGo();

    OpenGLView *view_;
    ViewInput input_;
    int eventDepth_ = 0;
    bool wasExposed_ = false;
    bool cannotDraw_ = false;
    bool keepsFocusForReturn_ = false; ///< the keyboard went to another top-level window
    bool hasClaimToFocus_ = false;     ///< the last in its top-level window to have the keyboard
    bool focusIsPassing_ = false;      ///< it is about to come back, to a press or from a menu
};

} // namespace kelo
