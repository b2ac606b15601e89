#include "closebutton.h"

#include <cstdlib>
#include <memory>
#include <xcb/xcb.h>

namespace {

template <typename Reply>
using Owned = std::unique_ptr<Reply, decltype(&std::free)>;

template <typename Reply>
Owned<Reply> owned(Reply *reply)
{
    return {reply, &std::free};
}

xcb_atom_t atom(xcb_connection_t *connection, const QByteArray &name)
{
    const auto cookie =
        xcb_intern_atom(connection, false, static_cast<quint16>(name.size()), name.constData());
    const auto reply = owned(xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

QByteArray titleOf(xcb_connection_t *connection, xcb_window_t window)
{
    constexpr quint32 kLongest = 64; // in units of four bytes
    const auto cookie = xcb_get_property(connection, false, window, atom(connection, "_NET_WM_NAME"),
                                         atom(connection, "UTF8_STRING"), 0, kLongest);
    const auto reply = owned(xcb_get_property_reply(connection, cookie, nullptr));
    if (!reply)
        return QByteArray();
    const auto *text = static_cast<const char *>(xcb_get_property_value(reply.get()));
    return QByteArray(text, xcb_get_property_value_length(reply.get()));
}

bool sendCloseRequest(xcb_connection_t *connection, xcb_window_t window)
{
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = atom(connection, "WM_PROTOCOLS");
    event.data.data32[0] = atom(connection, "WM_DELETE_WINDOW");
    event.data.data32[1] = XCB_CURRENT_TIME;
    const auto cookie = xcb_send_event_checked(connection, false, window, XCB_EVENT_MASK_NO_EVENT,
                                               reinterpret_cast<const char *>(&event));
    return !owned(xcb_request_check(connection, cookie));
}

} // namespace

bool clickCloseButton(const QByteArray &display, const QByteArray &title)
{
    const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> owner(
        xcb_connect(display.constData(), nullptr), &xcb_disconnect);
    xcb_connection_t *connection = owner.get();
    if (xcb_connection_has_error(connection) != 0)
        return false;
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const auto tree = owned(xcb_query_tree_reply(connection, xcb_query_tree(connection, root), nullptr));
    if (!tree)
        return false;
    const xcb_window_t *windows = xcb_query_tree_children(tree.get());
    for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
        if (titleOf(connection, windows[i]) == title)
            return sendCloseRequest(connection, windows[i]);
    }
    return false;
}
