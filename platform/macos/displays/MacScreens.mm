#include "platform/macos/displays/MacScreens.h"

#import <AppKit/AppKit.h>

#include <utility>

#include "platform/macos/displays/Coordinates.h"
#include "platform/macos/system/NotificationObserver.h"

namespace ovin {
namespace {

class ScreenObservation final : public Screens::Observation {
public:
    explicit ScreenObservation(std::function<void()> handler)
        : observer_(NSNotificationCenter.defaultCenter, NSApplicationDidChangeScreenParametersNotification,
                    std::move(handler)) {}

private:
    NotificationObserver observer_;
};

class MacScreens final : public Screens {
public:
    [[nodiscard]] std::optional<Screen> main() const override {
        NSScreen* screen = NSScreen.mainScreen;
        if (screen == nil) screen = NSScreen.screens.firstObject;
        if (screen == nil) return std::nullopt;
        return Screen{fromNative(screen.frame), fromNative(screen.visibleFrame)};
    }

    [[nodiscard]] std::unique_ptr<Observation> observeChanges(std::function<void()> handler) override {
        return std::make_unique<ScreenObservation>(std::move(handler));
    }
};

}  // namespace

std::unique_ptr<Screens> makeMacScreens() { return std::make_unique<MacScreens>(); }

}  // namespace ovin
