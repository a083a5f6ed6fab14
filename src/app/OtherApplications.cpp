// A client of the X server can do three things to other clients' windows through the window
// manager:
// - list them (EWMH, _NET_CLIENT_LIST),
// - minimise one (ICCCM 4.1.4, WM_CHANGE_STATE),
// - restore one, by asking the server to map it.

#include "app/OtherApplications.h"

#include <QAbstractNativeEventFilter>
#include <QGuiApplication>
#include <QWindow>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>
#include <xcb/xcb.h>

namespace ambulet {

namespace {

constexpr std::uint32_t normalState = 1;  // ICCCM 4.1.3.1
constexpr std::uint32_t iconicState = 3;

struct Free {
    void operator()(void* reply) const { std::free(reply); }
};

template <typename Reply>
using ReplyPointer = std::unique_ptr<Reply, Free>;

// The application's connection to the X server.
class X11 {
  public:
    // Null if the platform is not X11.
    static std::unique_ptr<X11> current() {
        const auto* application = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
        xcb_connection_t* const connection =
            application != nullptr ? application->connection() : nullptr;
        return connection != nullptr ? std::make_unique<X11>(connection) : nullptr;
    }

    explicit X11(xcb_connection_t* connection) : _connection(connection) {}

    // The atom of that name; XCB_ATOM_NONE on failure. Waits for the reply of the X server.
    xcb_atom_t atom(std::string_view name) const {
        const ReplyPointer<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
            _connection,
            xcb_intern_atom(_connection, 0, static_cast<std::uint16_t>(name.size()), name.data()),
            nullptr));
        return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    }

    // A property's 32-bit values; empty if there is no such window or property.
    std::vector<std::uint32_t> property(xcb_window_t window, std::string_view name) const {
        constexpr std::uint32_t longest = 1U << 20;
        const ReplyPointer<xcb_get_property_reply_t> reply(xcb_get_property_reply(
            _connection,
            xcb_get_property(_connection, 0, window, atom(name), XCB_ATOM_ANY, 0, longest),
            nullptr));
        if (!reply || reply->format != 32) {
            return {};
        }
        // Constructed from two pointers, the vector would cause a false warning in g++ 14.
        std::vector<std::uint32_t> values(reply->value_len);
        std::copy_n(static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get())),
                    values.size(), values.begin());
        return values;
    }

    bool has(xcb_window_t window, std::string_view name, std::uint32_t value) const {
        const std::vector<std::uint32_t> values = property(window, name);
        return std::find(values.begin(), values.end(), value) != values.end();
    }

    xcb_window_t root() const {
        return xcb_setup_roots_iterator(xcb_get_setup(_connection)).data->root;
    }

    // The upper left corner of a window's content, on the screen; nothing without such a window.
    std::optional<QPoint> place(xcb_window_t window) const {
        const ReplyPointer<xcb_translate_coordinates_reply_t> reply(xcb_translate_coordinates_reply(
            _connection, xcb_translate_coordinates(_connection, window, root(), 0, 0), nullptr));
        return reply ? std::optional(QPoint(reply->dst_x, reply->dst_y)) : std::nullopt;
    }

    void requestMinimize(xcb_window_t window) const {
        xcb_client_message_event_t event{};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = window;
        event.type = atom("WM_CHANGE_STATE");
        event.data.data32[0] = iconicState;
        xcb_send_event(_connection, 0, root(),
                       XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                       reinterpret_cast<const char*>(&event));
    }

    void requestRestore(xcb_window_t window) const { xcb_map_window(_connection, window); }

    // Requests events for changes of the window's properties.
    void watchProperties(xcb_window_t window) const {
        const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(_connection, window, XCB_CW_EVENT_MASK, &events);
    }

    void flush() const { xcb_flush(_connection); }

  private:
    xcb_connection_t* _connection;
};

// The list of windows is not enough: it may be left over from a window manager that has ended.
bool windowManagerListsWindows(const X11& display) {
    constexpr std::string_view check = "_NET_SUPPORTING_WM_CHECK";
    const std::vector<std::uint32_t> manager = display.property(display.root(), check);
    return manager.size() == 1 && display.has(manager.front(), check, manager.front()) &&
           display.has(display.root(), "_NET_SUPPORTED", display.atom("_NET_CLIENT_LIST"));
}

bool isOwn(xcb_window_t window) {
    const QWindowList own = QGuiApplication::allWindows();
    return std::any_of(own.begin(), own.end(), [window](const QWindow* one) {
        return one->handle() != nullptr && one->winId() == window;
    });
}

bool isPartOfTheDesktop(const X11& display, xcb_window_t window) {
    return display.has(window, "_NET_WM_WINDOW_TYPE", display.atom("_NET_WM_WINDOW_TYPE_DOCK")) ||
           display.has(window, "_NET_WM_WINDOW_TYPE", display.atom("_NET_WM_WINDOW_TYPE_DESKTOP"));
}

// The first value of WM_STATE; 0 if the window does not have that property.
std::uint32_t stateOf(const X11& display, xcb_window_t window) {
    const std::vector<std::uint32_t> state = display.property(window, "WM_STATE");
    return state.empty() ? 0 : state.front();
}

}  // namespace

// The windows minimised by hide(). A window that is restored by anyone is removed, and stays
// removed if it is minimised again.
class OtherApplications::HiddenWindows final : public QAbstractNativeEventFilter {
  public:
    HiddenWindows() { qApp->installNativeEventFilter(this); }

    void add(xcb_window_t window, const X11& display) {
        display.watchProperties(window);
        display.requestMinimize(window);
        _windows.push_back({window, false});
    }

    void restore(const X11& display) {
        for (const Hidden& hidden : _windows) {
            if (stateOf(display, hidden.window) == iconicState) {
                display.requestRestore(hidden.window);
            }
        }
        _windows.clear();
    }

    bool nativeEventFilter(const QByteArray& /*type*/, void* message,
                           qintptr* /*result*/) override {
        const auto* const event = static_cast<xcb_generic_event_t*>(message);
        if ((event->response_type & 0x7f) == XCB_PROPERTY_NOTIFY) {
            propertyDidChange(*reinterpret_cast<const xcb_property_notify_event_t*>(event));
        }
        return false;
    }

  private:
    struct Hidden {
        xcb_window_t window;
        bool isMinimized;
    };

    // The first change of a window's state is the one that `add` requested.
    void propertyDidChange(const xcb_property_notify_event_t& change) {
        const auto found =
            std::find_if(_windows.begin(), _windows.end(),
                         [&](const Hidden& hidden) { return hidden.window == change.window; });
        const auto display = X11::current();
        if (found == _windows.end() || !display || change.atom != display->atom("WM_STATE")) {
            return;
        }
        if (found->isMinimized || stateOf(*display, change.window) != iconicState) {
            _windows.erase(found);
        } else {
            found->isMinimized = true;
        }
    }

    std::vector<Hidden> _windows;
};

OtherApplications::OtherApplications() = default;

OtherApplications::~OtherApplications() = default;

bool OtherApplications::canHide() {
    const auto display = X11::current();
    return display && windowManagerListsWindows(*display);
}

void OtherApplications::hide() {
    const auto display = X11::current();
    if (!display || !windowManagerListsWindows(*display)) {
        return;
    }
    for (const xcb_window_t window : display->property(display->root(), "_NET_CLIENT_LIST")) {
        if (!isOwn(window) && !isPartOfTheDesktop(*display, window) &&
            stateOf(*display, window) == normalState) {
            if (!_hidden) {
                _hidden = std::make_unique<HiddenWindows>();
            }
            _hidden->add(window, *display);
        }
    }
    display->flush();
}

void OtherApplications::show() {
    const auto display = X11::current();
    if (_hidden && display) {
        _hidden->restore(*display);
        display->flush();
    }
}

bool OtherApplications::haveWindowAt(QPoint place) {
    const auto display = X11::current();
    if (!display || !windowManagerListsWindows(*display)) {
        return false;
    }
    const std::vector<std::uint32_t> windows =
        display->property(display->root(), "_NET_CLIENT_LIST");
    return std::any_of(windows.begin(), windows.end(), [&](xcb_window_t window) {
        return !isOwn(window) && stateOf(*display, window) == normalState &&
               display->place(window) == place;
    });
}

}  // namespace ambulet
