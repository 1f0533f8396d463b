"""What the macOS world itself declares, implements and sends: what no compiler minds, as it might be meant so.

A method of a delegate or an override with a typing error in its name is a new method, which nobody calls; a category that
declares a method of the system's which it does not have, a key path of a property that is none, and a function that is
declared instead of included all compile as well.
"""

import ctypes
import os
import re

import clang.cindex

import compiler
import layout
from declarations import children, kind_of

_LIBRARY = clang.cindex.conf.lib
_LIBRARY.clang_getOverriddenCursors.argtypes = [clang.cindex.Cursor, ctypes.POINTER(ctypes.POINTER(clang.cindex.Cursor)),
                                                ctypes.POINTER(ctypes.c_uint)]
_LIBRARY.clang_disposeOverriddenCursors.argtypes = [ctypes.POINTER(clang.cindex.Cursor)]

METHODS = ("OBJC_INSTANCE_METHOD_DECL", "OBJC_CLASS_METHOD_DECL")
CONTAINERS = ("OBJC_INTERFACE_DECL", "OBJC_CATEGORY_DECL", "OBJC_PROTOCOL_DECL")
IMPLEMENTATIONS = ("OBJC_IMPLEMENTATION_DECL", "OBJC_CATEGORY_IMPL_DECL")


def overrides_anything(method):
    """Whether a superclass or a protocol declares the method."""
    found, count = ctypes.POINTER(clang.cindex.Cursor)(), ctypes.c_uint()
    _LIBRARY.clang_getOverriddenCursors(method, ctypes.byref(found), ctypes.byref(count))
    if count.value:
        _LIBRARY.clang_disposeOverriddenCursors(found)
    return count.value > 0


def text_of(cursor):
    """The text that an expression has at compile time, through the name of a constant; nothing when it has none."""
    for child in cursor.walk_preorder():
        if kind_of(child) == "OBJC_STRING_LITERAL":
            return child.spelling.strip('"')
        if kind_of(child) == "DECL_REF_EXPR" and child.referenced is not None and kind_of(child.referenced) == "VAR_DECL":
            for literal in child.referenced.walk_preorder():
                if kind_of(literal) == "OBJC_STRING_LITERAL":
                    return literal.spelling.strip('"')
    return None


class OwnCode:
    """One source, with the headers of its own folder."""

    def __init__(self, root, path, unit):
        self.root = os.path.realpath(root) + os.sep
        self.sdk = os.path.join(self.root, compiler.SDK, "")
        self.path = path
        self.messages = []
        self.sent = set()
        self.called = set()  # selectors that own code declares, sends, or names with @selector()
        self.own = [cursor for cursor in unit.cursor.get_children() if self.is_own(cursor)]

    def is_own(self, cursor):
        name = cursor.location.file.name if cursor.location.file else ""
        return name.startswith(self.root) and not name.startswith(self.sdk)

    def is_of_the_system(self, cursor):
        return cursor.location.file is not None and cursor.location.file.name.startswith(self.sdk)

    def tell(self, cursor, message):
        location = cursor.location
        self.messages.append(f"{os.path.relpath(location.file.name, self.root)}:{location.line}: {message}")

    def check(self):
        for top in self.own:
            for cursor in [top, *top.walk_preorder()]:
                self.look_at(cursor)
        for top in self.own:
            self.check_container(top)
        for cursor, message in layout.faults(self.own):
            self.tell(cursor, message)
        return self.messages

    def look_at(self, cursor):
        kind = kind_of(cursor)
        if kind in CONTAINERS:
            self.called.update(child.spelling for child in children(cursor, *METHODS))
        elif kind == "OBJC_SELECTOR_EXPR":
            text = "".join(token.spelling for token in cursor.get_tokens())
            self.called.add(text[text.index("(") + 1:text.rindex(")")])
        elif kind == "OBJC_MESSAGE_EXPR":
            self.look_at_message(cursor)
        elif kind == "MEMBER_REF_EXPR" and cursor.referenced is not None:
            if kind_of(cursor.referenced) == "OBJC_PROPERTY_DECL" and self.is_of_the_system(cursor.referenced):
                self.sent.add(cursor.referenced.spelling)
        elif kind == "FUNCTION_DECL" and not cursor.is_definition() and cursor.location.file.name.endswith(".mm"):
            if cursor.get_definition() is None:
                self.tell(cursor, f"declares {cursor.spelling} instead of including it")

    def look_at_message(self, cursor):
        method = cursor.referenced
        self.called.update([cursor.spelling] if method is not None and self.is_own(method) else [])
        if method is None:
            self.tell(cursor, f"sends {cursor.spelling}, which nothing declares")
        elif self.is_of_the_system(method):
            self.sent.add(cursor.spelling)
        if cursor.spelling.startswith("addObserver:forKeyPath:"):
            self.check_key_path(cursor)

    def check_key_path(self, message):
        """The receiver and the arguments are the message's children, in this order."""
        receiver, *arguments = list(message.get_children())
        if len(arguments) < 2:
            return
        path = text_of(arguments[1])
        name = re.match(r"\w+", receiver.type.spelling)
        if path is None or name is None:
            self.tell(message, "observes a key path that cannot be checked: name it by a constant text")
        elif not self.has_property(receiver, name[0], path):
            self.tell(message, f"observes {path}, which is no property of {name[0]}")

    def has_property(self, receiver, class_name, key):
        for top in receiver.translation_unit.cursor.get_children():
            kind = kind_of(top)
            named = top.spelling if kind == "OBJC_INTERFACE_DECL" else ""
            if kind == "OBJC_CATEGORY_DECL":
                named = next((child.spelling for child in children(top, "OBJC_CLASS_REF")), "")
            if named == class_name and any(one.spelling == key for one in children(top, "OBJC_PROPERTY_DECL")):
                return True
        return False

    def check_container(self, top):
        kind = kind_of(top)
        if kind in IMPLEMENTATIONS:
            for method in children(top, *METHODS):
                if method.is_definition():
                    self.check_method(method)
        elif kind == "OBJC_CATEGORY_DECL" and top.spelling and top.location.file.name == self.path:
            implemented = [one.spelling for one in self.own if kind_of(one) == "OBJC_CATEGORY_IMPL_DECL"]
            if top.spelling not in implemented:
                self.tell(top, f"declares methods in {top.spelling} that nothing implements")

    def check_method(self, method):
        name = method.spelling
        if name not in self.called and not name.startswith(".") and not overrides_anything(method):
            self.tell(method, f"nothing declares or calls {name}: is its name misspelt?")


def check(root, path, generated):
    """Compiles the source too. The messages, and the system's selectors that the source sends."""
    root = os.path.realpath(root)
    arguments = [*compiler.arguments(root, generated), *compiler.warnings(), "-resource-dir", compiler.clang_resources()]
    unit = clang.cindex.Index.create().parse(os.path.realpath(path), arguments)
    errors = [message.format() for message in unit.diagnostics if message.severity >= clang.cindex.Diagnostic.Warning]
    if errors:
        return errors, set()
    code = OwnCode(root, os.path.realpath(path), unit)
    return code.check(), code.sent
