"""Whether the objects of the macOS world would link: what one of them lacks, another or the system has to have."""

import re
import subprocess

# What the compiler, the runtime and the C++ library call, and ICU.
RUNTIME = re.compile(r"__(?!Z.*4ovin)|_objc_|_u[a-z]*_\w+_\d+$")


def symbols(path):
    """What an object defines for others, what of that any other may define as well, and what it lacks."""
    text = subprocess.run(["llvm-nm", "-m", "-g", path], check=True, capture_output=True, text=True).stdout
    defined, shared, lacking = [], [], []
    for line in text.splitlines():
        name = line.split()[-1]
        if "(undefined)" in line:
            lacking.append(re.sub(r"\s*\(.*\)$", "", line).split()[-1])
        else:
            (shared if "weak" in line else defined).append(name)
    return {"defined": defined, "shared": shared, "lacking": lacking}


def demangled(name):
    done = subprocess.run(["llvm-cxxfilt", "-_", name], check=False, capture_output=True, text=True)
    return done.stdout.strip() or name


def is_of_the_system(name, declared, typed):
    """`name` as the linker knows it, with an underscore in front."""
    if RUNTIME.match(name):
        return True
    if match := re.match(r"_OBJC_(?:META)?CLASS_\$_(\w+)|_OBJC_IVAR_\$_(\w+)\.", name):
        return (match[1] or match[2]) in declared.classes
    plain = name[1:]
    if plain in {function.name for function in declared.functions} | {variable.name for variable in declared.variables}:
        return True
    return typed is None or plain in typed.functions or plain in typed.constants


def faults(objects, declared, typed):
    """`objects` are symbols by the name of their source."""
    found = []
    owner = {}
    for source, one in sorted(objects.items()):
        for name in one["defined"]:
            if name in owner:
                found.append(f"{source}: {demangled(name)} is defined in {owner[name]} too")
            owner.setdefault(name, source)
    shared = {name for one in objects.values() for name in one["shared"]}
    for source, one in sorted(objects.items()):
        for name in one["lacking"]:
            if name not in owner and name not in shared and not is_of_the_system(name, declared, typed):
                found.append(f"{source}: {demangled(name)} is defined nowhere, neither here nor in the system")
    return found
