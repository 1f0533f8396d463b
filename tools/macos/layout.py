"""What views of the macOS world ask of the layout that cannot be had at once, of which AppKit breaks one and logs it.

A view asks for a stated length as strongly as it can. Where its class has a size of its own content, the hugging and the
compression resistance ask for that size, and must ask less strongly where a length is stated. And a view that stands in no
other asks to keep its frame until it is told not to translate its autoresizing mask.

This sees one source at a time, and one class: a length and a priority meet only where the same source states both, of
expressions of the same static type.
"""

from declarations import kind_of

REQUIRED = 1000
AXES = {"widthAnchor": "width", "NSLayoutConstraintOrientationHorizontal": "width",
        "heightAnchor": "height", "NSLayoutConstraintOrientationVertical": "height"}
# Of these classes the content has a size, in the axes named. So it has in classes with a method intrinsicContentSize.
CONTENT = {"NSButton": ("width", "height"), "NSTextField": ("width", "height"), "NSImageView": ("width", "height"),
           "NSBox": ("height",)}
PRIORITIES = ("setContentHuggingPriority:forOrientation:", "setContentCompressionResistancePriority:forOrientation:")


def references(expression):
    return [one.referenced for one in expression.walk_preorder()
            if kind_of(one) in ("DECL_REF_EXPR", "MEMBER_REF_EXPR") and one.referenced is not None]


def fields(expression):
    return {one.get_usr() for one in references(expression) if kind_of(one) == "FIELD_DECL"}


def axis_in(expression):
    return next((AXES[one.spelling] for one in references(expression) if one.spelling in AXES), None)


def class_of(expression):
    return expression.type.spelling.split("<")[0].split("*")[0].split()[-1]


def may_be_required(priority, stated):
    """Whether the value of an expression may be the highest priority while the fields `stated` have values."""
    kind = kind_of(priority)
    if kind in ("INTEGER_LITERAL", "FLOATING_LITERAL"):
        return any(float(token.spelling.rstrip("fF")) >= REQUIRED for token in priority.get_tokens())
    parts = list(priority.get_children())
    if kind == "CONDITIONAL_OPERATOR" and fields(parts[0]) & stated:
        parts = parts[1:2]
    elif kind == "DECL_REF_EXPR" and priority.referenced is not None and kind_of(priority.referenced) == "VAR_DECL":
        parts = list(priority.referenced.get_children())
    return any(may_be_required(part, stated) for part in parts)


class Views:
    """The views that one source makes, by their classes."""

    def __init__(self, unit):
        self.above = {}  # the superclass of each class
        self.measuring = set()  # classes with a method intrinsicContentSize
        for top in unit.cursor.get_children():
            for child in top.get_children():
                if kind_of(top) == "OBJC_INTERFACE_DECL" and kind_of(child) == "OBJC_SUPER_CLASS_REF":
                    self.above[top.spelling] = child.spelling
                elif kind_of(top) == "OBJC_IMPLEMENTATION_DECL" and child.spelling == "intrinsicContentSize":
                    self.measuring.add(top.spelling)
        self.stated = {}  # by class and axis: the fields that lengths come from
        self.priorities = []  # class, axis, message

    def has_content(self, name, axis):
        while name:
            if name in self.measuring or axis in CONTENT.get(name, ()):
                return True
            name = self.above.get(name)
        return False

    def look_at(self, cursor):
        parts = list(cursor.get_children())
        if cursor.spelling == "fixLength" and kind_of(cursor) == "CALL_EXPR" and len(parts) == 3:
            self.state(parts[1], parts[2])
        elif cursor.spelling == "constraintEqualToConstant:" and len(parts) == 2:
            self.state(parts[0], parts[1])
        elif cursor.spelling in PRIORITIES and kind_of(cursor) == "OBJC_MESSAGE_EXPR":
            self.priorities.append((class_of(parts[0]), axis_in(parts[2]), cursor))

    def state(self, dimension, length):
        """`dimension` is an anchor of a view."""
        view = next(dimension.get_children(), None)
        if axis_in(dimension) and view is not None:
            self.stated.setdefault((class_of(view), axis_in(dimension)), set()).update(fields(length))

    def faults(self):
        for name, axis, message in self.priorities:
            stated = self.stated.get((name, axis))
            if stated is None or not self.has_content(name, axis):
                continue
            if may_be_required(list(message.get_children())[1], stated):
                yield message, f"requires the {axis} of the content of {name}, for which another {axis} may be stated"


def unsettled(function):
    """Where a function measures a view that may still translate its mask."""
    settled = set()
    for cursor in function.walk_preorder():
        parts = list(cursor.get_children())
        if kind_of(cursor) == "BINARY_OPERATOR" and parts[0].spelling == "translatesAutoresizingMaskIntoConstraints":
            if [token.spelling for token in cursor.get_tokens()][-1:] == ["NO"]:
                settled.update(one.get_usr() for one in references(parts[0]))
        elif kind_of(cursor) == "MEMBER_REF_EXPR" and cursor.spelling == "fittingSize":
            views = [one for part in parts for one in references(part)]
            if kind_of(cursor.referenced) == "OBJC_PROPERTY_DECL" and not settled.issuperset(v.get_usr() for v in views):
                yield cursor, "measures a view that may translate its autoresizing mask into constraints"


def faults(tops):
    """Pairs of cursor and message, in the code at the top of one source."""
    if not tops:
        return []
    views, found = Views(tops[0].translation_unit), []
    for top in tops:
        for cursor in top.walk_preorder():
            views.look_at(cursor)
            if kind_of(cursor) in ("FUNCTION_DECL", "CXX_METHOD", "OBJC_INSTANCE_METHOD_DECL", "OBJC_CLASS_METHOD_DECL"):
                found += unsettled(cursor)
    return found + list(views.faults())
