#include "tests/support/SettledDisplay.h"

#include "tests/support/WaitUntil.h"

#include <QAbstractNativeEventFilter>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QGuiApplication>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <xcb/xcb.h>

namespace kelo::test {
namespace {

xcb_atom_t atomNamed(xcb_connection_t *server, const std::string &name)
{
    const auto asked =
        xcb_intern_atom(server, 0, static_cast<std::uint16_t>(name.size()), name.data());
    xcb_intern_atom_reply_t *reply = xcb_intern_atom_reply(server, asked, nullptr);
    const xcb_atom_t atom = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    std::free(reply);
    return atom;
}

/// Asks the window manager how wide the frame of a window would be that is never shown; the answer
/// is a property of that window. The server and the window manager go through what they are asked
/// in order, so when the answer comes, everything that was asked or pressed before has been
/// answered.
class Question : public QAbstractNativeEventFilter
{
public:
    explicit Question(xcb_connection_t *server) : server_(server), window_(xcb_generate_id(server))
    {
        const xcb_screen_t *screen = xcb_setup_roots_iterator(xcb_get_setup(server)).data;
        root_ = screen->root;
        const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_create_window(server, XCB_COPY_FROM_PARENT, window_, root_, 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, XCB_CW_EVENT_MASK,
                          &events);
        type_ = atomNamed(server, "_NET_REQUEST_FRAME_EXTENTS");
        QCoreApplication::instance()->installNativeEventFilter(this);
    }
    ~Question() override
    {
        QCoreApplication::instance()->removeNativeEventFilter(this);
        xcb_destroy_window(server_, window_);
        xcb_flush(server_);
    }

    void ask()
    {
        otherEventCount = 0;
        isAnswered = false;
        xcb_client_message_event_t event{};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = window_;
        event.type = type_;
        xcb_send_event(server_, 0, root_,
                       XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                       reinterpret_cast<const char *>(&event));
        xcb_flush(server_);
    }

    bool isAnswered = false;
    int otherEventCount = 0; ///< of what the display told before it answered

private:
    bool nativeEventFilter(const QByteArray &, void *message, qintptr *) override
    {
        xcb_property_notify_event_t event;
        std::memcpy(&event, message, sizeof event);
        // The highest bit marks events that another program has sent.
        const bool isAnswer =
            (event.response_type & 0x7f) == XCB_PROPERTY_NOTIFY && event.window == window_;
        if (isAnswer)
            isAnswered = true;
        else
            ++otherEventCount;
        return isAnswer;
    }

    xcb_connection_t *server_;
    xcb_window_t window_;
    xcb_window_t root_ = XCB_WINDOW_NONE;
    xcb_atom_t type_ = XCB_ATOM_NONE;
};

} // namespace

testing::AssertionResult displayIsSettled()
{
    const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (!x11) return testing::AssertionSuccess();
    Question question(x11->connection());
    QElapsedTimer timer;
    timer.start();
    do {
        question.ask();
        if (!waitUntil([&question] { return question.isAnswered; }))
            return testing::AssertionFailure() << "the window manager does not answer";
        if (timer.elapsed() > 5000)
            return testing::AssertionFailure() << "the display goes on telling the program things";
    } while (question.otherEventCount > 0);
    return testing::AssertionSuccess();
}

bool displayHasCompositor()
{
    const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (!x11) return false;
    xcb_connection_t *server = x11->connection();
    // The standard's name for the compositor of the first screen.
    const auto asked = xcb_get_selection_owner(server, atomNamed(server, "_NET_WM_CM_S0"));
    xcb_get_selection_owner_reply_t *reply = xcb_get_selection_owner_reply(server, asked, nullptr);
    const bool hasOwner = reply && reply->owner != XCB_WINDOW_NONE;
    std::free(reply);
    return hasOwner;
}

} // namespace kelo::test
