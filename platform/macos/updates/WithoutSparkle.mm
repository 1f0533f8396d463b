// Takes the place of MacUpdates.mm in builds that do not update themselves.
#include "platform/macos/updates/MacUpdates.h"

namespace ovin {

std::unique_ptr<UpdateFramework> makeMacUpdates() { return nullptr; }

}  // namespace ovin
