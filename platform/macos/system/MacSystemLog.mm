#include "platform/macos/system/MacSystemLog.h"

#import <Foundation/Foundation.h>

#include "platform/macos/system/Strings.h"

namespace ovin {
namespace {

class MacSystemLog final : public SystemLog {
public:
    void write(std::string_view line) override {
        @autoreleasepool {
            // Never as the format, because names of other programs may hold any character.
            NSLog(@"%@", toNSString(line));
        }
    }
};

}  // namespace

std::unique_ptr<SystemLog> makeMacSystemLog() { return std::make_unique<MacSystemLog>(); }

}  // namespace ovin
