// Ovin on macOS: the only place that chooses a world.

#include <optional>

#include "app/AppDelegate.h"
#include "platform/macos/MacWorld.h"
#include "platform/macos/session/FirstInstance.h"
#include "platform/macos/system/MacProcessInfo.h"

namespace ovin {
namespace {

void run() {
    const auto process = makeMacProcessInfo();
    const std::string identifier = process->bundleIdentifier();
    // A program that only previews one window may run beside the real one.
    const bool isPreview = AppDelegate::isPreview(*process);
    if (!isPreview && FirstInstance::askAnother(identifier)) return;

    MacWorld world;
    AppDelegate delegate(world.platform());
    const auto openLedge = [&delegate] { delegate.openLedge(); };
    std::optional<FirstInstance> instance;
    if (!isPreview) instance.emplace(identifier, openLedge);
    world.application().run({[&delegate] { delegate.applicationDidFinishLaunching(); },
                             [&delegate] { delegate.applicationWillTerminate(); }, openLedge});
}

}  // namespace
}  // namespace ovin

int main() {
    @autoreleasepool {
        ovin::run();
    }
    return 0;
}
