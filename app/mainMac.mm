// Ovin on macOS: the only place that chooses a world.

#include "app/AppDelegate.h"
#include "platform/macos/MacWorld.h"

namespace ovin {
namespace {

void run() {
    MacWorld world;
    AppDelegate delegate(world.platform());
    world.application().run({[&delegate] { delegate.applicationDidFinishLaunching(); },
                             [&delegate] { delegate.applicationWillTerminate(); }, [&delegate] { delegate.openAgain(); }});
}

}  // namespace
}  // namespace ovin

int main() {
    @autoreleasepool {
        ovin::run();
    }
    return 0;
}
