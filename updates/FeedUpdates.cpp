#include "updates/FeedUpdates.h"

#include "updates/UpdateChecker.h"

namespace ovin {

std::unique_ptr<UpdateFramework::Controller> FeedUpdates::start(Delegate delegate) {
    return std::make_unique<UpdateChecker>(platform_, services_, std::move(delegate));
}

}  // namespace ovin
