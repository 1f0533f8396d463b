#include "platform/macos/session/MacLaunchAtLogin.h"

#import <ServiceManagement/ServiceManagement.h>

#include "platform/macos/system/Strings.h"

namespace ovin {
namespace {

LaunchAtLogin::Status statusOf(SMAppServiceStatus status) {
    switch (status) {
        case SMAppServiceStatusNotRegistered:
            return LaunchAtLogin::Status::notRegistered;
        case SMAppServiceStatusEnabled:
            return LaunchAtLogin::Status::enabled;
        case SMAppServiceStatusRequiresApproval:
            return LaunchAtLogin::Status::requiresApproval;
        case SMAppServiceStatusNotFound:
            return LaunchAtLogin::Status::notFound;
    }
    return LaunchAtLogin::Status::notFound;
}

std::string wordsOf(NSError* _Nullable error) {
    return error != nil ? toString(error.localizedDescription) : "the system refused without a reason";
}

/// The system reports an error when the state is already the requested one; the product does not.
class MacLaunchAtLogin final : public LaunchAtLogin {
public:
    [[nodiscard]] Status status() const override { return statusOf(SMAppService.mainAppService.status); }

    [[nodiscard]] std::optional<std::string> registerApplication() override {
        if (status() == Status::enabled) return std::nullopt;
        NSError* error = nil;
        if ([SMAppService.mainAppService registerAndReturnError:&error]) return std::nullopt;
        return wordsOf(error);
    }

    [[nodiscard]] std::optional<std::string> unregisterApplication() override {
        if (status() == Status::notRegistered) return std::nullopt;
        NSError* error = nil;
        if ([SMAppService.mainAppService unregisterAndReturnError:&error]) return std::nullopt;
        return wordsOf(error);
    }
};

}  // namespace

std::unique_ptr<LaunchAtLogin> makeMacLaunchAtLogin() { return std::make_unique<MacLaunchAtLogin>(); }

}  // namespace ovin
