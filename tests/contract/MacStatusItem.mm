// A program with status items, for the contract tests on a Mac.
//
// `mac-status-item TITLE...` shows one item for each title, in this order from left to right. It prints the index of an item
// when it is pressed, and gives it another title for each line "INDEX TITLE" that it reads. It ends when its input ends.
//
// `mac-status-item --switch ID` switches the main display to its mode of this id, and ends.

#import <AppKit/AppKit.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "platform/macos/displays/MacDisplays.h"
#include "platform/macos/system/MacMainQueue.h"
#include "platform/macos/system/Strings.h"

NS_ASSUME_NONNULL_BEGIN

@interface OvinStagedItems : NSObject
- (instancetype)initWithTitles:(const std::vector<std::string>&)titles;
- (instancetype)init NS_UNAVAILABLE;
- (void)rename:(NSUInteger)index title:(NSString*)title;
- (void)itemWasPressed:(NSButton*)sender;
@end

NS_ASSUME_NONNULL_END

@implementation OvinStagedItems {
    std::vector<NSStatusItem*> _items;
}

- (instancetype)initWithTitles:(const std::vector<std::string>&)titles {
    self = [super init];
    if (!self) return nil;
    _items.resize(titles.size());
    // Each new item comes to the left of those that are there.
    for (std::size_t i = titles.size(); i-- > 0;) {
        NSStatusItem* item = [NSStatusBar.systemStatusBar statusItemWithLength:NSVariableStatusItemLength];
        item.button.title = ovin::toNSString(titles[i]);
        item.button.tag = static_cast<NSInteger>(i);
        item.button.target = self;
        item.button.action = @selector(itemWasPressed:);
        _items[i] = item;
    }
    return self;
}

- (void)rename:(NSUInteger)index title:(NSString*)title {
    if (index < _items.size()) _items[index].button.title = title;
}

- (void)itemWasPressed:(NSButton*)sender {
    std::printf("%ld\n", static_cast<long>(sender.tag));
    std::fflush(stdout);
}

@end

namespace ovin {
namespace {

int switchMainDisplay(const char* id) {
    const auto displays = makeMacDisplays();
    const DisplayID main = displays->mainDisplay();
    for (const DisplayMode& mode : displays->modes(main)) {
        if (std::to_string(mode.id) == id) return displays->apply(mode.id, main) ? 0 : 1;
    }
    return 1;
}

[[noreturn]] void readCommands(MainQueue& mainQueue, OvinStagedItems* items) {
    std::array<char, 4096> buffer{};
    while (std::fgets(buffer.data(), static_cast<int>(buffer.size()), stdin) != nullptr) {
        std::string line = buffer.data();
        if (line.ends_with('\n')) line.pop_back();
        mainQueue.async([items, line] {
            const std::size_t space = line.find(' ');
            const NSUInteger index = std::strtoul(line.c_str(), nullptr, 10);
            if (space != std::string::npos) [items rename:index title:toNSString(line.substr(space + 1))];
        });
    }
    std::_Exit(0);
}

int showItems(const std::vector<std::string>& titles) {
    [NSApplication.sharedApplication setActivationPolicy:NSApplicationActivationPolicyAccessory];
    const auto mainQueue = makeMacMainQueue();
    OvinStagedItems* items = [[OvinStagedItems alloc] initWithTitles:titles];
    std::thread([&mainQueue, items] { readCommands(*mainQueue, items); }).detach();
    [NSApplication.sharedApplication run];
    return 0;
}

}  // namespace
}  // namespace ovin

int main(int argumentCount, char** arguments) {
    @autoreleasepool {
        const std::vector<std::string> words(arguments + 1, arguments + argumentCount);
        if (words.size() == 2 && words[0] == "--switch") return ovin::switchMainDisplay(words[1].c_str());
        return ovin::showItems(words);
    }
}
