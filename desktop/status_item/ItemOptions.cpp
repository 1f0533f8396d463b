#include "desktop/status_item/ItemOptions.h"

#include <getopt.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <string_view>

#include "resources/pictograms/Pictogram.h"

namespace ovin {
namespace {

constexpr auto help =
    R"(Usage: status-item [OPTION…]
A status item (StatusNotifierItem) that does what it is told and prints what happens to it.

  --id ID              the Id property (status-item)
  --title TITLE        the title (the id); given several times, those of several items in turn
  --icon NAME          name or absolute path of the icon
  --pixmap #RRGGBB     draw a simple glyph in this colour as IconPixmap
  --glyph NAME         … the pictogram of that name, in black unless --pixmap says otherwise; "list" prints all names
  --tooltip TEXT       the tool tip's title
  --menu A,B,-,C       a menu at /MenuBar with these entries; "-" is a separator
  --item-is-menu WORD  the ItemIsMenu property: true, false or absent (absent)
  --items N            N items on one connection, at /StatusNotifierItem, /StatusNotifierItem/2 … (0 to 1000)
  --status STATUS      Active, Passive or NeedsAttention (Active)
  --interface KIND     kde or freedesktop: the item's interface name (kde)
  --name NAME          the process's name
  --register-by WAY    path, name, both or well-known: how the item names itself to the watcher (path)
  --ready-fd FD        write one byte there when all items have registered
  --commands           obey the lines of the standard input: "title N TITLE" gives item N another title

Misbehaviour:
  --menu-fault KIND    missing, empty, silent or late: the menu that --menu asks for is named, but is not there, has no
                       entries, does not answer, or has entries only once it is said to be about to show
  --stop-answering     answer no call, but stay connected
  --answer-after MS    answer every call that much later
  --garbage            properties of wrong types, and pictures whose sizes do not match their bytes
  --huge BYTES         a title and a tool tip of this size
  --huge-pictures N    N pictures of 512 pixels to a side, a mebibyte each, in the colour of --pixmap (0 to 100)
  --missing            no property but Id
  --no-getall          Properties.GetAll is an unknown method
  --no-activate        Activate, SecondaryActivate, ContextMenu and Scroll are unknown methods
  --vanish-after MS    remove the items and exit, that long after they have registered
  --keep-connection    … or keep the connection then
  --reregister         register everything twice

Whenever a watcher appears, the items register with it.
SIGUSR1 appends " changed" to the titles and emits NewTitle. SIGUSR2 appends the entry "More" to the menu, gives all
entries new ids and emits LayoutUpdated.

Prints, one per line: registered, refused ERROR, activate X Y, secondary-activate X Y, context-menu X Y, scroll D O,
menu LABEL, vanished. With several items, the path of the item that is meant follows.
)";

enum Option : int {
    Id = 1,
    Title,
    Icon,
    Pixmap,
    Glyph,
    ToolTip,
    Menu,
    ItemIsMenu,
    Items,
    Status,
    Interface,
    Name,
    Register,
    ReadyFd,
    Commands,
    MenuFaultKind,
    StopAnswering,
    AnswerAfter,
    Garbage,
    Huge,
    HugePictures,
    Missing,
    NoGetAll,
    NoActivate,
    VanishAfter,
    KeepConnection,
    Reregister,
    Help
};

constexpr std::array<option, 29> longOptions{{{"id", required_argument, nullptr, Id},
                                              {"title", required_argument, nullptr, Title},
                                              {"icon", required_argument, nullptr, Icon},
                                              {"pixmap", required_argument, nullptr, Pixmap},
                                              {"glyph", required_argument, nullptr, Glyph},
                                              {"tooltip", required_argument, nullptr, ToolTip},
                                              {"menu", required_argument, nullptr, Menu},
                                              {"item-is-menu", required_argument, nullptr, ItemIsMenu},
                                              {"items", required_argument, nullptr, Items},
                                              {"status", required_argument, nullptr, Status},
                                              {"interface", required_argument, nullptr, Interface},
                                              {"name", required_argument, nullptr, Name},
                                              {"register-by", required_argument, nullptr, Register},
                                              {"ready-fd", required_argument, nullptr, ReadyFd},
                                              {"commands", no_argument, nullptr, Commands},
                                              {"menu-fault", required_argument, nullptr, MenuFaultKind},
                                              {"stop-answering", no_argument, nullptr, StopAnswering},
                                              {"answer-after", required_argument, nullptr, AnswerAfter},
                                              {"garbage", no_argument, nullptr, Garbage},
                                              {"huge", required_argument, nullptr, Huge},
                                              {"huge-pictures", required_argument, nullptr, HugePictures},
                                              {"missing", no_argument, nullptr, Missing},
                                              {"no-getall", no_argument, nullptr, NoGetAll},
                                              {"no-activate", no_argument, nullptr, NoActivate},
                                              {"vanish-after", required_argument, nullptr, VanishAfter},
                                              {"keep-connection", no_argument, nullptr, KeepConnection},
                                              {"reregister", no_argument, nullptr, Reregister},
                                              {"help", no_argument, nullptr, Help},
                                              {nullptr, 0, nullptr, 0}}};

template <typename Number>
bool readNumber(std::string_view text, Number& number, Number least, Number most, int base = 10) {
    Number value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
    if (error != std::errc{} || end != text.data() + text.size() || value < least || value > most) return false;
    number = value;
    return true;
}

bool readColour(std::string_view text, std::optional<std::uint32_t>& colour) {
    std::uint32_t value = 0;
    if (text.size() != 7 || text[0] != '#' || !readNumber(text.substr(1), value, 0U, 0xFFFFFFU, 16)) return false;
    colour = value;
    return true;
}

bool readGlyph(std::string_view text, ItemOptions& options) {
    const auto names = pictogramNames();
    options.glyph = text;
    if (!options.pixmapColour) options.pixmapColour = 0;
    return std::find(names.begin(), names.end(), text) != names.end();
}

std::vector<std::string> splitAtCommas(std::string_view text) {
    std::vector<std::string> parts;
    for (std::size_t begin = 0; begin <= text.size();) {
        const auto end = std::min(text.find(',', begin), text.size());
        parts.emplace_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return parts;
}

bool readItemIsMenu(std::string_view text, std::optional<bool>& itemIsMenu) {
    if (text == "true") itemIsMenu = true;
    if (text == "false") itemIsMenu = false;
    if (text == "absent") itemIsMenu.reset();
    return text == "true" || text == "false" || text == "absent";
}

bool readStatus(std::string_view text, std::string& status) {
    status = text;
    return text == "Active" || text == "Passive" || text == "NeedsAttention";
}

bool readInterface(std::string_view text, std::string& interface) {
    interface = "org." + std::string(text) + ".StatusNotifierItem";
    return text == "kde" || text == "freedesktop";
}

bool readRegisterBy(std::string_view text, RegisterBy& registerBy) {
    if (text == "path") return registerBy = RegisterBy::Path, true;
    if (text == "name") return registerBy = RegisterBy::Name, true;
    if (text == "both") return registerBy = RegisterBy::Both, true;
    if (text == "well-known") return registerBy = RegisterBy::WellKnown, true;
    return false;
}

bool readMenuFault(std::string_view text, MenuFault& fault) {
    if (text == "missing") return fault = MenuFault::Missing, true;
    if (text == "empty") return fault = MenuFault::Empty, true;
    if (text == "silent") return fault = MenuFault::Silent, true;
    if (text == "late") return fault = MenuFault::Late, true;
    return false;
}

bool readVanishAfter(std::string_view text, std::optional<std::uint64_t>& vanishAfter) {
    return readNumber<std::uint64_t>(text, vanishAfter.emplace(), 0, 3'600'000);
}

/// Whether the option's value makes sense.
bool take(int which, std::string_view value, ItemOptions& options) {
    switch (which) {
        case Id:
            options.id = value;
            return true;
        case Title:
            options.titles.emplace_back(value);
            return true;
        case Icon:
            options.icon = value;
            return true;
        case Pixmap:
            return readColour(value, options.pixmapColour);
        case Glyph:
            return readGlyph(value, options);
        case ToolTip:
            options.toolTip = value;
            return true;
        case Menu:
            options.menu = splitAtCommas(value);
            return true;
        case ItemIsMenu:
            return readItemIsMenu(value, options.itemIsMenu);
        case Items:
            return readNumber<std::size_t>(value, options.items, 0, 1000);
        case Status:
            return readStatus(value, options.status);
        case Interface:
            return readInterface(value, options.interface);
        case Name:
            options.processName = value;
            return !value.empty();
        case Register:
            return readRegisterBy(value, options.registerBy);
        case ReadyFd:
            return readNumber(value, options.readyDescriptor, 0, 1'000'000);
        case Commands:
            return options.takesCommands = true;
        case MenuFaultKind:
            return readMenuFault(value, options.menuFault);
        case StopAnswering:
            return options.stopAnswering = true;
        case AnswerAfter:
            return readNumber<std::uint64_t>(value, options.answerAfterMilliseconds, 0, 3'600'000);
        case Garbage:
            return options.garbage = true;
        case Huge:
            return readNumber<std::size_t>(value, options.hugeBytes, 1, 60'000'000);
        case HugePictures:
            return readNumber<std::size_t>(value, options.hugePictures, 0, 100);
        case Missing:
            return options.missing = true;
        case NoGetAll:
            return options.noGetAll = true;
        case NoActivate:
            return options.noActivate = true;
        case VanishAfter:
            return readVanishAfter(value, options.vanishAfterMilliseconds);
        case KeepConnection:
            return options.keepConnection = true;
        case Reregister:
            return options.registerTwice = true;
        default:
            return false;
    }
}

void printGlyphs() {
    for (const std::string_view name : pictogramNames()) std::printf("%.*s\n", static_cast<int>(name.size()), name.data());
}

ParsedOptions mistake(const std::string& text) {
    std::fprintf(stderr, "status-item: %s (see --help)\n", text.c_str());
    return {std::nullopt, 2};
}

}  // namespace

ParsedOptions parseItemOptions(int argumentCount, char** arguments) {
    ItemOptions options;
    int index = 0;
    for (int which; (which = getopt_long(argumentCount, arguments, "", longOptions.data(), &index)) != -1;) {
        if (which == Help) return std::fputs(help, stdout), ParsedOptions{std::nullopt, 0};
        if (which == Glyph && std::string_view(optarg) == "list") return printGlyphs(), ParsedOptions{std::nullopt, 0};
        if (which == '?') return {std::nullopt, 2};  // getopt_long has said what is wrong
        const std::string value = optarg == nullptr ? "" : optarg;
        const std::string name = longOptions[static_cast<std::size_t>(index)].name;
        if (!take(which, value, options)) return mistake("--" + name + " cannot be \"" + value + "\"");
    }
    if (optind < argumentCount) return mistake(std::string("unexpected argument ") + arguments[optind]);
    const bool pathTold = options.registerBy == RegisterBy::Path || options.registerBy == RegisterBy::Both;
    if (options.items > 1 && !pathTold) return mistake("several items can register by path or both only");
    return {options, 0};
}

}  // namespace ovin
