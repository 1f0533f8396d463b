"""How the macOS world is compiled where there is no Mac: with clang, for macOS, against tests/macos_sdk."""

import os
import subprocess

SDK = "tests/macos_sdk"

# The processors of Macs. They differ in BOOL, and in some values of the system.
PROCESSORS = ["arm64", "x86_64"]

# The oldest macOS that is supported: the compiler wants everything newer behind @available.
OLDEST_SYSTEM = "13.0"

# All warnings but these.
NO_WARNINGS = [
    # What older standards lacked.
    "c++98-compat", "c++98-compat-pedantic", "pre-c++17-compat", "pre-c++20-compat",
    # The layout of structs.
    "padded",
    # Ovin's classes without a source of their own have virtual functions all the same.
    "weak-vtables",
    # Objects that live as long as the program are destroyed when it ends, knowingly.
    "exit-time-destructors", "global-constructors",
    # A switch over all values has no default, a switch with a default names only what it treats differently.
    "switch-enum", "covered-switch-default",
    # Instance variables are how an object of Objective-C keeps C++ ones.
    "direct-ivar-access", "objc-interface-ivars",
    # Values of the interfaces are compared as they were given, the numbers in them too.
    "float-equal",
    # What comes out of a dictionary or the defaults is an `id` until it has been asked what it is.
    "objc-messaging-id",
    # Deducing the arguments of standard templates is wanted.
    "ctad-maybe-unsupported",
]


def clang_resources():
    return subprocess.run(["clang", "-print-resource-dir"], check=True, capture_output=True, text=True).stdout.strip()


def standard_library():
    """The headers of clang's own C++ standard library, which is that of macOS."""
    folder = os.path.normpath(os.path.join(clang_resources(), "..", "..", "..", "include", "c++", "v1"))
    if not os.path.exists(os.path.join(folder, "string")):
        raise FileNotFoundError(f"{folder}: no libc++ here; install the packages of tools/packages")
    return folder


def arguments(root, generated, processor="arm64", language="objective-c++"):
    """What clang and libclang need to know, for one processor. All paths are absolute."""
    sdk = os.path.join(root, SDK)
    return [
        "-target", f"{processor}-apple-macosx{OLDEST_SYSTEM}", "-x", language, "-std=c++20",
        *(["-fobjc-arc"] if language == "objective-c++" else []), "-fblocks", "-stdlib=libc++", "-nostdinc++",
        "-nostdlibinc",
        # The C library's headers here use a name that the compiler defines for macOS, and then hide what is not ISO C.
        "-U__nonnull", "-D_GNU_SOURCE",
        "-I", root, "-I", generated, "-isystem", os.path.join(sdk, "include"), "-isystem", os.path.join(sdk, "libc"),
        "-isystem", standard_library(), "-isystem", "/usr/include/x86_64-linux-gnu", "-isystem", "/usr/include",
    ]


def warnings():
    return ["-ferror-limit=0", "-Weverything", "-Werror", *(f"-Wno-{name}" for name in NO_WARNINGS)]


def plain_warnings():
    """For C++ that other compilers have judged already."""
    return ["-Wall", "-Wextra", "-Werror"]


def run(command):
    """The exit code, and what was printed."""
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
    return done.returncode, done.stdout


# What the static analyzer looks for. It knows what functions of the system hand out by their names and by the declarations'
# attributes.
CHECKERS = [
    "core", "cplusplus", "deadcode", "nullability", "optin.cplusplus", "optin.performance.GCDAntipattern", "osx",
    "security", "unix", "alpha.osx.cocoa.InstanceVariableInvalidation", "alpha.osx.cocoa.MissingInvalidationMethod",
]


def analysis():
    return ["--analyze", "--analyzer-output", "text", "-Xclang", "-analyzer-werror",
            *(part for checker in CHECKERS for part in ("-Xclang", f"-analyzer-checker={checker}"))]
