#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

namespace ovin {

struct XcbDisconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};

/// A separate connection to the X server. Destroying it releases whatever it held at the server, such as grabs.
using XcbConnection = std::unique_ptr<xcb_connection_t, XcbDisconnect>;

struct XcbFree {
    void operator()(void* pointer) const { std::free(pointer); }  // NOLINT(cppcoreguidelines-no-malloc)
};

/// A reply, an event or an error of the server.
template <typename Type>
using FromXcb = std::unique_ptr<Type, XcbFree>;

}  // namespace ovin
