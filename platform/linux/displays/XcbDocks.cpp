#include "platform/linux/displays/XcbDocks.h"

#include <QtGui/qguiapplication_platform.h>
#include <QGuiApplication>
#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

#include "platform/linux/displays/Xcb.h"

namespace ovin {
namespace {

using Numbers = std::vector<std::uint32_t>;

enum Name { clientList, workArea, windowType, dockType, strut, partialStrut, nameCount };
constexpr std::array<std::string_view, nameCount> names{"_NET_CLIENT_LIST",    "_NET_WORKAREA",
                                                        "_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_DOCK",
                                                        "_NET_WM_STRUT",       "_NET_WM_STRUT_PARTIAL"};
using Atoms = std::array<xcb_atom_t, nameCount>;

/// Asks about all windows before it waits for the first answer.
class DockReader {
public:
    explicit DockReader(xcb_connection_t* connection)
        : connection_(connection), root_(xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root) {
        std::array<xcb_intern_atom_cookie_t, nameCount> questions{};
        for (std::size_t index = 0; index < names.size(); ++index) {
            const std::string_view name = names.at(index);
            questions.at(index) = xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data());
        }
        for (std::size_t index = 0; index < names.size(); ++index) {
            const FromXcb<xcb_intern_atom_reply_t> reply{xcb_intern_atom_reply(connection_, questions.at(index), nullptr)};
            if (reply) atoms_.at(index) = reply->atom;
        }
    }

    [[nodiscard]] DockLayout read() const {
        const auto size = xcb_get_geometry(connection_, root_);
        const auto area = ask(root_, workArea);
        const auto listed = ask(root_, clientList);
        DockLayout layout;
        if (const FromXcb<xcb_get_geometry_reply_t> reply{xcb_get_geometry_reply(connection_, size, nullptr)})
            layout.size = {static_cast<double>(reply->width), static_cast<double>(reply->height)};
        if (const Numbers numbers = answer(area); numbers.size() >= 4) {
            const auto number = [&numbers](std::size_t index) { return static_cast<double>(numbers[index]); };
            layout.workArea = Rect{{number(0), number(1)}, {number(2), number(3)}};
        }
        Numbers windows = answer(listed);
        // Without a window manager there is no list, and no other window between the root and a bar.
        if (windows.empty()) windows = children();
        for (const xcb_window_t window : docksAmong(windows)) addTo(layout, window);
        return layout;
    }

private:
    [[nodiscard]] xcb_get_property_cookie_t ask(xcb_window_t window, Name property) const {
        constexpr std::uint32_t most = 4096;
        return xcb_get_property(connection_, 0, window, atoms_.at(property), XCB_GET_PROPERTY_TYPE_ANY, 0, most);
    }

    [[nodiscard]] Numbers answer(xcb_get_property_cookie_t question) const {
        const FromXcb<xcb_get_property_reply_t> reply{xcb_get_property_reply(connection_, question, nullptr)};
        if (!reply || reply->format != 32) return {};
        const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
        return {first, first + reply->value_len};
    }

    [[nodiscard]] Numbers children() const {
        const FromXcb<xcb_query_tree_reply_t> reply{
            xcb_query_tree_reply(connection_, xcb_query_tree(connection_, root_), nullptr)};
        if (!reply) return {};
        const xcb_window_t* const first = xcb_query_tree_children(reply.get());
        return {first, first + reply->children_len};
    }

    [[nodiscard]] Numbers docksAmong(const Numbers& windows) const {
        std::vector<xcb_get_property_cookie_t> questions;
        questions.reserve(windows.size());
        for (const xcb_window_t window : windows) questions.push_back(ask(window, windowType));
        Numbers docks;
        for (std::size_t index = 0; index < windows.size(); ++index) {
            for (const std::uint32_t type : answer(questions[index])) {
                if (type != atoms_[dockType]) continue;
                docks.push_back(windows[index]);
                break;
            }
        }
        return docks;
    }

    void addTo(DockLayout& layout, xcb_window_t window) const {
        const auto size = xcb_get_geometry(connection_, window);
        const auto place = xcb_translate_coordinates(connection_, window, root_, 0, 0);
        const auto state = xcb_get_window_attributes(connection_, window);
        const auto whole = ask(window, strut);
        const auto partial = ask(window, partialStrut);
        const FromXcb<xcb_get_geometry_reply_t> extent{xcb_get_geometry_reply(connection_, size, nullptr)};
        const FromXcb<xcb_translate_coordinates_reply_t> origin{
            xcb_translate_coordinates_reply(connection_, place, nullptr)};
        const FromXcb<xcb_get_window_attributes_reply_t> attributes{
            xcb_get_window_attributes_reply(connection_, state, nullptr)};
        const Numbers older = answer(whole);
        const Numbers newer = answer(partial);
        if (!extent || !origin || !attributes || attributes->map_state != XCB_MAP_STATE_VIEWABLE) return;
        layout.docks.push_back({{{static_cast<double>(origin->dst_x), static_cast<double>(origin->dst_y)},
                                 {static_cast<double>(extent->width), static_cast<double>(extent->height)}},
                                strutsOf(newer.empty() ? older : newer)});
    }

    xcb_connection_t* const connection_;
    const xcb_window_t root_;
    Atoms atoms_{};
};

}  // namespace

std::optional<DockLayout> readDocks() {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr || x11->connection() == nullptr) return std::nullopt;
    static const DockReader reader(x11->connection());
    return reader.read();
}

}  // namespace ovin
