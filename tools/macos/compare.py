"""Holds the declarations of tests/macos_sdk against the typings."""

import re

from declarations import selector_name
from native_types import NativeTypes, nullability, split_nullable

# Enumerations whose constants are not called like them, and how those begin and end. The typings leave both out.
CONSTANT_NAMES = {
    "NSAutoresizingMaskOptions": ("NSView", ""),
    "NSBackingStoreType": ("NSBackingStore", ""),
    "NSBorderType": ("NS", "Border"),
    "NSBoxType": ("NSBox", ""),
    "NSCellImagePosition": ("NS", ""),
    "NSComparisonResult": ("NSOrdered", ""),
    "NSImageCacheMode": ("NSImageCache", ""),
    "NSEventModifierFlags": ("NSEventModifierFlag", ""),
    "NSImageScaling": ("NS", ""),
    "NSJSONWritingOptions": ("NSJSONWriting", ""),
    "NSKeyValueObservingOptions": ("NSKeyValueObservingOption", ""),
    "NSLineBreakMode": ("NSLineBreakBy", ""),
    "NSStringCompareOptions": ("NS", "Search"),
    "NSStringEnumerationOptions": ("NSStringEnumeration", ""),
    "NSStringEncodingConversionOptions": ("NSStringEncodingConversion", ""),
    "NSAttributedStringEnumerationOptions": ("NSAttributedStringEnumeration", ""),
    "NSVisualEffectBlendingMode": ("NSVisualEffectBlendingMode", "Window"),
    "NSWindowButton": ("NSWindow", "Button"),
    "NSWindowTitleVisibility": ("NSWindowTitle", ""),
    "CFStringBuiltInEncodings": ("kCFStringEncoding", ""),
    "CGConfigureOption": ("kCGConfigure", ""),
    "CGEventFlags": ("kCGEventFlagMask", ""),
    "CGEventTapLocation": ("kCG", "EventTap"),
    "CGEventType": ("kCGEvent", ""),
    "qos_class_t": ("QOS_CLASS_", ""),
}


class Comparison:
    def __init__(self, declared, typed, exceptions):
        self.declared = declared
        self.typed = typed
        self.types = NativeTypes(declared, typed)
        self.exceptions = exceptions  # what the typings lack, by name, with the reason
        self.used = set()
        self.messages = []
        self.checked = 0

    def tell(self, place, message):
        self.messages.append(f"{place}: {message}")

    def is_excepted(self, *names):
        """Whether one of the names, or the start of one up to its *, is among what the typings lack."""
        for name in names:
            for pattern in self.exceptions:
                if pattern == name or (pattern.endswith("*") and name.startswith(pattern[:-1])):
                    self.used.add(pattern)
                    return True
        return False

    def run(self):
        for type_ in self.declared.classes.values():
            self.compare_interface(type_, self.typed.classes.get(type_.name), "class")
        for type_ in self.declared.protocols.values():
            typed = self.typed.protocols.get(f"{type_.name}Protocol") or self.typed.protocols.get(type_.name)
            self.compare_interface(type_, typed, "protocol")
        for enumeration in self.declared.enumerations.values():
            self.compare_enumeration(enumeration)
        for function in self.declared.functions:
            self.compare_function(function)
        for variable in self.declared.variables:
            self.compare_variable(variable)
        for structure in self.declared.structures.values():
            self.compare_structure(structure)
        self.compare_macros()
        for pattern in sorted(set(self.exceptions) - self.used):
            self.tell("not_in_typings.txt", f"{pattern} is in the typings, or declared nowhere")
        return self.messages

    def compare_interface(self, native, typed, kind):
        if self.is_excepted(native.name):
            return
        self.checked += 1
        if typed is None:
            self.tell(native.place, f"the system has no {kind} {native.name}")
            return
        if kind == "class" and typed.superclass not in (native.superclass, "NativeObject"):
            self.tell(native.place, f"the superclass of {native.name} is {typed.superclass}, not {native.superclass}")
        for protocol in native.protocols:
            if protocol not in typed.protocols and f"{protocol}Protocol" not in typed.protocols and \
                    not self.is_excepted(f"{native.name}<{protocol}>"):
                self.tell(native.place, f"{native.name} does not adopt {protocol}")
        for member in native.members:
            if not self.is_excepted(f"{native.name}.{member.name}"):
                self.compare_member(native, typed, member)

    def compare_member(self, native, typed, member):
        self.checked += 1
        what = f"{native.name}.{member.name}" if member.is_property else \
            f"{'+' if member.is_static else '-'}[{native.name} {member.name}]"
        signatures = typed.members.get((member.is_static, selector_name(member.name)), [])
        signatures = [one for one in signatures if (one.parameters is None) == member.is_property]
        if not signatures:
            self.tell(member.place, f"the system has no {'property' if member.is_property else 'method'} {what}")
            return
        faults = [self.faults_of_property(typed, member, one) if member.is_property else
                  self.faults_of_call(member, one) for one in signatures]
        if typed.name not in self.typed.classes and member.is_optional != signatures[0].is_optional:
            self.tell(member.place, f"{what}: is {'optional' if signatures[0].is_optional else 'required'}")
        for fault in min(faults, key=len):
            self.tell(member.place, f"{what}: {fault}")

    def faults_of_property(self, typed, member, signature):
        found = self.faults_of_type("its type", member.type, signature.type, is_exact=False)
        if member.is_readonly != signature.is_readonly:
            found.append(f"is {'readonly' if signature.is_readonly else 'not readonly'}")
        setter = typed.members.get((member.is_static, f"set{member.name[:1].upper()}{member.name[1:]}"))
        if setter and setter[0].parameters and not member.is_readonly:
            accepts = "_Nullable" if "Null_unspecified" in member.type else member.type
            if "Null_unspecified" in member.type:
                is_null = split_nullable(setter[0].parameters[0])[1]
                if not is_null:
                    found.append("cannot be set to nil")
            else:
                found += self.faults_of_type("what it is set to", accepts, setter[0].parameters[0], is_exact=True)
        return found

    def faults_of_call(self, function, signature, is_exact=True):
        if len(function.parameters) != len(signature.parameters or []):
            # The typings leave the arguments behind `...` out.
            return [f"takes {len(signature.parameters or [])} arguments, not {len(function.parameters)}"]
        found = self.faults_of_type("what it returns", function.type, signature.type, is_exact=False)
        for i, (native, typing) in enumerate(zip(function.parameters, signature.parameters or [])):
            found += self.faults_of_type(f"argument {i + 1}", native, typing, is_exact)
        return found

    def faults_of_type(self, what, native, typing, is_exact):
        """`is_exact` says that the typings tell of every null, as they do of what a method takes."""
        type_, is_nullable = split_nullable(typing)
        # They also lack the null behind a macro, such as the one for availability.
        is_exact = is_exact and "API_" not in native
        if "=>" in typing:  # Behind a block the typings' null is ambiguous, so nothing is taken from it.
            is_exact = is_nullable = False
        found = []
        if not self.types.agrees(native, type_):
            found.append(f"{what} is {typing}, not {native}")
        if not self.types.is_pointer(native):
            return found
        said = nullability(native)
        if not said:
            found.append(f"{what} does not say whether it may be null: {native}")
        elif is_nullable and said == "Nonnull":
            found.append(f"{what} may be null, not {native}")
        elif is_exact and not is_nullable and said == "Nullable" and not type_.startswith("interop.Pointer"):
            found.append(f"{what} must not be null, as {native} may be")
        return found

    def compare_enumeration(self, native):
        if not native.name:
            self.compare_loose_constants(native)
            return
        if self.is_excepted(native.name):
            return
        typed = self.typed.enumerations.get(native.name)
        if typed is None:
            self.tell(native.place, f"the system has no enumeration {native.name}")
            return
        for name, value in native.constants.items():
            self.checked += 1
            short = self.short_name(native.name, name, typed)
            if short is None:
                self.tell(native.place, f"{native.name} has no constant {name}")
            elif (typed[short] - value) % 2**64:  # All bits of a set of options are -1 to the typings.
                self.tell(native.place, f"{name} is {typed[short]}, not {value}")

    @staticmethod
    def short_name(enumeration, name, typed):
        """What the typings call the constant."""
        starts = [CONSTANT_NAMES.get(enumeration, (enumeration, "")), ("k" + enumeration, "")]
        for start, end in starts:
            if name.startswith(start) and name.endswith(end):
                short = name[len(start):len(name) - len(end)]
                if short in typed:
                    return short
        return None

    def compare_loose_constants(self, native):
        """Constants of an enumeration without a name: the typings know that they exist and not their values."""
        for name in native.constants:
            if not self.is_excepted(name):
                self.checked += 1
                known = any(name in constants for constants in self.typed.enumerations.values())
                if self.typed.constants.get(name) != "number" and not known:
                    self.tell(native.place, f"the system has no constant {name}")

    def compare_function(self, native):
        if self.is_excepted(native.name):
            return
        self.checked += 1
        typed = self.typed.functions.get(native.name)
        if typed is None:
            self.tell(native.place, f"the system has no function {native.name}")
            return
        for fault in self.faults_of_call(native, typed, is_exact=False):
            self.tell(native.place, f"{native.name}: {fault}")

    def compare_variable(self, native):
        if self.is_excepted(native.name):
            return
        self.checked += 1
        typed = self.typed.constants.get(native.name)
        if typed is None:
            self.tell(native.place, f"the system has no constant {native.name}")
            return
        for fault in self.faults_of_type("its type", native.type, typed, is_exact=False):
            self.tell(native.place, f"{native.name}: {fault}")

    def compare_structure(self, native):
        if self.is_excepted(native.name):
            return
        typed = self.typed.classes.get(native.name)
        if typed is None:
            self.tell(native.place, f"the system has no structure {native.name}")
            return
        self.checked += 1
        fields = [name for _, name in typed.members]
        if list(native.fields) != fields:
            self.tell(native.place, f"the fields of {native.name} are {fields}, not {list(native.fields)}")
        for name, type_ in native.fields.items():
            for signature in typed.members.get((False, name), []):
                if not self.types.agrees(type_, split_nullable(signature.type)[0]):
                    self.tell(native.place, f"{native.name}.{name} is {signature.type}, not {type_}")

    def compare_macros(self):
        """No typings have macros: what they stand for has to be said a second time, where its source is."""
        for name, value in self.declared.macros.items():
            if name.startswith("k") and not self.is_excepted(f"{name}={value}"):
                self.tell("macros", f"{name} {value} is not among the macros that were looked up")
