#pragma once

#include "platform/gl.h"

#include "platform/view/OpenGLView.h"

#include <functional>
#include <vector>

namespace kelo::test {

/// A view with a picture that shows which way is up and whether the viewport is the whole device:
/// blue, over it the left quarter green, over that the lowest quarter red. Keeps what it was told.
class DrawingView : public OpenGLView
{
public:
    using OpenGLView::OpenGLView;

    void drawRect(const Rect &) override
    {
        ++frames;
        openGLContext().makeCurrentContext();
        const PixelSize size = deviceSize();
        glViewport(0, 0, size.width, size.height);
        glDisable(GL_SCISSOR_TEST);
        glClearColor(0.0f, 0.0f, 1.0f, clearAlpha);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        glColor3f(0.0f, 1.0f, 0.0f);
        glRectf(-1.0f, -1.0f, -0.5f, 1.0f);
        glColor3f(1.0f, 0.0f, 0.0f);
        glRectf(-1.0f, -1.0f, 1.0f, -0.5f);
        if (whileDrawing) whileDrawing();
        openGLContext().flushBuffer();
    }
    void reshape() override { ++reshapes; }
    bool isFlipped() const override { return flipped; }
    bool acceptsFirstResponder() const override { return true; }
    bool becomeFirstResponder() override
    {
        ++timesFirstResponder;
        return true;
    }
    bool resignFirstResponder() override
    {
        ++timesResigned;
        return true;
    }
    void viewDidMoveToWindow() override { ++windowMoves; }
    void resetCursorRects() override
    {
        if (cursorRectMaker) cursorRectMaker();
    }

    void mouseDown(const Event &event) override { keep(event); }
    void mouseDragged(const Event &event) override { keep(event); }
    void mouseUp(const Event &event) override { keep(event); }
    void rightMouseDown(const Event &event) override { keep(event); }
    void rightMouseDragged(const Event &event) override { keep(event); }
    void rightMouseUp(const Event &event) override { keep(event); }
    void otherMouseDown(const Event &event) override { keep(event); }
    void otherMouseDragged(const Event &event) override { keep(event); }
    void otherMouseUp(const Event &event) override { keep(event); }
    void mouseMoved(const Event &event) override { keep(event); }
    void mouseEntered(const Event &event) override { keep(event); }
    void mouseExited(const Event &event) override { keep(event); }
    void scrollWheel(const Event &event) override { keep(event); }
    void flagsChanged(const Event &event) override { keep(event); }
    void keyDown(const Event &event) override { keep(event); }
    void keyUp(const Event &event) override { keep(event); }

    std::vector<EventType> eventTypes() const
    {
        std::vector<EventType> types;
        for (const Event &event : events)
            types.push_back(event.type);
        return types;
    }

    int frames = 0;
    int reshapes = 0;
    int contextLosses = 0;
    int timesFirstResponder = 0;
    int timesResigned = 0;
    int windowMoves = 0;
    bool flipped = false;
    float clearAlpha = 1.0f;
    std::vector<Event> events;
    std::function<void()> whileDrawing;
    std::function<void(const Event &)> onEvent;
    std::function<void()> cursorRectMaker;

protected:
    void contextWasLost() override { ++contextLosses; }

private:
    void keep(const Event &event)
    {
        events.push_back(event);
        // A copy, since the handler may end the view.
        if (const auto handler = onEvent) handler(event);
    }
};

} // namespace kelo::test
