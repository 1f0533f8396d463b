"""What the headers of tests/macos_sdk declare, as clang reads them."""

import ctypes
import dataclasses
import os

import clang.cindex

import compiler
from native_types import nullability

# Of libclang, but not of its Python module.
_LIBRARY = clang.cindex.conf.lib
for _name, _arguments in {
    "clang_Cursor_getObjCPropertyAttributes": [clang.cindex.Cursor, ctypes.c_uint],
    "clang_Cursor_isObjCOptional": [clang.cindex.Cursor],
    "clang_Type_getNullability": [clang.cindex.Type],
}.items():
    getattr(_LIBRARY, _name).argtypes = _arguments
    getattr(_LIBRARY, _name).restype = ctypes.c_uint
READONLY, CLASS = 0x1, 0x1000
WITH_NULLABILITY = 0x1000
WITH_MACROS = clang.cindex.TranslationUnit.PARSE_DETAILED_PROCESSING_RECORD


@dataclasses.dataclass
class Member:
    """A method, or a property, whose `name` is no selector then."""

    place: str
    name: str
    is_static: bool
    type: str
    is_property: bool = False
    is_readonly: bool = False
    is_optional: bool = False
    parameters: list = dataclasses.field(default_factory=list)  # types


@dataclasses.dataclass
class Type:
    """A class, or a protocol, with what its categories add."""

    place: str
    name: str
    superclass: str = ""
    protocols: list = dataclasses.field(default_factory=list)
    members: list = dataclasses.field(default_factory=list)


@dataclasses.dataclass
class Enumeration:
    place: str
    name: str
    constants: dict = dataclasses.field(default_factory=dict)


@dataclasses.dataclass
class Function:
    place: str
    name: str
    type: str
    parameters: list


@dataclasses.dataclass
class Variable:
    place: str
    name: str
    type: str


@dataclasses.dataclass
class Structure:
    place: str
    name: str
    fields: dict


@dataclasses.dataclass
class Declarations:
    classes: dict = dataclasses.field(default_factory=dict)
    protocols: dict = dataclasses.field(default_factory=dict)
    enumerations: dict = dataclasses.field(default_factory=dict)
    functions: list = dataclasses.field(default_factory=list)
    variables: list = dataclasses.field(default_factory=list)
    structures: dict = dataclasses.field(default_factory=dict)
    typedefs: dict = dataclasses.field(default_factory=dict)
    macros: dict = dataclasses.field(default_factory=dict)


def kind_of(cursor):
    """The name of its kind; of kinds that the Python module does not know there is nothing to say."""
    try:
        return cursor.kind.name
    except ValueError:
        return ""


NULLABILITIES = ["_Nonnull", "_Nullable", "_Null_unspecified"]


def spelling(type_):
    """The type as clang writes it, with the nullability that it leaves out where a macro comes before the type."""
    text = type_.spelling
    value = _LIBRARY.clang_Type_getNullability(type_)
    if value < len(NULLABILITIES) and not nullability(text):
        return f"{text} {NULLABILITIES[value]}"
    return text


def children(cursor, *kinds):
    return [child for child in cursor.get_children() if kind_of(child) in kinds]


def headers(sdk):
    folder = os.path.join(sdk, "include")
    found = [os.path.join(path, name) for path, _, names in os.walk(folder) for name in names if name.endswith(".h")]
    return sorted(os.path.relpath(path, folder) for path in found)


class Reader:
    def __init__(self, root):
        self.sdk = os.path.join(root, compiler.SDK, "include") + os.sep
        self.found = Declarations()

    def is_ours(self, cursor):
        return cursor.location.file is not None and cursor.location.file.name.startswith(self.sdk)

    def place(self, cursor):
        return f"{cursor.location.file.name[len(self.sdk):]}:{cursor.location.line}"

    def read(self, unit):
        previous = None
        for cursor in unit.cursor.get_children():
            if self.is_ours(cursor):
                self.read_top(cursor, previous)
                previous = cursor

    def read_top(self, cursor, previous):
        kind = kind_of(cursor)
        if kind == "LINKAGE_SPEC" or kind == "UNEXPOSED_DECL":
            for child in cursor.get_children():
                if self.is_ours(child):
                    self.read_top(child, None)
        elif kind == "OBJC_INTERFACE_DECL":
            self.read_type(cursor, self.found.classes.setdefault(cursor.spelling, Type(self.place(cursor), cursor.spelling)))
        elif kind == "OBJC_PROTOCOL_DECL":
            self.read_type(cursor, self.found.protocols.setdefault(cursor.spelling,
                                                                   Type(self.place(cursor), cursor.spelling)))
        elif kind == "OBJC_CATEGORY_DECL":
            of = children(cursor, "OBJC_CLASS_REF")[0].spelling
            self.read_type(cursor, self.found.classes[of])
        elif kind == "ENUM_DECL":
            self.read_enumeration(cursor, previous)
        elif kind == "FUNCTION_DECL":
            parameters = [spelling(argument.type) for argument in cursor.get_arguments()]
            self.found.functions.append(Function(self.place(cursor), cursor.spelling, spelling(cursor.result_type), parameters))
        elif kind == "VAR_DECL":
            self.found.variables.append(Variable(self.place(cursor), cursor.spelling, spelling(cursor.type)))
        elif kind == "STRUCT_DECL" and cursor.is_definition():
            self.read_structure(cursor, cursor.spelling)
        elif kind == "TYPEDEF_DECL":
            self.found.typedefs[cursor.spelling] = cursor.underlying_typedef_type.spelling
            for child in children(cursor, "STRUCT_DECL"):
                if not child.spelling or child.spelling == cursor.spelling:
                    self.read_structure(child, cursor.spelling)
        elif kind == "MACRO_DEFINITION":
            self.found.macros[cursor.spelling] = "".join(token.spelling for token in list(cursor.get_tokens())[1:])

    def read_structure(self, cursor, name):
        fields = {field.spelling: field.type.spelling for field in children(cursor, "FIELD_DECL")}
        if name and fields:
            self.found.structures[name] = Structure(self.place(cursor), name, fields)

    def read_type(self, cursor, into):
        for child in cursor.get_children():
            kind = kind_of(child)
            if kind == "OBJC_SUPER_CLASS_REF":
                into.superclass = child.spelling
            elif kind == "OBJC_PROTOCOL_REF":
                into.protocols.append(child.spelling)
            elif kind == "OBJC_PROPERTY_DECL":
                into.members.append(self.property(child))
        properties = {str(child.location) for child in children(cursor, "OBJC_PROPERTY_DECL")}
        for child in children(cursor, "OBJC_INSTANCE_METHOD_DECL", "OBJC_CLASS_METHOD_DECL"):
            if str(child.location) not in properties:  # Those are the methods that a property stands for.
                into.members.append(self.method(child))

    def property(self, cursor):
        attributes = _LIBRARY.clang_Cursor_getObjCPropertyAttributes(cursor, 0)
        return Member(self.place(cursor), cursor.spelling, bool(attributes & CLASS), spelling(cursor.type), True,
                      bool(attributes & READONLY), bool(_LIBRARY.clang_Cursor_isObjCOptional(cursor)))

    def method(self, cursor):
        return Member(self.place(cursor), cursor.spelling, kind_of(cursor) == "OBJC_CLASS_METHOD_DECL",
                      spelling(cursor.result_type), is_optional=bool(_LIBRARY.clang_Cursor_isObjCOptional(cursor)),
                      parameters=[spelling(argument.type) for argument in cursor.get_arguments()])

    def read_enumeration(self, cursor, previous):
        """Options are an enumeration without a name, right behind the type that has theirs."""
        name = "" if cursor.spelling.startswith("(") else cursor.spelling
        if not name and previous is not None and kind_of(previous) == "TYPEDEF_DECL":
            if previous.location.line == cursor.location.line:
                name = previous.spelling
        constants = {child.spelling: child.enum_value for child in children(cursor, "ENUM_CONSTANT_DECL")}
        if constants:
            key = name or self.place(cursor)
            self.found.enumerations[key] = Enumeration(self.place(cursor), name, constants)


def read(root):
    """All declarations, or an error of the compiler."""
    source = "".join(f"#import <{header}>\n" for header in headers(os.path.join(root, compiler.SDK)))
    arguments = [*compiler.arguments(root, root), "-resource-dir", compiler.clang_resources()]
    unit = clang.cindex.Index.create().parse("declarations.mm", arguments, [("declarations.mm", source)],
                                             WITH_NULLABILITY | WITH_MACROS)
    errors = [str(message) for message in unit.diagnostics if message.severity >= clang.cindex.Diagnostic.Error]
    if errors:
        raise ValueError("\n".join(errors))
    reader = Reader(root)
    reader.read(unit)
    return reader.found


def selector_name(selector):
    """As scripting languages write it: `setFrame:display:` is `setFrameDisplay`."""
    first, *others = selector.rstrip(":").split(":")
    return first + "".join(other[:1].upper() + other[1:] for other in others)
