#include "platform/linux/updates/LinuxUpdates.h"

#include "platform/linux/session/OwnProgram.h"
#include "platform/linux/system/BootClock.h"
#include "platform/linux/updates/LinuxPackages.h"
#include "platform/linux/updates/QtDownloads.h"
#include "platform/linux/updates/QtFeedReader.h"

namespace ovin {
namespace {

struct Updating {
    explicit Updating(const PublicKey& key) : packages({key, ownAppImage(), downloadFolder()}) {}

    BootClock clock;
    QtDownloads downloads{downloadFolder()};
    QtFeedReader reader;
    LinuxPackages packages;
    UpdateServices services{clock, downloads, reader, packages};
};

}  // namespace

std::shared_ptr<UpdateServices> openUpdateServices(std::string_view publicKey) {
    const auto key = publicKeyFrom(publicKey);
    if (!key) return nullptr;
    const auto updating = std::make_shared<Updating>(*key);
    updating->packages.removeLeftovers();
    return {updating, &updating->services};
}

}  // namespace ovin
