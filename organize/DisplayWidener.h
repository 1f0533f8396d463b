#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/Platform.h"

namespace ovin {

enum class WidenResult {
    /// The main display runs in a wider mode now.
    widened,
    /// It shows the same as another one; nothing was changed.
    mirrored,
    /// It has no wider mode; nothing was changed.
    noSuitableMode,
    /// The mode could not be read, an earlier widening has not been undone, the previous mode could not be recorded, or the
    /// system refused; nothing is left changed.
    failed,
};

/// Gives the menu bar room: switches the main display to a mode that is wider in points, and back. The mode that was in
/// force before is recorded in the settings before anything changes, and the record stays until that mode is known to be in
/// force again. So a widening that a crash or a quit cut short is undone by the next launch, and no mode is ever forgotten.
///
/// One per program. Main thread only.
class DisplayWidener {
public:
    /// Everything behind `platform` must outlive the widener.
    explicit DisplayWidener(const Platform& platform);

    DisplayWidener(const DisplayWidener&) = delete;
    DisplayWidener& operator=(const DisplayWidener&) = delete;
    ~DisplayWidener() = default;

    /// Switches to the narrowest mode that is at least `toFit` points wide, or else to the widest. Undoes first what a
    /// session owes that has ended.
    [[nodiscard]] WidenResult widen(double toFit);

    /// Puts the recorded mode back. True when nothing remains to be undone, or when the record is that of another running
    /// session of this user, which has displays of its own; false when the display is away or the system refused: then it
    /// has to be tried again later. Ends the program when the record holds what cannot be an id.
    [[nodiscard]] bool restore();

    /// Whether a widening is on record, by this run of the program, an earlier one or another session's.
    [[nodiscard]] bool isWidened() const;

    /// How many times wider the main display is than before. 1 while it is not widened, and after a relaunch.
    [[nodiscard]] double scale() const { return scale_; }

private:
    struct Record {
        std::int32_t modeID = 0;
        DisplayID display = 0;
    };

    [[nodiscard]] bool owesRestore();
    [[nodiscard]] bool writeRecord(const Record& record);
    [[nodiscard]] Record readRecord() const;
    void removeRecord();
    [[nodiscard]] bool writeServer();
    void forgetServer();
    [[nodiscard]] std::optional<std::string> recordedServer() const;
    [[nodiscard]] bool isOfAnotherSession() const;
    [[nodiscard]] bool isOfEndedSession() const;
    [[nodiscard]] bool isInForce(const Record& record) const;

    const Platform platform_;
    double scale_ = 1;
    /// What is on record is undone, but could not be removed.
    bool isRecordSettled_ = false;
};

}  // namespace ovin
