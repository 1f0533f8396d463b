"""How the typings write a type of Objective-C."""

import re

import typings

NULLABILITY = re.compile(r"\s*\b_(Nonnull|Nullable|Null_unspecified)\b\s*")
QUALIFIERS = re.compile(r"\b(?:__strong|__weak|__unsafe_unretained|__autoreleasing|__kindof|const|struct|enum)\b")
# Macros that stand for attributes are a part of what clang prints.
ATTRIBUTES = re.compile(r"\b(?:API|NS|CF)_[A-Z_]{4,}\b(?:\((?:[^()]|\([^()]*\))*\))?")
BUILT_IN = {"id", "Class", "SEL", "instancetype"}
NUMBERS = {"char", "signed char", "unsigned char", "short", "unsigned short", "int", "unsigned int", "long", "unsigned long",
           "long long", "unsigned long long", "float", "double", "size_t", "pid_t", "int32_t", "uint32_t", "int64_t",
           "uint16_t", "uint64_t", "intptr_t", "uintptr_t", "unsigned", "UInt8"}
POINTERS = {"interop.PointerConvertible", "interop.Pointer"}
OBJECTS = {"interop.Object"}
# The typings take the arrays and dictionaries of the language too.
COLLECTIONS = {"NSArray": {"NSArray", "NSArray<interop.Object> | Array<interop.Object>"},
               "NSDictionary": {"NSDictionary",
                                "NSDictionary<interop.Object, interop.Object> | Record<string, interop.Object>"}}


def split_nullable(text):
    """A type of the typings without the null that it may be, and whether it may."""
    parts = typings.split(text, "|")
    if len(parts) > 1 and parts[-1] == "null":
        return text[:text.rindex("|")].strip(), True
    return text.strip(), False


def nullability(text):
    """What the outermost pointer says of itself: "Nonnull", "Nullable", "Null_unspecified" or nothing."""
    block = re.search(r"\([\^*]\s*(?:_(Nonnull|Nullable|Null_unspecified))?", ATTRIBUTES.sub("", text))
    if block:
        return block[1] or ""
    outermost = re.search(r"_(Nonnull|Nullable|Null_unspecified)\s*(?:(?:__\w+|const)\s*)*$", text)
    return outermost[1] if outermost else ""


class NativeTypes:
    """Compares types, knowing what the declarations and the typings have names for."""

    def __init__(self, declared, typed):
        self.declared = declared
        self.typed = typed

    def is_pointer(self, text):
        """Whether null is a value of the type, so that its declaration has to say whether it is a legal one."""
        text = self.resolved(text)
        if text.endswith("]"):
            return False
        return text.endswith("*") or "(^" in text or "(*" in text or re.match(r"(?:id|Class|SEL|instancetype)\b", text)

    @staticmethod
    def bare(text):
        text = QUALIFIERS.sub("", NULLABILITY.sub(" ", ATTRIBUTES.sub("", text)))
        return re.sub(r"\s+", " ", text).strip()

    def resolved(self, text):
        """The type that a name stands for, unless it is that of an enumeration or of a structure."""
        text = self.bare(text)
        seen = set()
        names = set(self.declared.typedefs) - BUILT_IN - set(self.declared.enumerations)
        while text in names and text not in seen:
            seen.add(text)
            text = self.bare(self.declared.typedefs[text])
        return text

    def agrees(self, native, typing):
        """Whether `typing`, without the null that it may be, says the same as `native`."""
        text = self.bare(native)
        if text in self.declared.enumerations and text in self.typed.enumerations:
            return typing == f"interop.Enum<typeof {text}>"
        if text in self.declared.typedefs and self.declared.typedefs[text].startswith("enum"):
            return typing == f"interop.Enum<typeof {text}>"
        text = self.resolved(text)
        if "(^" in text or "(*" in text:
            return self.function_agrees(text, typing)
        if text.endswith("*"):
            return self.pointer_agrees(text[:-1].strip(), typing)
        if text.endswith("]"):
            return typing in POINTERS
        return typing in self.scalar(text)

    def scalar(self, text):
        if text in ("instancetype",):
            return {"this", "InstanceType<This>"}
        if text == "SEL":
            return {"string"}
        if text in ("id", "Class", "Protocol"):
            return OBJECTS
        if text == "void":
            return {"void"}
        if text == "bool":
            return {"boolean"}
        if text in NUMBERS:
            return {"number"}
        if match := re.fullmatch(r"(?:id|KeyType)<(\w+)>", text):
            return {match[1], f"{match[1]}Protocol"}
        if text == "ObjectType" or text in ("KeyType", "AnchorType"):
            return {text} | OBJECTS
        return {text, f"interop.Enum<typeof {text}>"}

    def pointer_agrees(self, pointee, typing):
        name = re.match(r"(\w*)", pointee)[1]
        if name == "NSString" and "<" not in pointee:
            return typing == "string"
        if name in COLLECTIONS:
            return typing in COLLECTIONS[name] or typing.startswith(f"{name}<")
        if name == "NSObject" and "<" in pointee:
            return typing == "NSObject"  # Objects of the system's libraries, of which the typings know only the protocols.
        if name in self.typed.classes and self.typed.classes[name].superclass and "*" not in pointee:
            return typing == name or re.fullmatch(rf"{name}<.*>", typing) is not None
        if pointee == "char":
            return typing == "string"
        # To the typings an opaque type, or a reference of CoreFoundation's, is an address or an object.
        return typing in POINTERS | OBJECTS

    def function_agrees(self, text, typing):
        if typing.startswith("interop."):
            return typing in POINTERS
        match = re.fullmatch(r"(.*?)\((?:\^|\*)\s*\)\((.*)\)", text)
        arrow = re.fullmatch(r"\((.*)\) => (.*)", typing)
        if not match or not arrow:
            return False
        native = [part for part in typings.split(match[2], ",") if part != "void"]
        typed = typings.parameter_types(arrow[1])
        return (len(native) == len(typed) and self.agrees(match[1], split_nullable(arrow[2])[0])
                and all(self.agrees(a, split_nullable(b)[0]) for a, b in zip(native, typed)))
