"""What the typings declare that were generated from the system's own headers: TypeScript, one declaration a line."""

import dataclasses
import os
import re


@dataclasses.dataclass
class Signature:
    """A method, a property or a function."""

    name: str
    type: str
    is_static: bool = False
    is_readonly: bool = False
    is_optional: bool = False
    parameters: list = None  # types; of a property none


@dataclasses.dataclass
class Interface:
    name: str
    superclass: str = ""
    protocols: list = dataclasses.field(default_factory=list)
    members: dict = dataclasses.field(default_factory=dict)  # by (is_static, name), a list of signatures


@dataclasses.dataclass
class Typings:
    classes: dict = dataclasses.field(default_factory=dict)
    protocols: dict = dataclasses.field(default_factory=dict)
    enumerations: dict = dataclasses.field(default_factory=dict)
    functions: dict = dataclasses.field(default_factory=dict)
    constants: dict = dataclasses.field(default_factory=dict)


def split(text, separator):
    """The parts of `text` between separators that stand in no brackets."""
    parts, depth, start = [], 0, 0
    for i, character in enumerate(text):
        if character in "([{<":
            depth += 1
        elif character in ")]}" or (character == ">" and text[i - 1] != "="):
            depth -= 1
        elif character == separator and depth == 0:
            parts.append(text[start:i].strip())
            start = i + 1
    parts.append(text[start:].strip())
    return [part for part in parts if part]


def closing(text, opening):
    """The position of the bracket that closes the one at `opening`."""
    depth = 0
    for i in range(opening, len(text)):
        if text[i] in "([{<":
            depth += 1
        elif text[i] in ")]}" or (text[i] == ">" and text[i - 1] != "="):
            depth -= 1
            if depth == 0:
                return i
    raise ValueError(f"nothing closes a bracket: {text}")


def parameter_types(text):
    """Of `a: A, b: B`, without the class that a static method is called on."""
    found = []
    for parameter in split(text, ","):
        match = re.match(r"(?:\.\.\.)?([\w$]*)\??:\s*(.*)$", parameter, re.DOTALL)
        if match is None:
            raise ValueError(f"not a parameter: {parameter!r} in {text!r}")
        name, type_ = match.groups()
        if name != "this":
            found.append(type_)
    return found


MODIFIERS = re.compile(r"(static\s+)?(readonly\s+|get\s+|set\s+)?([\w$]+)(\?)?")


def member(line):
    """The signature of a line of a class or a protocol; nothing for a constructor and what else concerns no system."""
    match = MODIFIERS.match(line)
    if not match or match[3] in ("constructor", "__brand__"):
        return None
    modifier = (match[2] or "").strip()
    signature = Signature(match[3].rstrip("$"), "", bool(match[1]), modifier == "readonly", bool(match[4]))
    rest = line[match.end():]
    if rest.startswith("<"):
        rest = rest[closing(rest, 0) + 1:]
    if rest.startswith("("):
        end = closing(rest, 0)
        signature.parameters = parameter_types(rest[1:end])
        rest = rest[end + 1:]
    if modifier == "set":
        return None
    if modifier == "get":
        signature.parameters = None
    signature.type = rest.lstrip(":").strip().rstrip(";").strip()
    return signature


class Reader:
    def __init__(self):
        self.found = Typings()

    def read(self, text):
        lines = iter(text.splitlines())
        for line in lines:
            if line.startswith(("declare class ", "declare interface ")):
                self.read_interface(line, lines)
            elif line.startswith("declare const ") and line.endswith("{"):
                self.read_enumeration(line, lines)
            elif line.startswith("declare const "):
                name, type_ = line[len("declare const "):].rstrip(";").split(":", 1)
                self.found.constants[name.strip()] = type_.strip()
            elif line.startswith("declare function "):
                signature = member(line[len("declare function "):])
                self.found.functions[signature.name] = signature

    def read_interface(self, line, lines):
        is_class = line.startswith("declare class ")
        head = line.split(None, 2)[2].rstrip("{").strip()
        name = re.match(r"\w+", head)[0]
        rest = head[len(name):]
        if rest.startswith("<"):
            rest = rest[closing(rest, 0) + 1:]
        into = (self.found.classes if is_class else self.found.protocols).setdefault(name, Interface(name))
        extends, _, implements = rest.partition(" implements ")
        extends = re.sub(r"^\s*extends\s+", "", extends).strip()
        if is_class:
            into.superclass = re.match(r"\w*", extends)[0]
            into.protocols += split(implements, ",")
        else:
            into.protocols += split(extends, ",")
        if line.rstrip().endswith("}"):
            return
        for text in lines:
            if text.startswith("}"):
                return
            signature = member(text.strip())
            if signature:
                into.members.setdefault((signature.is_static, signature.name), []).append(signature)

    def read_enumeration(self, line, lines):
        into = self.found.enumerations.setdefault(re.match(r"declare const (\w+)", line)[1], {})
        for text in lines:
            if text.startswith("}"):
                return
            match = re.match(r"\s*(\w+): (-?\d+)", text)
            if match:
                into[match[1]] = int(match[2])


# The frameworks of tests/macos_sdk, and the C library.
FRAMEWORKS = ["AppKit", "ApplicationServices", "CoreFoundation", "CoreGraphics", "Foundation", "QuartzCore", "Runtime",
              "ServiceManagement"]


def read(folder):
    reader = Reader()
    for name in FRAMEWORKS:
        with open(os.path.join(folder, f"{name}.d.ts"), encoding="utf-8") as file:
            reader.read(file.read())
    return reader.found
