// The eyes and hands of tools/first_mac: tells what a program shows through the Accessibility interface, presses it, and
// looks at what else Python cannot reach. Each call does one thing, and prints one line of JSON:
//
//     mac-hand look               permissions of this program, main display, its modes, the program in front
//     mac-hand ask                has the system ask the user for the permissions that are missing
//     mac-hand apps IDENTIFIER    running programs of a bundle
//     mac-hand end IDENTIFIER     kills them
//     mac-hand tree PID           elements of a program, parents before children, status items before windows
//     mac-hand press PID ROLE TEXT
//     mac-hand click left|right|control X Y
//     mac-hand key CODE
//     mac-hand mode ID            switches the main display, unless it is in this mode
//     mac-hand shade FILE         how bright a picture is on average, from 0 to 1

#import <AppKit/AppKit.h>
#import <ApplicationServices/ApplicationServices.h>
#import <CoreGraphics/CoreGraphics.h>
#import <Foundation/Foundation.h>
#include <signal.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "platform/macos/accessibility/MacAccessibility.h"
#include "platform/macos/displays/MacDisplays.h"
#include "platform/macos/system/Reference.h"
#include "platform/macos/system/Strings.h"

namespace ovin {
namespace {

using Words = std::vector<std::string>;

/// Deeper than any window of Ovin's.
constexpr int greatestDepth = 16;

/// How many colours are taken across and down a picture.
constexpr NSInteger samples = 24;

class Elements {
public:
    explicit Elements(ProcessID pid) : application_(accessibility_->applicationElement(pid)) {
        accessibility_->setMessagingTimeout(application_, std::chrono::seconds(2));
        // Status items first, before a main menu that the system may add. What is not among the windows may be a child.
        for (const char* attribute : {"AXExtrasMenuBar", "AXWindows", "AXChildren"}) {
            const AttributeValue value = read(application_, attribute);
            if (const auto* one = std::get_if<AccessibilityElement>(&value.content)) add(*one, 0);
            addMembers(value, 0);
        }
    }

    [[nodiscard]] NSArray* described() const {
        NSMutableArray* all = [NSMutableArray array];
        for (const Found& one : found_) {
            [all addObject:@{
                @"depth" : @(one.depth),
                @"role" : text(one.element, "AXRole"),
                @"title" : text(one.element, "AXTitle"),
                @"name" : text(one.element, "AXDescription"),
                @"value" : text(one.element, "AXValue"),
                @"mark" : text(one.element, "AXMenuItemMarkChar"),
                @"frame" : frame(one.element)
            }];
        }
        return all;
    }

    /// Presses the first element of this role that is called so; where either is empty, any will do. The error is 0 where
    /// it succeeded; nothing where there is no such element.
    [[nodiscard]] std::optional<int> press(const std::string& role, const std::string& name) const {
        NSString* wanted = toNSString(name);
        for (const Found& one : found_) {
            if (!role.empty() && ![text(one.element, "AXRole") isEqualToString:toNSString(role)]) continue;
            const bool isCalledSo = name.empty() || [text(one.element, "AXTitle") isEqualToString:wanted] ||
                                    [text(one.element, "AXDescription") isEqualToString:wanted];
            if (isCalledSo) return static_cast<int>(accessibility_->performAction(one.element, "AXPress"));
        }
        return std::nullopt;
    }

private:
    struct Found {
        AccessibilityElement element;
        int depth;
    };

    [[nodiscard]] AttributeValue read(const AccessibilityElement& element, const char* attribute) const {
        const AttributeAnswer answer = accessibility_->copyAttributeValue(element, attribute);
        return answer.error == AccessibilityError::success ? answer.value : AttributeValue{};
    }

    void addMembers(const AttributeValue& value, int depth) {
        const auto* members = std::get_if<AttributeValue::Array>(&value.content);
        if (members == nullptr) return;
        for (const AttributeValue& member : *members) {
            if (const auto* one = std::get_if<AccessibilityElement>(&member.content)) add(*one, depth);
        }
    }

    void add(const AccessibilityElement& element, int depth) {
        for (const Found& one : found_) {
            if (one.element == element) return;
        }
        found_.push_back({element, depth});
        if (depth < greatestDepth) addMembers(read(element, "AXChildren"), depth + 1);
    }

    [[nodiscard]] NSString* text(const AccessibilityElement& element, const char* attribute) const {
        const AttributeValue value = read(element, attribute);
        const auto* string = std::get_if<std::string>(&value.content);
        return string == nullptr ? @"" : toNSString(*string);
    }

    [[nodiscard]] NSArray* frame(const AccessibilityElement& element) const {
        const AttributeValue position = read(element, "AXPosition");
        const AttributeValue extent = read(element, "AXSize");
        const auto* origin = std::get_if<Point>(&position.content);
        const auto* size = std::get_if<Size>(&extent.content);
        if (origin == nullptr || size == nullptr) return @[];
        return @[ @(origin->x), @(origin->y), @(size->width), @(size->height) ];
    }

    std::unique_ptr<Accessibility> accessibility_ = makeMacAccessibility();
    AccessibilityElement application_;
    std::vector<Found> found_;
};

NSDictionary* look() {
    const auto displays = makeMacDisplays();
    const DisplayID main = displays->mainDisplay();
    const auto mode = displays->currentMode(main);
    int widest = 0;
    for (const DisplayMode& one : displays->modes(main)) {
        if (one.isUsableForDesktopGUI && one.width > widest) widest = one.width;
    }
    return @{
        @"trusted" : @(makeMacAccessibility()->isProcessTrusted()),
        @"events" : @(CGPreflightPostEventAccess()),
        @"pictures" : @(CGPreflightScreenCaptureAccess()),
        @"mode" : @(mode ? mode->id : 0),
        @"width" : @(mode ? mode->width : 0),
        @"height" : @(mode ? mode->height : 0),
        @"widest" : @(widest),
        @"front" : @(NSWorkspace.sharedWorkspace.frontmostApplication.processIdentifier)
    };
}

id ask() {
    makeMacAccessibility()->promptForTrust();
    CGRequestPostEventAccess();
    CGRequestScreenCaptureAccess();
    return look();
}

/// Each with its process id and whether it has neither Dock icon nor main menu.
NSArray* applications(const std::string& identifier) {
    NSMutableArray* all = [NSMutableArray array];
    for (NSRunningApplication* one in
         [NSRunningApplication runningApplicationsWithBundleIdentifier:toNSString(identifier)]) {
        const bool isAccessory = one.activationPolicy == NSApplicationActivationPolicyAccessory;
        [all addObject:@[ @(one.processIdentifier), @(isAccessory) ]];
    }
    return all;
}

id end(const std::string& identifier) {
    for (NSRunningApplication* one in
         [NSRunningApplication runningApplicationsWithBundleIdentifier:toNSString(identifier)]) {
        kill(one.processIdentifier, SIGKILL);
    }
    return @YES;
}

void post(CGEventRef event, CGEventFlags flags) {
    const auto owned = Reference<CGEventRef>::adopt(event);
    // Also where there are none: it would be taken for one with the keys that are held down.
    CGEventSetFlags(event, flags);
    CGEventPost(kCGHIDEventTap, event);
    // What is posted together may be taken for one, and what is posted last is lost if the program ends at once.
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
}

id click(const std::string& button, CGPoint place) {
    const bool isRight = button == "right";
    const CGEventFlags flags = button == "control" ? kCGEventFlagMaskControl : 0;
    const CGMouseButton number = isRight ? kCGMouseButtonRight : kCGMouseButtonLeft;
    post(CGEventCreateMouseEvent(nullptr, kCGEventMouseMoved, place, number), 0);
    post(CGEventCreateMouseEvent(nullptr, isRight ? kCGEventRightMouseDown : kCGEventLeftMouseDown, place, number), flags);
    post(CGEventCreateMouseEvent(nullptr, isRight ? kCGEventRightMouseUp : kCGEventLeftMouseUp, place, number), flags);
    return @YES;
}

id key(CGKeyCode code) {
    post(CGEventCreateKeyboardEvent(nullptr, code, true), 0);
    post(CGEventCreateKeyboardEvent(nullptr, code, false), 0);
    return @YES;
}

id switchTo(const std::string& id) {
    const auto displays = makeMacDisplays();
    const DisplayID main = displays->mainDisplay();
    const auto current = displays->currentMode(main);
    if (current && std::to_string(current->id) == id) return @YES;
    return @(displays->apply(std::atoi(id.c_str()), main));
}

id shade(const std::string& path) {
    NSData* data = [NSData dataWithContentsOfFile:toNSString(path)];
    NSBitmapImageRep* picture = data == nil ? nil : [NSBitmapImageRep imageRepWithData:data];
    if (picture == nil) return @(-1);
    double sum = 0;
    for (NSInteger i = 0; i < samples * samples; ++i) {
        NSColor* color = [picture colorAtX:picture.pixelsWide * (i % samples) / samples
                                         y:picture.pixelsHigh * (i / samples) / samples];
        NSColor* plain = [color colorUsingColorSpace:NSColorSpace.sRGBColorSpace];
        sum += (plain.redComponent + plain.greenComponent + plain.blueComponent) / 3;
    }
    return @(sum / static_cast<double>(samples * samples));
}

/// Nothing where the words make no call.
id _Nullable answer(const Words& words) {
    const auto isCall = [&words](const char* name, std::size_t count) {
        return !words.empty() && words[0] == name && words.size() == count + 1;
    };
    const auto number = [&words](std::size_t index) { return std::atoi(words[index].c_str()); };
    if (isCall("look", 0)) return look();
    if (isCall("ask", 0)) return ask();
    if (isCall("apps", 1)) return applications(words[1]);
    if (isCall("end", 1)) return end(words[1]);
    if (isCall("tree", 1)) return Elements(number(1)).described();
    if (isCall("press", 3)) {
        const auto error = Elements(number(1)).press(words[2], words[3]);
        return error ? @(*error) : @"no such element";
    }
    if (isCall("click", 3)) return click(words[1], CGPointMake(number(2), number(3)));
    if (isCall("key", 1)) return key(static_cast<CGKeyCode>(number(1)));
    if (isCall("mode", 1)) return switchTo(words[1]);
    if (isCall("shade", 1)) return shade(words[1]);
    return nil;
}

}  // namespace
}  // namespace ovin

int main(int argumentCount, char** arguments) {
    @autoreleasepool {
        id found = ovin::answer(ovin::Words(arguments + 1, arguments + argumentCount));
        if (found == nil) return 2;
        // An array around it, because older systems write nothing else than arrays and dictionaries.
        NSData* line = [NSJSONSerialization dataWithJSONObject:@[ found ] options:NSJSONWritingSortedKeys error:nullptr];
        std::printf("%.*s\n", static_cast<int>(line.length), static_cast<const char*>(line.bytes));
        return 0;
    }
}
