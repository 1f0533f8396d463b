#include "desktop/X11Properties.h"

#include <QtGui/qguiapplication_platform.h>
#include <QGuiApplication>
#include <cstring>

#include "platform/linux/displays/Xcb.h"

namespace ovin::X11Properties {

xcb_connection_t* connection() { return qApp->nativeInterface<QNativeInterface::QX11Application>()->connection(); }

xcb_window_t rootWindow() { return xcb_setup_roots_iterator(xcb_get_setup(connection())).data->root; }

xcb_atom_t atom(const char* name) {
    const auto question = xcb_intern_atom(connection(), 0, static_cast<std::uint16_t>(std::strlen(name)), name);
    const FromXcb<xcb_intern_atom_reply_t> reply{xcb_intern_atom_reply(connection(), question, nullptr)};
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

void setNumbers(xcb_window_t window, const char* name, xcb_atom_t type, const std::vector<std::uint32_t>& numbers) {
    xcb_change_property(connection(), XCB_PROP_MODE_REPLACE, window, atom(name), type, 32,
                        static_cast<std::uint32_t>(numbers.size()), numbers.data());
}

QByteArray read(xcb_window_t window, xcb_atom_t property) {
    constexpr std::uint32_t mostWords = 64;
    const auto question = xcb_get_property(connection(), 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, mostWords);
    const FromXcb<xcb_get_property_reply_t> reply{xcb_get_property_reply(connection(), question, nullptr)};
    if (!reply) return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())), xcb_get_property_value_length(reply.get())};
}

}  // namespace ovin::X11Properties
