"""What tools/check_macos refuses and what it accepts, on declarations, typings and sources made for the purpose."""

import os
import shutil
import subprocess
import tempfile
import unittest

ROOT = os.path.realpath(os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", ".."))
SDK = os.path.join("tests", "macos_sdk")
FRAMEWORKS = ["AppKit", "ApplicationServices", "CoreFoundation", "CoreGraphics", "Foundation", "QuartzCore", "Runtime",
              "ServiceManagement"]


def write(root, path, text):
    full = os.path.join(root, path)
    os.makedirs(os.path.dirname(full), exist_ok=True)
    with open(full, "w", encoding="utf-8") as file:
        file.write(text)


def run(arguments, **environment):
    done = subprocess.run([os.path.join(ROOT, "tools", "check_macos"), *arguments], stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, check=False, env={**os.environ, **environment})
    return done.returncode, done.stdout


HEADER = """
#include <stdint.h>
#pragma clang assume_nonnull begin
#define NS_OPTIONS(type, name) type name; enum __attribute__((flag_enum)) : type
typedef unsigned long NSUInteger;
__attribute__((objc_root_class)) @interface NSObject
@end
@interface NSString : NSObject
@end
@class Kettle;
typedef enum KettleState : NSUInteger { KettleStateCold = 0, KettleStateHot = 2 } KettleState;
typedef NS_OPTIONS(NSUInteger, KettleParts) { KettlePartsLid = 1, KettlePartsSpout = 1 << 4 };
@protocol KettleDelegate
@optional
- (void)kettleDidBoil:(Kettle*)kettle;
@end
@interface Kettle : NSObject <KettleDelegate>
+ (Kettle*)kettleOfVolume:(double)volume parts:(KettleParts)parts;
- (void)pourInto:(nullable id)vessel label:(NSString*)label;
@property(readonly) KettleState state;
@property(nullable, copy) NSString* name;
@property(class, readonly) Kettle* firstKettle;
@end
typedef const struct __Tea* TeaRef;
extern "C" TeaRef TeaCreate(double grams, const char* sort, bool isGreen);
extern "C" const NSUInteger TeaMaximum;
#define kTeaKey "tea"
#pragma clang assume_nonnull end
"""
TYPINGS = """/// <reference types="tea" />
declare class NSObject extends NativeObject {
}
declare class NSString extends NSObject {
}
declare const KettleState: {
  Cold: 0,
  Warm: 1,
  Hot: 2,
};
declare const KettleParts: {
  Lid: 1,
  Spout: 16,
};
declare interface KettleDelegate extends NSObjectProtocol {
  kettleDidBoil?(kettle: Kettle): void;
}
declare class Kettle extends NSObject implements KettleDelegate {
  static kettleOfVolumeParts(volume: number, parts: interop.Enum<typeof KettleParts>): Kettle;
  pourIntoLabel(vessel: interop.Object | null, label: string): void;
  readonly state: interop.Enum<typeof KettleState>;
  name: string;
  setName(name: string | null): void;
  static readonly firstKettle: Kettle;
}
declare const TeaMaximum: number;
declare function TeaCreate(grams: number, sort: string, isGreen: boolean): interop.Object;
"""
LACKING = 'kTeaKey="tea"  # it is a macro\n'


class Declarations(unittest.TestCase):
    """Each fault is one change to declarations that agree with the typings."""

    def check(self, before="", after="", lacking=LACKING, typings=TYPINGS):
        self.assertIn(before, HEADER)
        with tempfile.TemporaryDirectory() as root:
            shutil.copytree(os.path.join(ROOT, SDK, "libc"), os.path.join(root, SDK, "libc"))
            write(root, f"{SDK}/include/Tea/Tea.h", HEADER.replace(before, after, 1))
            write(root, f"{SDK}/not_in_typings.txt", lacking)
            for name in FRAMEWORKS:
                write(root, f"typings/{name}.d.ts", typings if name == "AppKit" else "")
            return run(["--only-declarations", "--typings", os.path.join(root, "typings"), root])

    def refuses(self, before, after, message, **others):
        with self.subTest(after=after):
            code, output = self.check(before, after, **others)
            self.assertEqual(code, 1, output)
            self.assertIn(message, output)
            self.assertIn(" 1 faults", output)

    def test_declarations_that_agree_with_the_typings_are_accepted(self):
        code, output = self.check()
        self.assertEqual(code, 0, output)
        self.assertIn(" 0 faults", output)

    def test_a_class_a_method_or_a_property_that_the_system_lacks_is_refused(self):
        self.refuses("@interface Kettle :", "@interface Pan : NSObject\n@end\n@interface Kettle :", "has no class Pan")
        self.refuses("pourInto:", "pourInTo:", "has no method -[Kettle pourInTo:label:]")
        self.refuses("- (void)pourInto", "+ (void)pourInto", "has no method +[Kettle pourInto:label:]")
        self.refuses("KettleState state;", "KettleState stade;", "has no property Kettle.stade")
        self.refuses("(class, readonly) Kettle", "(readonly) Kettle", "has no property Kettle.firstKettle")

    def test_the_parts_of_a_selector_have_an_order(self):
        self.refuses("pourInto:(nullable id)vessel label:(NSString*)label",
                     "label:(NSString*)label pourInto:(nullable id)vessel",
                     "has no method -[Kettle label:pourInto:]")

    def test_another_superclass_or_protocol_is_refused(self):
        self.refuses("Kettle : NSObject", "Kettle : NSString", "the superclass of Kettle is NSObject")
        self.refuses("@interface NSString : NSObject", "@protocol Glass\n@end\n@interface NSString : NSObject <Glass>",
                     "Glass", typings=TYPINGS + "declare interface Glass {\n}\n")

    def test_another_type_of_an_argument_of_a_result_or_of_a_property_is_refused(self):
        self.refuses("parts:(KettleParts)parts", "parts:(KettleState)parts",
                     "argument 2 is interop.Enum<typeof KettleParts>")
        self.refuses("label:(NSString*)", "label:(Kettle*)", "argument 2 is string, not Kettle")
        self.refuses("+ (Kettle*)kettle", "+ (NSString*)kettle", "what it returns is Kettle, not NSString")
        self.refuses("- (void)pour", "- (bool)pour", "what it returns is void, not bool")
        self.refuses("KettleState state", "NSUInteger state", "its type is interop.Enum<typeof KettleState>")

    def test_a_property_that_can_be_set_in_one_of_the_two_only_is_refused(self):
        self.refuses("(readonly) KettleState", "(assign) KettleState", "Kettle.state: is readonly")
        self.refuses("(nullable, copy) NSString", "(nullable, readonly) NSString", "Kettle.name: is not readonly")

    def test_a_nullability_that_is_missing_or_wrong_is_refused(self):
        self.refuses("@class Kettle;", "@class Kettle;\n#pragma clang assume_nonnull end\n"
                     "extern \"C\" void drink(Kettle* kettle);\n#pragma clang assume_nonnull begin",
                     "does not say whether it may be null",
                     typings=TYPINGS + "declare function drink(kettle: Kettle): void;\n")
        self.refuses("(nullable id)vessel", "(id)vessel", "argument 1 may be null")
        self.refuses("(NSString*)label", "(nullable NSString*)label", "argument 2 must not be null")
        self.refuses("(nullable, copy)", "(copy)", "what it is set to may be null")

    def test_a_required_method_of_a_protocol_is_not_optional(self):
        self.refuses("@optional", "@required", "is optional")

    def test_the_arguments_of_a_function_have_an_order_and_a_number(self):
        code, output = self.check("double grams, const char* sort", "const char* sort, double grams")
        self.assertEqual(code, 1, output)
        self.assertIn("argument 1 is number", output)
        self.assertIn("argument 2 is string", output)
        self.refuses(", bool isGreen", ", double isGreen", "argument 3 is boolean, not double")
        self.refuses(", bool isGreen", "", "takes 3 arguments, not 2")
        self.refuses("TeaCreate", "TeaMake", "has no function TeaMake")

    def test_a_constant_that_is_unknown_or_has_another_value_is_refused(self):
        self.refuses("KettleStateHot = 2", "KettleStateHot = 1", "KettleStateHot is 2, not 1")
        self.refuses("KettleStateHot", "KettleStateHott", "has no constant KettleStateHott")
        self.refuses("1 << 4", "1 << 3", "KettlePartsSpout is 16, not 8")
        self.refuses("TeaMaximum", "TeaMinimum", "has no constant TeaMinimum")

    def test_a_macro_has_the_value_that_was_looked_up(self):
        code, output = self.check('"tea"', '"Tea"')
        self.assertEqual(code, 1, output)
        self.assertIn("kTeaKey", output)

    def test_an_exception_that_nothing_needs_is_refused(self):
        self.refuses("", "", "Kettle.volume", lacking=LACKING + "Kettle.volume\n")

    def test_declarations_that_do_not_compile_are_refused(self):
        code, output = self.check("@property(readonly)", "@propperty(readonly)")
        self.assertEqual(code, 1, output)
        self.assertIn("Tea.h", output)


class Typings(unittest.TestCase):
    def test_typings_that_cannot_be_installed_are_a_failure_that_says_how_to_go_on(self):
        with tempfile.TemporaryDirectory() as root:
            shutil.copytree(os.path.join(ROOT, SDK), os.path.join(root, SDK))
            write(root, "bin/npm", "#!/bin/sh\necho no network\nexit 1\n")
            os.chmod(os.path.join(root, "bin/npm"), 0o755)
            code, output = run(["--only-declarations", root], PATH=f"{root}/bin:{os.environ['PATH']}")
            self.assertEqual(code, 1, output)
            self.assertIn("no network", output)
            self.assertIn("--without-typings", output)


# Sources with one fault each, and a part of what is said of it.
PRELUDE = """#import <AppKit/AppKit.h>
#import <ApplicationServices/ApplicationServices.h>
#import <dispatch/dispatch.h>
"""
FAULTS = {
    "AWarning": ("int f();\nint f() { int x; return 1; }", "unused variable"),
    "ANarrowingConversion": ("int f(long x);\nint f(long x) { return x; }", "loses integer precision"),
    "ASelectorThatNothingDeclares": ("void f(NSView* v);\nvoid f(NSView* v) { [v addSubviews:v]; }", "addSubviews:"),
    "AnArgumentOfAnotherType": ("void f(NSView* v);\nvoid f(NSView* v) { v.toolTip = @1; }", "incompatible"),
    "ANullForWhatMustNotBe": ("void f(NSView* v);\nvoid f(NSView* v) { [v addSubview:nil]; }", "null passed"),
    "ANameThatTheSystemHasToo":
        ("namespace ovin {\nstruct Size { double width; };\n}\nusing ovin::Size;\ndouble f(ovin::Size s);\n"
         "double f(ovin::Size s) { return Size{s.width}.width; }", "reference to 'Size' is ambiguous"),
    "ACallThatIsNewerThanTheOldestSystem": ("void f();\nvoid f() { [NSApp activate]; }", "only available on macOS 14.0"),
    "AConstantOfAnotherType": ("void f(NSBox* b);\nvoid f(NSBox* b) { b.boxType = NSNoBorder; }", "NSBoxType"),
    "AReferenceThatIsNeverReleased":
        ("void f(CGDirectDisplayID d);\nvoid f(CGDirectDisplayID d) { CGDisplayModeRef m = CGDisplayCopyDisplayMode(d); "
         "CGDisplayModeGetWidth(m); }", "Potential leak"),
    "AnUnbalancedRetain":
        ("void f(const UInt8* b);\nvoid f(const UInt8* b) { CFStringRef s = CFStringCreateWithBytes(nullptr, b, 1, "
         "kCFStringEncodingUTF8, 0); if (s == nullptr) return; CFRetain(s); CFRelease(s); }", "Potential leak"),
    "AReleaseOfWhatIsNotOwned":
        ("void f(CFArrayRef a);\nvoid f(CFArrayRef a) { CFRelease(CFArrayGetValueAtIndex(a, 0)); }", "not owned"),
    "AUseAfterTheRelease":
        ("CFIndex f(const UInt8* b);\nCFIndex f(const UInt8* b) { CFStringRef s = CFStringCreateWithBytes(nullptr, b, 1, "
         "kCFStringEncodingUTF8, 0); if (s == nullptr) return 0; CFRelease(s); return CFStringGetLength(s); }",
         "used after it is released"),
    "AValueThatNobodyReads": ("int f();\nint f() { int x = 3; const int y = x; x = 4; return y; }", "never read"),
    "AMisspeltMethodOfADelegate":
        ("@interface D : NSObject <NSWindowDelegate>\n@end\n@implementation D\n- (void)windowWilClose:(NSNotification*)n {\n"
         "    (void)n;\n}\n@end", "calls windowWilClose:"),
    "AMisspeltOverride":
        ("@interface V : NSView\n@end\n@implementation V\n- (void)viewDidChangeEffectiveAppearence {\n}\n@end",
         "viewDidChangeEffectiveAppearence"),
    "AKeyPathOfNoProperty":
        ("void f(NSWorkspace* w, NSObject* o);\nvoid f(NSWorkspace* w, NSObject* o) {\n"
         "    [w addObserver:o forKeyPath:@\"runingApplications\" options:0 context:nullptr];\n}", "runingApplications"),
    "ACategoryOfNothing": ("@interface NSView (Others)\n- (void)flash;\n@end", "that nothing implements"),
    "AFunctionThatIsDeclaredInstead":
        ("extern \"C\" void NSBoop(void);\nvoid f();\nvoid f() { NSBoop(); }", "declares NSBoop instead"),
    "AWidthBesideARequiredOneOfTheContent":
        ("@interface B : NSButton\n@end\n@implementation B\n@end\nvoid f(B* b, bool isTight);\nvoid f(B* b, bool isTight) {\n"
         "    [b.widthAnchor constraintEqualToConstant:28].active = YES;\n    const float hugging = isTight ? 1000 : 1;\n"
         "    [b setContentHuggingPriority:hugging forOrientation:NSLayoutConstraintOrientationHorizontal];\n}",
         "requires the width of the content of B"),
    "AHeightBesideARequiredOneOfTheContent":
        ("@interface S : NSView\n@end\n@implementation S\n- (NSSize)intrinsicContentSize {\n    return NSZeroSize;\n}\n"
         "- (void)layout {\n    [self.heightAnchor constraintEqualToConstant:3].active = YES;\n"
         "    [self setContentCompressionResistancePriority:NSLayoutPriorityRequired "
         "forOrientation:NSLayoutConstraintOrientationVertical];\n}\n@end", "requires the height of the content of S"),
    "AMeasuredViewWhoseFrameIsAConstraint":
        ("NSSize f(NSView* v, NSView* w);\nNSSize f(NSView* v, NSView* w) {\n"
         "    w.translatesAutoresizingMaskIntoConstraints = NO;\n    v.translatesAutoresizingMaskIntoConstraints = YES;\n"
         "    return v.fittingSize;\n}", "measures a view"),
    "AnElementWithoutATimeout":
        ("CFTypeRef f(pid_t p);\nCFTypeRef f(pid_t p) { return AXUIElementCreateApplication(p); }", "has no timeout"),
    "ACopyThatNothingTakesOver":
        ("bool f(AXUIElementRef e);\nbool f(AXUIElementRef e) { CFTypeRef v = nullptr; "
         "return AXUIElementCopyAttributeValue(e, kAXTitleAttribute, &v) == kAXErrorSuccess && v; }",
         "nothing takes over v"),
    "TheQueueThatIsNotReentrant":
        ("void f();\nvoid f() { dispatch_async(dispatch_get_main_queue(), ^{}); }", "dispatch_get_main_queue"),
    "ATimerThatDoesNotSayItsModes":
        ("void f();\nvoid f() { [NSTimer scheduledTimerWithTimeInterval:1 repeats:NO block:^(NSTimer*){}]; }", "modes"),
    "ANameThatIsMadeAtRunTime":
        ("#define NSSelectorFromString(x) x\nint f();\nint f() { return NSSelectorFromString(1); }", "NSSelectorFromString"),
    "TooManyLines": ("\n" * 301, "longer than"),
}
RIGHT = """
namespace {
AXUIElementRef reference = nullptr;
id makeElement(id element) { return element; }
template <typename T>
struct Reference {
    static id adopt(T object) { return CFBridgingRelease(object); }
};
}  // namespace
struct Wish {
    double width;
};
@interface Plain : NSButton
- (NSSize)sizeFor:(const Wish&)wish;
@end
@implementation Plain
- (NSSize)sizeFor:(const Wish&)wish {
    [self.widthAnchor constraintEqualToConstant:wish.width].active = wish.width > 0;
    const NSLayoutPriority hugging = wish.width > 0 ? NSLayoutPriorityDefaultHigh : NSLayoutPriorityRequired;
    [self setContentHuggingPriority:hugging forOrientation:NSLayoutConstraintOrientationHorizontal];
    [self setContentHuggingPriority:NSLayoutPriorityRequired forOrientation:NSLayoutConstraintOrientationVertical];
    self.translatesAutoresizingMaskIntoConstraints = NO;
    return self.fittingSize;
}
@end
@interface Delegate : NSView <NSWindowDelegate>
- (instancetype)initWithWorkspace:(NSWorkspace*)workspace;
@end
@implementation Delegate {
    NSWorkspace* _workspace;
}
- (instancetype)initWithWorkspace:(NSWorkspace*)workspace {
    self = [super initWithFrame:NSMakeRect(0, 0, 1, 1)];
    if (self) {
        _workspace = workspace;
        [_workspace addObserver:self forKeyPath:@"runningApplications" options:0 context:nullptr];
        [NSButton buttonWithTitle:@"" target:self action:@selector(pressed:)];
        [self helper];
    }
    return self;
}
- (void)helper {
}
- (AXUIElementRef)reference {
    return reference;
}
- (void)pressed:(id)sender {
    (void)sender;
    if (@available(macOS 14.0, *)) [NSApp activate];
}
- (void)windowWillClose:(NSNotification*)notification {
    (void)makeElement(Reference<AXUIElementRef>::adopt(AXUIElementCreateApplication(3)));
    (void)notification;
}
- (void)viewDidChangeEffectiveAppearance {
    CFTypeRef value = nullptr;
    AXUIElementCopyAttributeValue([self reference], kAXTitleAttribute, &value);
    if (value) NSLog(@"%@", CFBridgingRelease(value));
}
@end
"""


class Sources(unittest.TestCase):
    """All sources are checked in one run; each test looks at what was said of its own."""

    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        root = cls.folder.name
        os.makedirs(os.path.join(root, "tests"))
        os.symlink(os.path.join(ROOT, SDK), os.path.join(root, SDK))
        for name, (text, _) in FAULTS.items():
            write(root, f"platform/macos/{name}.mm", PRELUDE + text + "\n")
        write(root, "platform/macos/Right.mm", PRELUDE + RIGHT)
        write(root, "platform/macos/Internal.h",
              "// For Objective-C++ files only.\n#pragma once\n#import <AppKit/AppKit.h>\n")
        write(root, "platform/macos/MacPlain.h", "#pragma once\n#include <string>\n")
        write(root, "platform/macos/MacNative.h", "#pragma once\n#import <AppKit/AppKit.h>\n")
        cls.code, cls.output = run(["--without-typings", root])

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def said_of(self, name):
        return "\n".join(line for line in self.output.splitlines() if f"/{name}." in line)

    def test_every_fault_is_found_in_its_own_source(self):
        self.assertEqual(self.code, 1)
        for name, (_, message) in FAULTS.items():
            with self.subTest(name=name):
                self.assertIn(message, self.said_of(name))

    def test_what_is_right_passes(self):
        self.assertEqual(self.said_of("Right"), "")
        self.assertEqual(self.said_of("Internal"), "")
        self.assertEqual(self.said_of("MacPlain"), "")

    def test_a_header_for_all_of_cpp_is_free_of_objective_c(self):
        self.assertIn("AppKit", self.said_of("MacNative"))

    def test_that_the_typings_were_left_out_is_said(self):
        self.assertIn("NOT held against the typings", self.output)

    def test_a_source_that_has_passed_is_read_again_when_it_or_a_header_changes(self):
        with tempfile.TemporaryDirectory() as root:
            os.makedirs(os.path.join(root, "tests"))
            os.symlink(os.path.join(ROOT, SDK), os.path.join(root, SDK))
            write(root, "platform/macos/A.h", "#pragma once\n")
            write(root, "platform/macos/A.mm", '#include "platform/macos/A.h"\n')
            self.assertEqual(run(["--without-typings", root])[0], 0)
            self.assertEqual(run(["--without-typings", root])[0], 0)
            write(root, "platform/macos/A.h", "#pragma once\n#error no\n")
            self.assertEqual(run(["--without-typings", root])[0], 1)
            write(root, "platform/macos/A.h", "#pragma once\n")
            write(root, "platform/macos/A.mm", "#error no\n")
            self.assertEqual(run(["--without-typings", root])[0], 1)

    def test_a_tree_without_sources_is_refused(self):
        with tempfile.TemporaryDirectory() as root:
            os.makedirs(os.path.join(root, "tests"))
            os.symlink(os.path.join(ROOT, SDK), os.path.join(root, SDK))
            code, output = run(["--without-typings", root])
            self.assertEqual(code, 1, output)
            self.assertIn("no sources", output)


STEEP = "namespace ovin {\nint steep();\n}\n"


class Links(unittest.TestCase):
    def check(self, files):
        with tempfile.TemporaryDirectory() as root:
            shutil.copytree(os.path.join(ROOT, SDK, "libc"), os.path.join(root, SDK, "libc"))
            write(root, f"{SDK}/include/Tea/Tea.h", HEADER)
            write(root, f"{SDK}/not_in_typings.txt", LACKING)
            for name in FRAMEWORKS:
                write(root, f"typings/{name}.d.ts", TYPINGS if name == "AppKit" else "")
            for path, text in files.items():
                write(root, path, text)
            return run(["--typings", os.path.join(root, "typings"), root])

    def test_what_others_define_is_there(self):
        code, output = self.check({
            "platform/macos/A.mm": "#import <Tea/Tea.h>\n#include \"platform/Steep.h\"\nnamespace ovin {\nint brew();\n"
                                   "int brew() { return TeaCreate(1, \"\", true) ? steep() : 0; }\n}\n",
            "platform/Steep.h": STEEP, "discovery/B.cpp": "namespace ovin {\nint steep() { return 1; }\n}\n"})
        self.assertEqual(code, 0, output)

    def test_what_nothing_defines_is_found(self):
        code, output = self.check({"platform/Steep.h": STEEP, "platform/macos/A.mm":
                                   "#include \"platform/Steep.h\"\nint brew();\nint brew() { return ovin::steep(); }\n"})
        self.assertEqual(code, 1, output)
        self.assertIn("platform/macos/A.mm: ovin::steep() is defined nowhere", output)

    def test_what_is_defined_twice_is_found(self):
        text = "namespace ovin {\nint steep();\nint steep() { return 1; }\n}\n"
        code, output = self.check({"platform/macos/A.mm": text, "platform/macos/B.mm": text})
        self.assertEqual(code, 1, output)
        self.assertIn("platform/macos/B.mm: ovin::steep() is defined in platform/macos/A.mm too", output)

    def test_a_function_of_the_c_library_here_that_macos_lacks_is_found(self):
        code, output = self.check({"platform/macos/A.mm": "", "app/B.cpp": "#include <stdlib.h>\n"
                                   "const char* tea() { return secure_getenv(\"TEA\"); }\n"})
        self.assertEqual(code, 1, output)
        self.assertIn("app/B.cpp: _secure_getenv is defined nowhere", output)


if __name__ == "__main__":
    unittest.main()
