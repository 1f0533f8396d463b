#include "platform/linux/displays/XcbRandr.h"

#include <xcb/randr.h>

#include <algorithm>
#include <cmath>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ovin {
namespace {

constexpr std::uint32_t majorVersion = 1;
constexpr std::uint32_t minorVersion = 3;

/// The bytes of an EDID block. The first block holds the monitor's maker, model and serial number.
constexpr std::uint32_t monitorBlock = 128;

template <typename Element, typename Length>
std::span<const Element> spanOf(const Element* elements, Length length) {
    return {elements, static_cast<std::size_t>(std::max<Length>(length, 0))};
}

/// The X screen of this number, with which the display's name may end.
const xcb_screen_t* screenNumbered(const xcb_setup_t* setup, int number) {
    auto screens = xcb_setup_roots_iterator(setup);
    for (; screens.rem > 0 && number > 0; --number) xcb_screen_next(&screens);
    return screens.rem > 0 ? screens.data : nullptr;
}

bool speaksRandr(xcb_connection_t* connection) {
    const xcb_query_extension_reply_t* extension = xcb_get_extension_data(connection, &xcb_randr_id);
    if (extension == nullptr || extension->present == 0) return false;
    const FromXcb<xcb_randr_query_version_reply_t> version{
        xcb_randr_query_version_reply(connection, xcb_randr_query_version(connection, majorVersion, minorVersion), nullptr)};
    return version && std::pair(version->major_version, version->minor_version) >= std::pair(majorVersion, minorVersion);
}

RandrMode modeOf(const xcb_randr_mode_info_t& info) {
    constexpr std::uint32_t notPlain = XCB_RANDR_MODE_FLAG_INTERLACE | XCB_RANDR_MODE_FLAG_DOUBLE_SCAN;
    const std::uint64_t pixels = std::uint64_t{info.htotal} * info.vtotal;
    const auto millihertz = pixels == 0 ? 0 : std::uint64_t{info.dot_clock} * 1000 / pixels;
    return {info.id,
            {info.width, info.height},
            (info.mode_flags & notPlain) == 0,
            static_cast<std::uint32_t>(millihertz),
            info.mode_flags};
}

RandrOutput outputOf(std::uint32_t id, const xcb_randr_get_output_info_reply_t& info) {
    const auto name = spanOf(xcb_randr_get_output_info_name(&info), xcb_randr_get_output_info_name_length(&info));
    const auto modes = spanOf(xcb_randr_get_output_info_modes(&info), xcb_randr_get_output_info_modes_length(&info));
    return {id, {name.begin(), name.end()}, info.crtc, {modes.begin(), modes.end()}, {}};
}

RandrCrtc crtcOf(std::uint32_t id, const xcb_randr_get_crtc_info_reply_t& info) {
    const auto outputs = spanOf(xcb_randr_get_crtc_info_outputs(&info), xcb_randr_get_crtc_info_outputs_length(&info));
    return {id, info.x, info.y, {info.width, info.height}, info.mode, info.rotation, {outputs.begin(), outputs.end()}};
}

std::string textOf(const xcb_randr_get_output_property_reply_t& property) {
    const auto bytes =
        spanOf(xcb_randr_get_output_property_data(&property), xcb_randr_get_output_property_data_length(&property));
    return {bytes.begin(), bytes.end()};
}

/// Sends a request for each id, and returns the ids with the requests' cookies.
template <typename Ask>
auto askEach(std::span<const std::uint32_t> ids, const Ask& ask) {
    std::vector<std::pair<std::uint32_t, decltype(ask(std::uint32_t{}))>> asked;
    asked.reserve(ids.size());
    for (const std::uint32_t id : ids) asked.emplace_back(id, ask(id));
    return asked;
}

}  // namespace

std::unique_ptr<XcbRandr> XcbRandr::connect(const char* display) {
    int number = 0;
    XcbConnection connection(xcb_connect(display, &number));
    if (xcb_connection_has_error(connection.get()) != 0) return nullptr;
    const xcb_screen_t* screen = screenNumbered(xcb_get_setup(connection.get()), number);
    if (screen == nullptr || !speaksRandr(connection.get())) return nullptr;
    return std::unique_ptr<XcbRandr>(new XcbRandr(std::move(connection), *screen));
}

/// Asks for the size, which may have changed since the connection; the density at that time still holds.
std::optional<RandrScreen> XcbRandr::readScreen() {
    xcb_connection_t* connection = connection_.get();
    const auto geometryAsked = xcb_get_geometry(connection, screen_.root);
    const auto rangeAsked = xcb_randr_get_screen_size_range(connection, screen_.root);
    const FromXcb<xcb_get_geometry_reply_t> geometry{xcb_get_geometry_reply(connection, geometryAsked, nullptr)};
    const FromXcb<xcb_randr_get_screen_size_range_reply_t> range{
        xcb_randr_get_screen_size_range_reply(connection, rangeAsked, nullptr)};
    if (!geometry || !range) return std::nullopt;
    const auto millimetres = [](int length, int pixels, int ofMillimetres) {
        return static_cast<int>(std::lround(static_cast<double>(ofMillimetres) * length / std::max(pixels, 1)));
    };
    return RandrScreen{{geometry->width, geometry->height},
                       {millimetres(geometry->width, screen_.width_in_pixels, screen_.width_in_millimeters),
                        millimetres(geometry->height, screen_.height_in_pixels, screen_.height_in_millimeters)},
                       {range->min_width, range->min_height},
                       {range->max_width, range->max_height}};
}

std::optional<RandrState> XcbRandr::read() {
    xcb_connection_t* connection = connection_.get();
    constexpr std::string_view monitorProperty = "EDID";
    const auto atomAsked =
        xcb_intern_atom(connection, 1, static_cast<std::uint16_t>(monitorProperty.size()), monitorProperty.data());
    const auto screen = readScreen();
    // Asks for what the server knows already, because a new search for displays would take it a long time.
    const FromXcb<xcb_randr_get_screen_resources_current_reply_t> resources{xcb_randr_get_screen_resources_current_reply(
        connection, xcb_randr_get_screen_resources_current(connection, screen_.root), nullptr)};
    const FromXcb<xcb_randr_get_output_primary_reply_t> primary{
        xcb_randr_get_output_primary_reply(connection, xcb_randr_get_output_primary(connection, screen_.root), nullptr)};
    const FromXcb<xcb_intern_atom_reply_t> atom{xcb_intern_atom_reply(connection, atomAsked, nullptr)};
    if (!screen || !resources || !primary || !atom) return std::nullopt;

    RandrState state;
    state.configTime = resources->config_timestamp;
    state.screen = *screen;
    state.primary = primary->output;
    for (const auto& mode : spanOf(xcb_randr_get_screen_resources_current_modes(resources.get()),
                                   xcb_randr_get_screen_resources_current_modes_length(resources.get()))) {
        state.modes.push_back(modeOf(mode));
    }
    const auto outputs = spanOf(xcb_randr_get_screen_resources_current_outputs(resources.get()),
                                xcb_randr_get_screen_resources_current_outputs_length(resources.get()));
    const auto crtcs = spanOf(xcb_randr_get_screen_resources_current_crtcs(resources.get()),
                              xcb_randr_get_screen_resources_current_crtcs_length(resources.get()));
    // Sends all requests before reading the first reply, so that dozens of outputs cost one wait instead of one each.
    const auto outputsAsked =
        askEach(outputs, [&](auto id) { return xcb_randr_get_output_info(connection, id, state.configTime); });
    const auto monitorsAsked = askEach(outputs, [&](auto id) {
        return xcb_randr_get_output_property(connection, id, atom->atom, XCB_GET_PROPERTY_TYPE_ANY, 0, monitorBlock / 4, 0,
                                             0);
    });
    const auto crtcsAsked =
        askEach(crtcs, [&](auto id) { return xcb_randr_get_crtc_info(connection, id, state.configTime); });
    for (const auto& [id, asked] : outputsAsked) {
        const FromXcb<xcb_randr_get_output_info_reply_t> info{xcb_randr_get_output_info_reply(connection, asked, nullptr)};
        if (info && info->status == XCB_RANDR_SET_CONFIG_SUCCESS) state.outputs.push_back(outputOf(id, *info));
    }
    for (const auto& [id, asked] : monitorsAsked) {
        const FromXcb<xcb_randr_get_output_property_reply_t> property{
            xcb_randr_get_output_property_reply(connection, asked, nullptr)};
        const auto output = std::find_if(state.outputs.begin(), state.outputs.end(),
                                         [id = id](const RandrOutput& known) { return known.id == id; });
        if (property && output != state.outputs.end()) output->monitor = textOf(*property);
    }
    for (const auto& [id, asked] : crtcsAsked) {
        const FromXcb<xcb_randr_get_crtc_info_reply_t> info{xcb_randr_get_crtc_info_reply(connection, asked, nullptr)};
        if (info && info->status == XCB_RANDR_SET_CONFIG_SUCCESS) state.crtcs.push_back(crtcOf(id, *info));
    }
    if (xcb_connection_has_error(connection) != 0) return std::nullopt;
    return state;
}

void XcbRandr::setGrabbed(bool grabbed) {
    grabbed ? xcb_grab_server(connection_.get()) : xcb_ungrab_server(connection_.get());
    xcb_flush(connection_.get());
}

RandrServer::Answer XcbRandr::setCrtc(const RandrCrtc& crtc, std::uint32_t configTime) {
    const auto asked =
        xcb_randr_set_crtc_config(connection_.get(), crtc.id, XCB_CURRENT_TIME, configTime,
                                  static_cast<std::int16_t>(crtc.x), static_cast<std::int16_t>(crtc.y), crtc.mode,
                                  crtc.rotation, static_cast<std::uint32_t>(crtc.outputs.size()), crtc.outputs.data());
    const FromXcb<xcb_randr_set_crtc_config_reply_t> reply{
        xcb_randr_set_crtc_config_reply(connection_.get(), asked, nullptr)};
    if (!reply) return Answer::refused;
    if (reply->status == XCB_RANDR_SET_CONFIG_INVALID_CONFIG_TIME) return Answer::outdated;
    return reply->status == XCB_RANDR_SET_CONFIG_SUCCESS ? Answer::done : Answer::refused;
}

bool XcbRandr::setScreen(Extent size, Extent millimetres) {
    const auto asked = xcb_randr_set_screen_size_checked(
        connection_.get(), screen_.root, static_cast<std::uint16_t>(size.width), static_cast<std::uint16_t>(size.height),
        static_cast<std::uint32_t>(millimetres.width), static_cast<std::uint32_t>(millimetres.height));
    const FromXcb<xcb_generic_error_t> error{xcb_request_check(connection_.get(), asked)};
    return !error && xcb_connection_has_error(connection_.get()) == 0;
}

}  // namespace ovin
