// Clicks on a status item as a person's mouse does, and tells how long the window that it opens takes to be on the screen.
//
//     click_probe X Y COLOUR CLICKS HOLD PAUSE
//
// X and Y are a place on the status item; COLOUR, six hexadecimal digits, is one that only the opened window shows below the
// menu bar. The button is held for HOLD milliseconds, and PAUSE passes between the end of one click and the next. Odd clicks
// open, even ones close. Prints the milliseconds from each opening release to the moment when the screen shows that colour,
// one a line, and "lost" for a click that nothing follows within two seconds.
//
//     click_probe X Y any CLICKS HOLD PAUSE
//
// takes any change below the place that is clicked for the window.
//
//     click_probe X Y rapid CLICKS HOLD PAUSE
//
// only clicks.

#include <poll.h>
#include <xcb/damage.h>
#include <xcb/xtest.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <thread>

#include "platform/linux/displays/Xcb.h"

namespace {

using ovin::FromXcb;
using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;
using namespace std::chrono_literals;

/// No window of Ovin's is above this line, and no picture of the bar's below it.
constexpr std::int16_t barBottom = 30;
/// So far below it every window that a click opens there has something.
constexpr std::int16_t depth = 15;
constexpr std::uint16_t searched = 120;
constexpr std::uint32_t colourBits = 0xffffff;
constexpr auto bound = 2s;

struct Place {
    std::int16_t x = 0;
    std::int16_t y = 0;
};

class Probe {
public:
    Probe() : connection_(xcb_connect(nullptr, nullptr)) {
        if (xcb_connection_has_error(connection_) != 0) fail("no X server");
        screen_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
        const FromXcb<xcb_damage_query_version_reply_t> version{
            xcb_damage_query_version_reply(connection_, xcb_damage_query_version(connection_, 1, 1), nullptr)};
        if (!version) fail("the X server does not tell of damage");
        // Tells of everything that is drawn on the screen, also by other programs.
        xcb_damage_create(connection_, xcb_generate_id(connection_), screen_->root, XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
        xcb_flush(connection_);
    }
    ~Probe() { xcb_disconnect(connection_); }
    Probe(const Probe&) = delete;
    Probe& operator=(const Probe&) = delete;

    void pointAt(Place place) {
        xcb_test_fake_input(connection_, XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME, screen_->root, place.x, place.y, 0);
        xcb_flush(connection_);
    }

    /// Returns when the release was sent.
    Clock::time_point click(Milliseconds hold) {
        xcb_test_fake_input(connection_, XCB_BUTTON_PRESS, 1, XCB_CURRENT_TIME, screen_->root, 0, 0, 0);
        if (hold.count() > 0) {
            xcb_flush(connection_);
            std::this_thread::sleep_for(hold);
        }
        xcb_test_fake_input(connection_, XCB_BUTTON_RELEASE, 1, XCB_CURRENT_TIME, screen_->root, 0, 0, 0);
        const auto sent = Clock::now();
        xcb_flush(connection_);
        return sent;
    }

    std::uint32_t colourAt(Place place) {
        const auto image = read(place, 1, 1);
        return *reinterpret_cast<const std::uint32_t*>(xcb_get_image_data(image.get())) & colourBits;
    }

    /// The last place below the bar that has this colour.
    std::optional<Place> find(std::uint32_t colour) {
        const std::uint16_t width = screen_->width_in_pixels;
        const auto image = read({0, barBottom}, width, searched);
        const auto* pixels = reinterpret_cast<const std::uint32_t*>(xcb_get_image_data(image.get()));
        for (int i = width * searched - 1; i >= 0; --i) {
            if ((pixels[i] & colourBits) == colour)
                return Place{static_cast<std::int16_t>(i % width), static_cast<std::int16_t>(barBottom + i / width)};
        }
        return std::nullopt;
    }

    /// Looks again whenever something has been drawn, so that waiting costs the desktop nothing. Returns when it was seen.
    std::optional<Clock::time_point> await(Place place, std::uint32_t colour, bool isShown) {
        const auto deadline = Clock::now() + bound;
        while ((colourAt(place) == colour) != isShown) {
            if (Clock::now() > deadline) return std::nullopt;
            awaitDrawing();
        }
        return Clock::now();
    }

private:
    [[noreturn]] static void fail(const char* problem) {
        std::fprintf(stderr, "click_probe: %s\n", problem);
        std::exit(1);
    }

    FromXcb<xcb_get_image_reply_t> read(Place place, std::uint16_t width, std::uint16_t height) {
        FromXcb<xcb_get_image_reply_t> image{xcb_get_image_reply(
            connection_,
            xcb_get_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, screen_->root, place.x, place.y, width, height, ~0U),
            nullptr)};
        if (!image) fail("the screen cannot be read");
        return image;
    }

    bool takeEvents() {
        bool isAny = false;
        while (const FromXcb<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) isAny = true;
        return isAny;
    }

    /// Nothing may be drawn when a window goes, so this looks after a while anyway.
    void awaitDrawing() {
        if (takeEvents()) return;
        pollfd descriptor{xcb_get_file_descriptor(connection_), POLLIN, 0};
        poll(&descriptor, 1, 20);
        takeEvents();
    }

    xcb_connection_t* connection_;
    xcb_screen_t* screen_ = nullptr;
};

struct Clicks {
    int count;
    Milliseconds hold;
    Milliseconds pause;
};

int clickOnly(Probe& probe, const Clicks& clicks) {
    for (int i = 0; i < clicks.count; ++i) {
        probe.click(clicks.hold);
        std::this_thread::sleep_for(clicks.pause);
    }
    return 0;
}

/// Where the opened window shows the colour.
std::optional<Place> explore(Probe& probe, std::uint32_t colour) {
    for (int attempt = 0; attempt < 5; ++attempt) {
        probe.click(20ms);
        std::this_thread::sleep_for(1s);
        const auto place = probe.find(colour);
        probe.click(20ms);
        std::this_thread::sleep_for(1s);
        if (place && !probe.find(colour)) return place;
    }
    return std::nullopt;
}

/// The window is there while the place has the colour, or, with `isInverse`, another one.
int measure(Probe& probe, Place place, std::uint32_t colour, bool isInverse, const Clicks& clicks) {
    for (int i = 0; i < clicks.count; ++i) {
        const auto sent = probe.click(clicks.hold);
        const auto seen = probe.await(place, colour, !isInverse);
        seen ? std::printf("%.3f\n", Milliseconds(*seen - sent).count()) : std::printf("lost\n");
        std::this_thread::sleep_for(clicks.pause);
        if (seen) probe.click(clicks.hold);
        if (!probe.await(place, colour, isInverse)) return std::fputs("click_probe: it stays open\n", stderr), 1;
        std::this_thread::sleep_for(clicks.pause);
    }
    return 0;
}

}  // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount != 7) {
        std::fputs("Usage: click_probe X Y COLOUR|any|rapid CLICKS HOLD PAUSE\n", stderr);
        return 2;
    }
    const auto number = [&](int index) { return std::atof(arguments[index]); };
    const Clicks clicks{static_cast<int>(number(4)), Milliseconds(number(5)), Milliseconds(number(6))};
    Probe probe;
    const Place clicked{static_cast<std::int16_t>(number(1)), static_cast<std::int16_t>(number(2))};
    probe.pointAt(clicked);
    const std::string_view colour = arguments[3];
    if (colour == "rapid") return clickOnly(probe, clicks);
    if (colour == "any") {
        const Place below{clicked.x, barBottom + depth};
        return measure(probe, below, probe.colourAt(below), true, clicks);
    }
    const auto shown = static_cast<std::uint32_t>(std::strtoul(arguments[3], nullptr, 16));
    const auto place = explore(probe, shown);
    if (!place) return std::fputs("click_probe: no window opens and closes\n", stderr), 1;
    return measure(probe, *place, shown, false, clicks);
}
