#pragma once

#include "platform/view/OpenGLView.h"
#include "platform/view/ViewInput.h"

#include <QWindow>

namespace kelo {

/// The native window of a view: hands exposure, sizes and input to it. Inside of a widget it never
/// has the display's keyboard focus, which window managers give to top-level windows only: the
/// widget has Qt's focus and sends the events of focus and keys on to here. Lets go of the view
/// with detach, which also ends the window as soon as no event of its own is being handled.
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
    void nativeWindowWillGo();

    OpenGLView *view_;
    ViewInput input_;
    int eventDepth_ = 0;
    bool wasExposed_ = false;
    bool cannotDraw_ = false;
    bool focusIsPassing_ = false; ///< it is about to come back from a menu
};

} // namespace kelo
