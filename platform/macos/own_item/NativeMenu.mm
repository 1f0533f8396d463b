#include "platform/macos/own_item/NativeMenu.h"

#include <functional>
#include <utility>

#include "platform/macos/system/RunSoon.h"
#include "platform/macos/system/Strings.h"

NS_ASSUME_NONNULL_BEGIN

/// The action of an entry. The entry keeps it alive as its represented object; it would not keep a target alive.
@interface OvinMenuAction : NSObject

- (instancetype)initWithAction:(std::function<void()>)action;
- (instancetype)init NS_UNAVAILABLE;
- (void)choose:(NSMenuItem*)sender;

@end

NS_ASSUME_NONNULL_END

@implementation OvinMenuAction {
    std::function<void()> _action;
}

- (instancetype)initWithAction:(std::function<void()>)action {
    self = [super init];
    if (self != nil) _action = std::move(action);
    return self;
}

- (void)choose:(NSMenuItem*)sender {
    (void)sender;
    if (_action) ovin::runSoon(_action);
}

@end

namespace ovin {
namespace {

NSMenuItem* nativeEntry(const MenuEntry& entry) {
    NSMenuItem* item = [[NSMenuItem alloc] initWithTitle:toNSString(entry.title)
                                                  action:@selector(choose:)
                                           keyEquivalent:toNSString(entry.keyEquivalent)];
    OvinMenuAction* action = [[OvinMenuAction alloc] initWithAction:entry.action];
    item.representedObject = action;
    item.target = action;
    item.state = entry.isOn ? NSControlStateValueOn : NSControlStateValueOff;
    return item;
}

}  // namespace

NSMenu* nativeMenu(const Menu& menu) {
    NSMenu* result = [[NSMenu alloc] initWithTitle:@""];
    result.autoenablesItems = NO;
    for (const auto& entry : menu) [result addItem:entry ? nativeEntry(*entry) : [NSMenuItem separatorItem]];
    return result;
}

}  // namespace ovin
