#include "platform/linux/session/AutostartEntry.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

#include "platform/linux/applications/DesktopEntryFile.h"
#include "platform/linux/system/Environment.h"
#include "platform/linux/system/ReplaceFile.h"
#include "platform/linux/system/XdgFolders.h"

namespace ovin {
namespace {

using Path = std::filesystem::path;
using Status = LaunchAtLogin::Status;

constexpr const char* fileName = "org.ovin.Ovin.desktop";
constexpr const char* iconName = "org.ovin.Ovin";
constexpr mode_t permissions = 0644;

constexpr const char* switchedOffByGnome = "X-GNOME-Autostart-enabled";
/// Marks an entry that Ovin, not the user, has hidden.
constexpr const char* hiddenByOvin = "X-Ovin-Unregistered";

/// An empty entry when there is something else by this name, such as a folder or a file that is too long; nothing when there
/// is nothing.
std::optional<DesktopEntryFile> readEntry(const Path& path) {
    std::error_code error;
    if (std::filesystem::status(path, error).type() == std::filesystem::file_type::not_found) return std::nullopt;
    constexpr auto all = static_cast<GKeyFileFlags>(G_KEY_FILE_KEEP_COMMENTS | G_KEY_FILE_KEEP_TRANSLATIONS);
    return DesktopEntryFile::read(path, all).value_or(DesktopEntryFile());
}

bool sharesOne(const std::vector<std::string>& some, const std::vector<std::string>& others) {
    return std::find_first_of(some.begin(), some.end(), others.begin(), others.end()) != some.end();
}

bool isForThisDesktop(const DesktopEntryFile& entry, const AutostartPlaces& places) {
    if (entry.value("OnlyShowIn") && !sharesOne(entry.list("OnlyShowIn"), places.desktops)) return false;
    return !sharesOne(entry.list("NotShowIn"), places.desktops);
}

bool isSwitchedOff(const DesktopEntryFile& entry) {
    return entry.isTrue("Hidden") || entry.value(switchedOffByGnome) == "false";
}

bool startsThisProgram(const DesktopEntryFile& entry, const AutostartPlaces& places) {
    const auto required = entry.value("TryExec");
    if (required && !findProgram(*required)) return false;
    const auto program = findProgram(programOfExec(entry.value("Exec").value_or("")));
    std::error_code error;
    return program && places.program && std::filesystem::equivalent(*program, *places.program, error);
}

std::optional<DesktopEntryFile> systemEntry(const AutostartPlaces& places) {
    for (const Path& folder : places.systemFolders) {
        if (auto entry = readEntry(folder / fileName)) return entry;
    }
    return std::nullopt;
}

Status statusOf(const AutostartPlaces& places) {
    if (!places.program) return Status::notFound;
    auto entry = readEntry(places.userFolder / fileName);
    const bool isOfUser = entry.has_value();
    if (!isOfUser) entry = systemEntry(places);
    if (!entry) return Status::notRegistered;
    if (isSwitchedOff(*entry)) {
        return isOfUser && !entry->isTrue(hiddenByOvin) ? Status::requiresApproval : Status::notRegistered;
    }
    return isForThisDesktop(*entry, places) && startsThisProgram(*entry, places) ? Status::enabled : Status::notRegistered;
}

/// The user's entry, or a new one when there is none that could be kept.
DesktopEntryFile entryToWrite(const AutostartPlaces& places) {
    auto entry = readEntry(places.userFolder / fileName).value_or(DesktopEntryFile());
    entry.set("Type", "Application");
    if (!entry.value("Name")) entry.set("Name", "Ovin");
    return entry;
}

std::error_code write(const AutostartPlaces& places, const DesktopEntryFile& entry) {
    std::error_code error;
    std::filesystem::create_directories(places.userFolder, error);
    return error ? error : replaceFile(places.userFolder / fileName, entry.text(), permissions);
}

std::error_code writeEnabled(const AutostartPlaces& places) {
    DesktopEntryFile entry = entryToWrite(places);
    for (const char* key : {"Hidden", switchedOffByGnome, hiddenByOvin}) entry.remove(key);
    if (!isForThisDesktop(entry, places)) {
        for (const char* key : {"OnlyShowIn", "NotShowIn"}) entry.remove(key);
    }
    entry.set("Exec", execCommand(places.program->string()));
    // Lets desktops skip the entry without an error once Ovin has been removed.
    entry.set("TryExec", places.program->string());
    if (!entry.value("Icon")) entry.set("Icon", iconName);
    return write(places, entry);
}

std::error_code writeHidden(const AutostartPlaces& places) {
    DesktopEntryFile entry = entryToWrite(places);
    if (!entry.value("Exec")) entry.set("Exec", "ovin");
    entry.set("Hidden", "true");
    entry.set(hiddenByOvin, "true");
    return write(places, entry);
}

std::error_code removeEntry(const Path& path) {
    if (unlink(path.c_str()) == 0 || errno == ENOENT || errno == ENOTDIR) return {};
    return {errno, std::generic_category()};
}

std::string reasonOf(const Path& file, std::error_code error) {
    const std::string folder = "The folder " + file.parent_path().string();
    if (error == std::errc::permission_denied || error == std::errc::operation_not_permitted) {
        return folder + " is not yours to change.";
    }
    if (error == std::errc::read_only_file_system) return folder + " is on a disk that can only be read.";
    if (error == std::errc::no_space_on_device || error.value() == EDQUOT) return "There is no space left on the disk.";
    if (error == std::errc::not_a_directory || error == std::errc::file_exists) {
        return folder + " cannot be made, because there is a file in its place.";
    }
    if (error == std::errc::is_a_directory) return "There is a folder at " + file.string() + ", where a file should be.";
    return file.string() + " cannot be changed: " + error.message() + ".";
}

std::optional<std::string> explained(const AutostartPlaces& places, std::error_code error) {
    if (!error) return std::nullopt;
    return autostartFailure(places.userFolder / fileName, error);
}

}  // namespace

std::string autostartFailure(const Path& file, std::error_code error) {
    return "What starts when you log in could not be changed. " + reasonOf(file, error);
}

AutostartPlaces autostartPlaces() {
    AutostartPlaces places;
    places.userFolder = userFolder("XDG_CONFIG_HOME", ".config") / "autostart";
    for (const Path& folder : systemFolders("XDG_CONFIG_DIRS", "/etc/xdg"))
        places.systemFolders.push_back(folder / "autostart");
    places.program = programToStart();
    places.desktops = partsOf(environmentVariable("XDG_CURRENT_DESKTOP").value_or(""));
    return places;
}

Status AutostartEntry::status() const { return statusOf(places_()); }

std::optional<std::string> AutostartEntry::registerApplication() {
    const AutostartPlaces places = places_();
    switch (statusOf(places)) {
        case Status::enabled:
            return std::nullopt;
        case Status::notFound:
            return "Ovin cannot be started by itself, because the file that it was started from is no longer there. Install "
                   "it again.";
        case Status::requiresApproval:
            return "Ovin has been switched off in the settings of your desktop. Allow it there, among the programs that "
                   "start when you log in; or delete the file " +
                   (places.userFolder / fileName).string() + " and try again.";
        case Status::notRegistered:
            break;
    }
    return explained(places, writeEnabled(places));
}

std::optional<std::string> AutostartEntry::unregisterApplication() {
    const AutostartPlaces places = places_();
    return explained(places, systemEntry(places) ? writeHidden(places) : removeEntry(places.userFolder / fileName));
}

}  // namespace ovin
