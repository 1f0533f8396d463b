#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace ovin {

/// How the argument of RegisterStatusNotifierItem names the item.
enum class RegisterBy { Path, Name, Both, WellKnown };

/// What becomes of the menu that an item names.
enum class MenuFault { None, Missing, Empty, Silent, Late };

/// What the command line asks the program to show, and in which ways to misbehave.
struct ItemOptions {
    std::string id = "status-item";
    std::vector<std::string> titles;  // the id, unless given; items take them in turn
    std::string icon;
    std::optional<std::uint32_t> pixmapColour;  // 0xRRGGBB
    std::string glyph;                          // the name of a pictogram; a simple shape, unless given
    std::optional<std::string> toolTip;
    std::vector<std::string> menu;  // labels; "-" is a separator
    std::optional<bool> itemIsMenu;
    std::size_t items = 1;
    std::string status = "Active";
    std::string interface = "org.kde.StatusNotifierItem";
    std::optional<std::string> processName;
    RegisterBy registerBy = RegisterBy::Path;
    int readyDescriptor = -1;
    bool takesCommands = false;

    MenuFault menuFault = MenuFault::None;
    bool stopAnswering = false;
    std::uint64_t answerAfterMilliseconds = 0;
    bool garbage = false;
    std::size_t hugeBytes = 0;
    std::size_t hugePictures = 0;
    bool missing = false;
    bool noGetAll = false;
    bool noActivate = false;
    std::optional<std::uint64_t> vanishAfterMilliseconds;
    bool keepConnection = false;
    bool registerTwice = false;
};

/// Either the options or the exit status with which to end at once (0 after --help, 2 after a mistake, which has been
/// explained on the standard error).
struct ParsedOptions {
    std::optional<ItemOptions> options;
    int exitStatus = 0;
};

ParsedOptions parseItemOptions(int argumentCount, char** arguments);

}  // namespace ovin
