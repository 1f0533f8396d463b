#pragma once

#include <xcb/xcb.h>

#include <QByteArray>
#include <cstdint>
#include <vector>

/// Window properties over the X connection of the toolkit.
namespace ovin::X11Properties {

[[nodiscard]] xcb_connection_t* connection();
[[nodiscard]] xcb_window_t rootWindow();
[[nodiscard]] xcb_atom_t atom(const char* name);

void setNumbers(xcb_window_t window, const char* name, xcb_atom_t type, const std::vector<std::uint32_t>& numbers);

/// The beginning of a property's bytes; empty when there is no such property or no such window.
[[nodiscard]] QByteArray read(xcb_window_t window, xcb_atom_t property);

}  // namespace ovin::X11Properties
