#include "updates/UpdateMessages.h"

namespace ovin::UpdateMessages {
namespace {

const std::string nothingInstalled = " Nothing was installed.";

std::string reason(DownloadFailure failure) {
    switch (failure) {
        case DownloadFailure::unreachable:
            return "The server cannot be reached. Check the connection to the internet, and try again later.";
        case DownloadFailure::untrusted:
            return "The server could not prove that it is the right one: its certificate is not valid.";
        case DownloadFailure::insecure:
            return "The server leads to an address that is not secure.";
        case DownloadFailure::refused:
            return "The server does not have it. Try again later.";
        case DownloadFailure::tooLong:
            return "The server sends more than it should.";
        case DownloadFailure::tooShort:
            return "The server sends less than it should.";
        case DownloadFailure::noRoom:
            return "There is not enough room on the disk.";
        case DownloadFailure::unwritable:
            return "The file cannot be written.";
    }
    return {};
}

}  // namespace

Alert upToDate(const std::string& installed) {
    return {"You’re up to date", "Ovin " + installed + " is the newest version there is."};
}

Alert feedFailed(DownloadFailure failure) { return {"Ovin could not look for updates", reason(failure)}; }

Alert feedUnreadable() {
    return {"Ovin could not look for updates", "What the server sends cannot be understood. Try again later."};
}

Alert downloadFailed(DownloadFailure failure) {
    return {"The update could not be downloaded", reason(failure) + nothingInstalled};
}

Alert wrongSignature() {
    return {"The update is not genuine",
            "What was downloaded is not what the maker of Ovin has signed, and has been deleted." + nothingInstalled};
}

Alert installationFailed(const std::string& reason) {
    return {"The update could not be installed", reason + nothingInstalled};
}

Alert handedOver(const std::string& version, const std::string& path) {
    return {"Ovin " + version + " is ready to be installed",
            "The package installer of your system opens it now. If it does not appear, open this file yourself: " + path};
}

Alert restartFailed(const std::string& version) {
    return {"Ovin could not be started again",
            "Ovin " + version + " is installed. It runs when you start Ovin the next time."};
}

}  // namespace ovin::UpdateMessages
