#pragma once

#include "platform/view/ViewInput.h"
#include "platform/view/ViewSurface.h"

#include <QPointer>
#include <QWidget>

#include <memory>

namespace kelo {

/// The widget that a host puts a view into. Holds the view's native window in an inner container
/// that is made anew whenever the window comes (back), and has the keyboard for it; a view without
/// a native window is painted, and its input forwarded. Either may end first.
class ViewContainer : public QWidget, private ViewHost
{
public:
    ViewContainer(OpenGLView &view, ViewSurface &surface, QWidget *parent);
    ~ViewContainer() override;

    /// The view, or null once it has ended or moved to another container.
    OpenGLView *view() const { return view_; }
    QSize sizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void giveUpWindow() override;
    void takeWindow() override;
    void forgetView() override;
    void repaintView() override;
    void showCursor(const QCursor &cursor) override;
    void takeKeyboard() override;
    void resizeForView(const Size &size) override;
    ViewInput *input() const override { return input_.get(); }
    /// Sends an event of focus or keys to the native window, if it is in here.
    void passOn(QEvent &event);

    OpenGLView *view_;
    QPointer<QWidget> inner_;
    std::unique_ptr<ViewInput> input_; ///< only for a view without a native window
};

/// Creates the widget that shows a view and makes it the surface's host. Needs a QApplication.
QWidget *makeViewContainer(OpenGLView &view, ViewSurface &surface, QWidget *parent);

} // namespace kelo
