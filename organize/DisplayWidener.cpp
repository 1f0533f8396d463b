#include "organize/DisplayWidener.h"

#include <algorithm>
#include <exception>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "organize/DisplayModeChoice.h"

namespace ovin {
namespace {

/// The record is there as soon as this key is.
constexpr const char* modeKey = "OvinOriginalDisplayModeID";
/// Says nothing by itself.
constexpr const char* displayKey = "OvinOriginalDisplayID";
/// The display server, where a user may have several sessions at the same time. Says nothing by itself either.
constexpr const char* serverKey = "OvinOriginalDisplayServer";

/// The program ends here at every launch until a person removes the record, so the line says how.
[[noreturn]] void endForRecord(const Platform& platform, const char* key, std::int64_t number) {
    const std::string place = platform.defaults.place();
    platform.log.write(std::string("Ovin: fatal: ") + key + " is out of range: " + std::to_string(number) +
                       "; remove it from " + (place.empty() ? "the settings" : place) +
                       ", and choose the display's mode by hand");
    // Aborts, and leaves a crash report behind.
    std::terminate();
}

template <typename ID>
ID idFrom(const Platform& platform, const char* key) {
    const std::int64_t number = platform.defaults.integer(key);
    if (number < std::numeric_limits<ID>::min() || number > std::numeric_limits<ID>::max()) {
        endForRecord(platform, key, number);
    }
    return static_cast<ID>(number);
}

std::string sizeOf(const DisplayMode& mode) { return std::to_string(mode.width) + "x" + std::to_string(mode.height); }

}  // namespace

DisplayWidener::DisplayWidener(const Platform& platform) : platform_(platform) {}

WidenResult DisplayWidener::widen(double toFit) {
    // One that ran when this one began may have ended since.
    if (isOfEndedSession()) (void)restore();
    if (owesRestore() || isWidened()) return WidenResult::failed;
    const DisplayID display = platform_.displays.mainDisplay();
    if (platform_.displays.isInMirrorSet(display)) return WidenResult::mirrored;
    const auto current = platform_.displays.currentMode(display);
    if (!current) return WidenResult::failed;
    const auto chosen = chooseWiderMode(platform_.displays.modes(display), *current, toFit);
    if (!chosen) return WidenResult::noSuitableMode;

    if (!writeRecord({current->id, display})) return WidenResult::failed;
    if (!platform_.displays.apply(chosen->id, display)) {
        // A refusal may have taken effect all the same, and then the mode is still to be put back.
        (void)restore();
        return WidenResult::failed;
    }
    scale_ = static_cast<double>(chosen->width) / static_cast<double>(std::max(current->width, 1));
    platform_.log.write("Ovin: widened display to " + sizeOf(*chosen) + " for arranging");
    return WidenResult::widened;
}

bool DisplayWidener::restore() {
    if (!owesRestore()) return true;
    if (isOfAnotherSession()) {
        platform_.log.write("Ovin: a display of another session is widened; that session will restore it");
        return true;
    }
    const Record record = readRecord();
    if (!isInForce(record)) {
        const std::vector<DisplayMode> modes = platform_.displays.modes(record.display);
        const auto mode = std::find_if(modes.begin(), modes.end(),
                                       [&](const DisplayMode& candidate) { return candidate.id == record.modeID; });
        if (mode == modes.end()) {
            platform_.log.write("Ovin: the widened display is unavailable; will retry restoring it");
            return false;
        }
        // That the system says it has switched is not enough to forget the mode.
        if (!platform_.displays.apply(record.modeID, record.display) || !isInForce(record)) {
            platform_.log.write("Ovin: could not restore the display mode yet; will retry");
            return false;
        }
        platform_.log.write("Ovin: restored display to " + sizeOf(*mode));
    }
    scale_ = 1;
    removeRecord();
    return true;
}

bool DisplayWidener::isWidened() const { return platform_.defaults.object(modeKey).has_value(); }

/// Whether a widening is still to be undone. Tries once more to remove the record of one that has been undone, because that
/// record would undo a mode that the user has chosen since.
bool DisplayWidener::owesRestore() {
    if (isRecordSettled_) removeRecord();
    return isWidened() && !isRecordSettled_;
}

bool DisplayWidener::writeRecord(const Record& record) {
    UserDefaults& defaults = platform_.defaults;
    // The mode comes last because it makes the record. Whatever happens in between, no mode is ever on record without its
    // display: it would never be put back or, worse, be put on another display.
    if (writeServer() && defaults.set(displayKey, std::int64_t{record.display}) &&
        defaults.set(modeKey, std::int64_t{record.modeID})) {
        return true;
    }
    (void)defaults.remove(displayKey);
    forgetServer();
    platform_.log.write("Ovin: could not record the display mode; the display stays as it is");
    return false;
}

DisplayWidener::Record DisplayWidener::readRecord() const {
    return {idFrom<std::int32_t>(platform_, modeKey), idFrom<DisplayID>(platform_, displayKey)};
}

void DisplayWidener::removeRecord() {
    // The other way round for the same reason. If the record cannot be removed, the next launch finds its mode in force;
    // until then this run remembers that the record is settled.
    isRecordSettled_ = !platform_.defaults.remove(modeKey);
    if (!isRecordSettled_) {
        (void)platform_.defaults.remove(displayKey);
        forgetServer();
    } else {
        platform_.log.write("Ovin: could not remove the record of the display mode; will retry");
    }
}

bool DisplayWidener::writeServer() {
    const auto name = platform_.displays.serverName();
    if (name) return platform_.defaults.set(serverKey, *name);
    forgetServer();
    return true;
}

void DisplayWidener::forgetServer() {
    if (platform_.defaults.object(serverKey)) (void)platform_.defaults.remove(serverKey);
}

std::optional<std::string> DisplayWidener::recordedServer() const {
    const auto server = platform_.defaults.object(serverKey);
    const auto* name = server ? std::get_if<std::string>(&*server) : nullptr;
    return name == nullptr ? std::nullopt : std::optional(*name);
}

/// Only if that session still runs: the record of an ended session is paid by the next session that has the display.
bool DisplayWidener::isOfAnotherSession() const {
    const auto name = recordedServer();
    return name && platform_.displays.isAnotherServer(*name);
}

bool DisplayWidener::isOfEndedSession() const {
    const auto name = recordedServer();
    return name && name != platform_.displays.serverName() && !platform_.displays.isAnotherServer(*name);
}

bool DisplayWidener::isInForce(const Record& record) const {
    const auto current = platform_.displays.currentMode(record.display);
    return current && current->id == record.modeID;
}

}  // namespace ovin
