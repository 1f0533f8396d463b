"""What the figures were measured with."""

import glob
import os
import platform
import re


def read(path):
    try:
        with open(path, encoding="utf-8", errors="replace") as file:
            return file.read()
    except OSError:
        return ""


def found(pattern, text, otherwise="unknown"):
    match = re.search(pattern, text, re.M)
    return match[1].strip() if match else otherwise


def compiler(build):
    """That of a build folder, as its configuration has found it."""
    for path in glob.glob(os.path.join(build, "CMakeFiles/*/CMakeCXXCompiler.cmake")):
        text = read(path)
        name = found(r'^set\(CMAKE_CXX_COMPILER_ID "(.+)"\)', text)
        version = found(r'^set\(CMAKE_CXX_COMPILER_VERSION "([^"]+)"', text)
        return f"{'GCC' if name == 'GNU' else name} {version}"
    return "unknown"


def describe(build):
    processor = read("/proc/cpuinfo")
    memory = int(found(r"^MemTotal:\s+(\d+) kB", read("/proc/meminfo"), "0"))
    return {
        "processor": found(r"^model name\s*:(.+)$", processor, platform.machine()),
        "cores": os.cpu_count(),
        "virtual": bool(re.search(r"^flags\s*:.*\bhypervisor\b", processor, re.M)),
        "memory": f"{memory / 1024 / 1024:.1f} GiB",
        "system": found(r'^PRETTY_NAME="?([^"\n]+)', read("/etc/os-release")),
        "kernel": platform.release(),
        "compiler": compiler(build),
    }


def sentence(machine):
    kind = "a virtual machine" if machine["virtual"] else "a machine"
    return (f"{kind} with {machine['cores']} cores ({machine['processor']}) and {machine['memory']} of memory, "
            f"{machine['system']}, kernel {machine['kernel']}, compiled by {machine['compiler']} as the preset `release`")
