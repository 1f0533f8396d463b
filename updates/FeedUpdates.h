#pragma once

#include <memory>
#include <utility>

#include "platform/Platform.h"
#include "platform/UpdateServices.h"

namespace ovin {

/// An update framework of Ovin's own, for a world without one. It has the manners of the macOS framework, whose feeds it
/// reads: checks once a day, asks before it downloads, and installs only what the maker has signed. Main thread only.
class FeedUpdates final : public UpdateFramework {
public:
    /// Everything behind both must outlive this object and its controllers. The platform's own update framework is not used.
    FeedUpdates(const Platform& platform, const UpdateServices& services) : platform_(platform), services_(services) {}

    [[nodiscard]] std::unique_ptr<Controller> start(Delegate delegate) override;

private:
    const Platform platform_;
    const UpdateServices services_;
};

}  // namespace ovin
